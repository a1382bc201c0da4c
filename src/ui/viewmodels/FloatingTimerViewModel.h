#pragma once

#include "StoreViewModel.h"

#include <QColor>
#include <QSize>

namespace quill {

/// The floating countdown panel: its size and shape from the two floating settings, its
/// colours by appearance, and the round's ring, status, time and signal counts.
class FloatingTimerViewModel : public StoreViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Built by ViewModels on the app's store")
    /// The countdown row is shown (`floatingTimerOnMinimize`, on when unset).
    Q_PROPERTY(bool countdownShown READ countdownShown NOTIFY shapeChanged)
    /// The two signal buttons are shown (`floatingSignalButtons`, off when unset).
    Q_PROPERTY(bool signalsShown READ signalsShown NOTIFY shapeChanged)
    /// Panel width: 292 with the signal buttons, else 264.
    Q_PROPERTY(int panelWidth READ panelWidth NOTIFY shapeChanged)
    /// Panel height: 174, 116, 70 or 0 by the two settings.
    Q_PROPERTY(int panelHeight READ panelHeight NOTIFY shapeChanged)
    /// Corner radius: 24 with the countdown, else 19.
    Q_PROPERTY(int cornerRadius READ cornerRadius NOTIFY shapeChanged)
    /// The panel's own fill, by appearance.
    Q_PROPERTY(QColor backgroundColor READ backgroundColor NOTIFY shapeChanged)
    /// Opacity of the mint wash over the fill.
    Q_PROPERTY(double mintWashOpacity READ mintWashOpacity NOTIFY shapeChanged)
    /// The 1-point outline.
    Q_PROPERTY(QColor outlineColor READ outlineColor NOTIFY shapeChanged)
    /// The drawn shadow's colour, blur radius and downward offset.
    Q_PROPERTY(QColor shadowColor READ shadowColor NOTIFY shapeChanged)
    Q_PROPERTY(int shadowRadius READ shadowRadius NOTIFY shapeChanged)
    Q_PROPERTY(int shadowOffset READ shadowOffset NOTIFY shapeChanged)
    /// The ring's arc: full in a micro-break, else elapsed ÷ planned, never below 0.02.
    Q_PROPERTY(double ringProgress READ ringProgress NOTIFY timeChanged)
    /// "mm:ss", or "N 秒" during a micro-break.
    Q_PROPERTY(QString timeText READ timeText NOTIFY timeChanged)
    /// "微休息", "已暂停" or "专注中".
    Q_PROPERTY(QString statusWord READ statusWord NOTIFY phaseStateChanged)
    /// Tint name of the status: "blue", "amber" or "mint".
    Q_PROPERTY(QString statusTint READ statusTint NOTIFY phaseStateChanged)
    /// Symbol in the ring: "sparkles", "pause.fill" or "leaf.fill".
    Q_PROPERTY(QString statusSymbol READ statusSymbol NOTIFY phaseStateChanged)
    /// The round button's symbol: "pause.fill", "play.fill" or "arrow.right".
    Q_PROPERTY(QString roundSymbol READ roundSymbol NOTIFY phaseStateChanged)
    /// Its help text: "暂停", "继续" or "提前继续".
    Q_PROPERTY(QString roundHelp READ roundHelp NOTIFY phaseStateChanged)
    /// The signal buttons accept clicks (not during a micro-break).
    Q_PROPERTY(bool signalsEnabled READ signalsEnabled NOTIFY phaseStateChanged)
    /// Mind-wander and fatigue counts of this round.
    Q_PROPERTY(int wanderCount READ wanderCount NOTIFY countsChanged)
    Q_PROPERTY(int fatigueCount READ fatigueCount NOTIFY countsChanged)
    /// "我走神了，本轮已记录 N 次" and the fatigue counterpart.
    Q_PROPERTY(QString wanderHelp READ wanderHelp NOTIFY countsChanged)
    Q_PROPERTY(QString fatigueHelp READ fatigueHelp NOTIFY countsChanged)

public:
    explicit FloatingTimerViewModel(AppStore& store, QObject* parent = nullptr);

    /// Panel size for the two settings, in points; 0 × 0 never opens.
    static QSize panelSize(bool countdown, bool signalButtons);

    bool countdownShown() const { return m_countdown; }
    bool signalsShown() const { return m_signals; }
    int panelWidth() const { return panelSize(m_countdown, m_signals).width(); }
    int panelHeight() const { return panelSize(m_countdown, m_signals).height(); }
    int cornerRadius() const { return m_countdown ? 24 : 19; }
    QColor backgroundColor() const;
    double mintWashOpacity() const { return m_dark ? 0.13 : 0.08; }
    QColor outlineColor() const;
    QColor shadowColor() const;
    int shadowRadius() const { return m_dark ? 24 : 20; }
    int shadowOffset() const { return m_dark ? 10 : 8; }
    double ringProgress() const { return m_ringProgress; }
    QString timeText() const { return m_timeText; }
    QString statusWord() const;
    QString statusTint() const;
    QString statusSymbol() const;
    QString roundSymbol() const;
    QString roundHelp() const;
    bool signalsEnabled() const { return m_phase != SessionPhase::microBreak; }
    int wanderCount() const { return m_wanders; }
    int fatigueCount() const { return m_fatigue; }
    QString wanderHelp() const;
    QString fatigueHelp() const;

    /// Pause, resume, or end the micro-break early.
    Q_INVOKABLE void roundAction();
    Q_INVOKABLE void recordMindWander();
    Q_INVOKABLE void recordFatigue();

Q_SIGNALS:
    void shapeChanged();
    void timeChanged();
    void phaseStateChanged();
    void countsChanged();

private:
    void connectStore();
    void refreshAll();
    void refreshShape();
    void refreshPhase();
    void refreshTime();
    void refreshCounts();

    bool m_countdown = true;
    bool m_signals = false;
    bool m_dark = true;
    SessionPhase m_phase = SessionPhase::idle;
    double m_ringProgress = 0.02;
    QString m_timeText;
    int m_wanders = 0;
    int m_fatigue = 0;
};

} // namespace quill
