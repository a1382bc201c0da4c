#pragma once

#include <QWindow>

#include "StoreViewModel.h"
#include "WindowShown.h"

namespace quill {

/// Everything the focus screen's header, timer card, signals card and training hint show,
/// and the commands of their buttons. Change signals are grouped by what redraws together.
class FocusViewModel : public StoreViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Built by ViewModels on the app's store")
    /// Eyebrow of the heading, by the local hour.
    Q_PROPERTY(QString greeting READ greeting NOTIFY headerChanged)
    /// Heading title by phase.
    Q_PROPERTY(QString title READ title NOTIFY headerChanged)
    /// Heading subtitle: active or not.
    Q_PROPERTY(QString subtitle READ subtitle NOTIFY headerChanged)
    /// "N 分钟" of today's focus.
    Q_PROPERTY(QString todayMinutesText READ todayMinutesText NOTIFY statisticsChanged)
    /// "N 次" of today's mind-wandering.
    Q_PROPERTY(QString todayWanderText READ todayWanderText NOTIFY statisticsChanged)
    /// "N 天" of the streak.
    Q_PROPERTY(QString streakText READ streakText NOTIFY statisticsChanged)
    /// "今天的建议：先做 N 分钟".
    Q_PROPERTY(QString recommendationText READ recommendationText NOTIFY statisticsChanged)
    /// The large time: "mm:ss", or the bare break seconds during a micro-break.
    Q_PROPERTY(QString timerText READ timerText NOTIFY timerChanged)
    /// Task and phase under the time, or "准备开始".
    Q_PROPERTY(QString timerCaption READ timerCaption NOTIFY timerChanged)
    /// The ring's arc, 0.01…1.
    Q_PROPERTY(double progress READ progress NOTIFY timerChanged)
    /// Symbol name of the phase.
    Q_PROPERTY(QString phaseSymbol READ phaseSymbol NOTIFY phaseStateChanged)
    /// Tint name of the phase ("mint", "amber", "blue").
    Q_PROPERTY(QString phaseTint READ phaseTint NOTIFY phaseStateChanged)
    /// A round is running (focusing, paused or micro-break).
    Q_PROPERTY(bool active READ active NOTIFY phaseStateChanged)
    /// Title of the primary button.
    Q_PROPERTY(QString primaryTitle READ primaryTitle NOTIFY phaseStateChanged)
    /// Symbol of the primary button.
    Q_PROPERTY(QString primarySymbol READ primarySymbol NOTIFY phaseStateChanged)
    /// The "结束" button is offered (focusing or paused).
    Q_PROPERTY(bool endAvailable READ endAvailable NOTIFY phaseStateChanged)
    /// The wander and fatigue buttons accept clicks (not during a micro-break).
    Q_PROPERTY(bool signalsEnabled READ signalsEnabled NOTIFY phaseStateChanged)
    /// "N 分钟" of the planned length.
    Q_PROPERTY(QString durationMetric READ durationMetric NOTIFY metricsChanged)
    /// "min–max 分钟" of the reminder range.
    Q_PROPERTY(QString reminderMetric READ reminderMetric NOTIFY metricsChanged)
    /// The "下次提示" metric is shown.
    Q_PROPERTY(bool nextReminderVisible READ nextReminderVisible NOTIFY metricsChanged)
    /// Time to the next reminder, "mm:ss" or "—".
    Q_PROPERTY(QString nextReminderText READ nextReminderText NOTIFY metricsChanged)
    /// "N 次" of this round's mind-wandering.
    Q_PROPERTY(QString wanderCountText READ wanderCountText NOTIFY countsChanged)
    /// "N 次" of this round's fatigue signals.
    Q_PROPERTY(QString fatigueCountText READ fatigueCountText NOTIFY countsChanged)
    /// The window the screen is in. While it is hidden, minimised or covered up entirely
    /// (not exposed), the steps leave the time and the ring alone: nobody sees them, and
    /// every change would relayout text and repaint the ring. They catch up when it shows.
    Q_PROPERTY(QWindow* window READ window WRITE setWindow NOTIFY windowChanged)

public:
    explicit FocusViewModel(AppStore& store, QObject* parent = nullptr);

    QString greeting() const { return m_greeting; }
    QString title() const { return m_title; }
    QString subtitle() const { return m_subtitle; }
    QString todayMinutesText() const { return m_todayMinutesText; }
    QString todayWanderText() const { return m_todayWanderText; }
    QString streakText() const { return m_streakText; }
    QString recommendationText() const { return m_recommendationText; }
    QString timerText() const { return m_timerText; }
    QString timerCaption() const { return m_timerCaption; }
    double progress() const { return m_progress; }
    QString phaseSymbol() const { return m_phaseSymbol; }
    QString phaseTint() const { return m_phaseTint; }
    bool active() const { return m_active; }
    QString primaryTitle() const { return m_primaryTitle; }
    QString primarySymbol() const { return m_primarySymbol; }
    bool endAvailable() const { return m_endAvailable; }
    bool signalsEnabled() const { return m_signalsEnabled; }
    QString durationMetric() const { return m_durationMetric; }
    QString reminderMetric() const { return m_reminderMetric; }
    bool nextReminderVisible() const { return m_nextReminderVisible; }
    QString nextReminderText() const { return m_nextReminderText; }
    QString wanderCountText() const { return m_wanderCountText; }
    QString fatigueCountText() const { return m_fatigueCountText; }
    QWindow* window() const { return m_windowShown->window(); }
    void setWindow(QWindow* window);

    /// Start (idle), skip the break (micro-break), or pause/resume (focusing/paused).
    Q_INVOKABLE void primaryAction();
    /// The primary action is hovered or focused: a round may start or resume.
    Q_INVOKABLE void preparePrimaryAction();
    /// Opens the dialog asking how to end the round.
    Q_INVOKABLE void requestEnd();
    Q_INVOKABLE void recordMindWander();
    Q_INVOKABLE void recordFatigue();
    /// Takes the suggested length as the next round's length.
    Q_INVOKABLE void adoptRecommendation();

Q_SIGNALS:
    void headerChanged();
    void statisticsChanged();
    void timerChanged();
    void phaseStateChanged();
    void metricsChanged();
    void countsChanged();
    void windowChanged();

private:
    void connectStore();
    void refreshAll();
    void refreshHeader();
    void refreshStatistics();
    void refreshTimer();
    void refreshPhaseState();
    void refreshMetrics();
    void refreshCounts();
    QString captionTaskName() const;

    QString m_greeting, m_title, m_subtitle;
    int m_headerHour = -1;      // the local hour the greeting was chosen for
    WindowShown* m_windowShown; // with no window (tests, tools) the view follows the steps
    QString m_todayMinutesText, m_todayWanderText, m_streakText, m_recommendationText;
    QString m_timerText, m_timerCaption;
    double m_progress = 1.0;
    QString m_phaseSymbol, m_phaseTint, m_primaryTitle, m_primarySymbol;
    bool m_active = false, m_endAvailable = false, m_signalsEnabled = false;
    QString m_durationMetric, m_reminderMetric, m_nextReminderText;
    bool m_nextReminderVisible = false;
    QString m_wanderCountText, m_fatigueCountText;
};

} // namespace quill
