#pragma once

#include "StoreViewModel.h"

#include <QStringList>

namespace quill {

/// The settings fields the focus screen, the card and the shell bind to, as effective values
/// (an absent field reads as its documented value). Every write goes back through
/// `AppStore::setSettings`, the one assignment path, which notifies, repairs after its
/// debounce, saves and updates the ambient levels.
class SettingsBridge : public StoreViewModel {
    Q_OBJECT
    QML_ELEMENT
    /// Planned minutes of the next round, as stored (repaired to 1…1440 by the store).
    Q_PROPERTY(int selectedDurationMinutes READ selectedDurationMinutes WRITE
                   setSelectedDurationMinutes NOTIFY changed)
    /// Lower bound of the random reminder wait, in minutes.
    Q_PROPERTY(int reminderMinimumMinutes READ reminderMinimumMinutes WRITE
                   setReminderMinimumMinutes NOTIFY changed)
    /// Upper bound of the random reminder wait, in minutes; never written below the minimum.
    Q_PROPERTY(int reminderMaximumMinutes READ reminderMaximumMinutes WRITE
                   setReminderMaximumMinutes NOTIFY changed)
    /// The lowest value the "最晚" stepper offers: the current minimum, at least 1.
    Q_PROPERTY(int reminderMaximumFloor READ reminderMaximumFloor NOTIFY changed)
    /// A countdown to the next reminder is shown during a round.
    Q_PROPERTY(bool showNextReminder READ showNextReminder NOTIFY changed)
    /// The dark appearance is chosen (dark or unset).
    Q_PROPERTY(bool darkAppearance READ darkAppearance NOTIFY changed)
    /// Ambient sound follows the round's phases (on when unset).
    Q_PROPERTY(bool ambientFollowsFocus READ ambientFollowsFocus WRITE setAmbientFollowsFocus NOTIFY
                   changed)
    /// Master ambient volume 0…1 (0.7 when unset).
    Q_PROPERTY(double ambientMasterVolume READ ambientMasterVolume WRITE setAmbientMasterVolume
                   NOTIFY changed)
    /// The user's task list in display order.
    Q_PROPERTY(QStringList taskNames READ taskNames NOTIFY changed)
    /// Show the floating countdown while minimised (on when unset).
    Q_PROPERTY(bool floatingTimerOnMinimize READ floatingTimerOnMinimize NOTIFY changed)
    /// Show the signal buttons in the floating window (off when unset).
    Q_PROPERTY(bool floatingSignalButtons READ floatingSignalButtons NOTIFY changed)

public:
    explicit SettingsBridge(QObject* parent = nullptr);

    int selectedDurationMinutes() const;
    void setSelectedDurationMinutes(int minutes);
    int reminderMinimumMinutes() const;
    void setReminderMinimumMinutes(int minutes);
    int reminderMaximumMinutes() const;
    void setReminderMaximumMinutes(int minutes);
    int reminderMaximumFloor() const;
    bool showNextReminder() const;
    bool darkAppearance() const;
    bool ambientFollowsFocus() const;
    void setAmbientFollowsFocus(bool follows);
    double ambientMasterVolume() const;
    void setAmbientMasterVolume(double volume);
    QStringList taskNames() const;
    bool floatingTimerOnMinimize() const;
    bool floatingSignalButtons() const;

Q_SIGNALS:
    void changed();

protected:
    void connectStore(AppStore* store) override;
    void refreshAll() override { Q_EMIT changed(); }

private:
    AppSettings current() const;
    template <class Edit> void write(Edit edit);
};

} // namespace quill
