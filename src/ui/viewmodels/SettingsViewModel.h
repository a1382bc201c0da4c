#pragma once

#include "StoreViewModel.h"

#include <QStringList>
#include <QVariantList>

namespace quill {

/// The settings screen's reminder, focus-round and data cards, and its clear confirmation.
/// Every write goes through the store's one settings path, already repaired, so a control
/// always shows the value that is kept.
class SettingsViewModel : public StoreViewModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Built by ViewModels on the app's store")
    /// Earliest reminder, minutes; its stepper runs 1…60.
    Q_PROPERTY(int reminderMinimum READ reminderMinimum WRITE setReminderMinimum NOTIFY changed)
    /// Latest reminder, minutes; its stepper runs `reminderMaximumFrom`…90.
    Q_PROPERTY(int reminderMaximum READ reminderMaximum WRITE setReminderMaximum NOTIFY changed)
    /// The latest stepper's lower bound: the earliest time, at least 1.
    Q_PROPERTY(int reminderMaximumFrom READ reminderMaximumFrom NOTIFY changed)
    /// Micro-break seconds; its stepper runs 5…60.
    Q_PROPERTY(
        int microBreakSeconds READ microBreakSeconds WRITE setMicroBreakSeconds NOTIFY changed)
    /// "N 分钟" labels of the two reminder steppers and "N 秒" of the micro-break.
    Q_PROPERTY(QString reminderMinimumText READ reminderMinimumText NOTIFY changed)
    Q_PROPERTY(QString reminderMaximumText READ reminderMaximumText NOTIFY changed)
    Q_PROPERTY(QString microBreakText READ microBreakText NOTIFY changed)
    /// Reminder sound names: "随机" first, then the pool.
    Q_PROPERTY(QStringList reminderSoundOptions READ reminderSoundOptions CONSTANT)
    /// Index of the stored reminder sound in its options; -1 for an unknown stored name.
    Q_PROPERTY(
        int reminderSoundIndex READ reminderSoundIndex WRITE setReminderSoundIndex NOTIFY changed)
    /// Show the countdown to the next reminder during a round.
    Q_PROPERTY(bool showNextReminder READ showNextReminder WRITE setShowNextReminder NOTIFY changed)
    /// Default round length, minutes, 1…1440.
    Q_PROPERTY(int selectedDuration READ selectedDuration WRITE setSelectedDuration NOTIFY changed)
    /// Completion sound names: the pool, then "Hero".
    Q_PROPERTY(QStringList completionSoundOptions READ completionSoundOptions CONSTANT)
    /// Index of the stored completion sound; -1 for an unknown stored name.
    Q_PROPERTY(int completionSoundIndex READ completionSoundIndex WRITE setCompletionSoundIndex
                   NOTIFY changed)
    /// Floating countdown while minimised (on when unset).
    Q_PROPERTY(bool floatingTimerOnMinimize READ floatingTimerOnMinimize WRITE
                   setFloatingTimerOnMinimize NOTIFY changed)
    /// Floating signal buttons while minimised (off when unset).
    Q_PROPERTY(bool floatingSignalButtons READ floatingSignalButtons WRITE setFloatingSignalButtons
                   NOTIFY changed)
    /// The data card's subtitle, true for the platform.
    Q_PROPERTY(QString dataSubtitle READ dataSubtitle CONSTANT)
    /// "清空专注记录" accepts clicks: there are stored sessions.
    Q_PROPERTY(bool clearEnabled READ clearEnabled NOTIFY sessionsChanged)
    /// The "清空全部专注记录？" alert is open.
    Q_PROPERTY(
        bool clearConfirmationShown READ clearConfirmationShown NOTIFY clearConfirmationChanged)

public:
    explicit SettingsViewModel(AppStore& store, QObject* parent = nullptr);

    int reminderMinimum() const;
    void setReminderMinimum(int minutes);
    int reminderMaximum() const;
    void setReminderMaximum(int minutes);
    int reminderMaximumFrom() const;
    int microBreakSeconds() const;
    void setMicroBreakSeconds(int seconds);
    QString reminderMinimumText() const;
    QString reminderMaximumText() const;
    QString microBreakText() const;
    static QStringList reminderSoundOptions();
    int reminderSoundIndex() const;
    void setReminderSoundIndex(int index);
    bool showNextReminder() const;
    void setShowNextReminder(bool show);
    int selectedDuration() const;
    void setSelectedDuration(int minutes);
    static QStringList completionSoundOptions();
    int completionSoundIndex() const;
    void setCompletionSoundIndex(int index);
    bool floatingTimerOnMinimize() const;
    void setFloatingTimerOnMinimize(bool on);
    bool floatingSignalButtons() const;
    void setFloatingSignalButtons(bool on);
    static QString dataSubtitle();
    bool clearEnabled() const;
    bool clearConfirmationShown() const { return m_clearConfirmation; }

    /// The duration field's text on Return or leaving it: a whole number is kept within
    /// 1…1440; anything else leaves the stored length. Either way `changed` follows, so the
    /// field shows the kept value again.
    Q_INVOKABLE void commitDurationText(const QString& text);
    /// The preview buttons beside the two sound pickers.
    Q_INVOKABLE void previewReminderSound();
    Q_INVOKABLE void previewCompletionSound();
    Q_INVOKABLE void exportSessions();
    /// "清空专注记录": opens the alert (only with stored sessions).
    Q_INVOKABLE void requestClear();
    /// The alert's "取消".
    Q_INVOKABLE void cancelClear();
    /// The alert's "永久清空".
    Q_INVOKABLE void confirmClear();

Q_SIGNALS:
    void changed();
    void sessionsChanged();
    void clearConfirmationChanged();

private:
    AppSettings current() const;
    void setClearConfirmation(bool shown);

    bool m_clearConfirmation = false;
};

} // namespace quill
