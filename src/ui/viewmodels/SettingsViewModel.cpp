#include "SettingsViewModel.h"

#include <algorithm>

namespace quill {

SettingsViewModel::SettingsViewModel(AppStore& store, QObject* parent)
    : StoreViewModel(store, parent) {
    follow(&AppStore::settingsChanged, &SettingsViewModel::changed);
    follow(&AppStore::sessionsChanged, &SettingsViewModel::sessionsChanged);
    connect(&store, &AppStore::sessionsChanged, this, [this] {
        // The alert asks about stored rounds; with none left there is nothing to confirm.
        if (!clearEnabled())
            setClearConfirmation(false);
    });
}

AppSettings SettingsViewModel::current() const {
    return store().settings();
}

int SettingsViewModel::reminderMinimum() const {
    return int(current().reminderMinimumMinutes);
}

void SettingsViewModel::setReminderMinimum(int minutes) {
    // The repair raises the latest time along with it when the earliest passes it.
    editSettings([minutes](AppSettings& s) { s.reminderMinimumMinutes = minutes; });
}

int SettingsViewModel::reminderMaximum() const {
    return int(current().reminderMaximumMinutes);
}

void SettingsViewModel::setReminderMaximum(int minutes) {
    editSettings([minutes](AppSettings& s) { s.reminderMaximumMinutes = minutes; });
}

int SettingsViewModel::reminderMaximumFrom() const {
    return int(current().reminderMaximumFloor());
}

int SettingsViewModel::microBreakSeconds() const {
    return int(current().microBreakSeconds);
}

void SettingsViewModel::setMicroBreakSeconds(int seconds) {
    editSettings([seconds](AppSettings& s) { s.microBreakSeconds = seconds; });
}

QString SettingsViewModel::reminderMinimumText() const {
    return QStringLiteral("%1 分钟").arg(reminderMinimum());
}

QString SettingsViewModel::reminderMaximumText() const {
    return QStringLiteral("%1 分钟").arg(reminderMaximum());
}

QString SettingsViewModel::microBreakText() const {
    return QStringLiteral("%1 秒").arg(microBreakSeconds());
}

QStringList SettingsViewModel::reminderSoundOptions() {
    return quill::reminderSoundOptions();
}

int SettingsViewModel::reminderSoundIndex() const {
    return int(reminderSoundOptions().indexOf(current().reminderSound));
}

void SettingsViewModel::setReminderSoundIndex(int index) {
    const QStringList options = reminderSoundOptions();
    if (index < 0 || index >= options.size())
        return;
    editSettings([&](AppSettings& s) { s.reminderSound = options.at(index); });
}

bool SettingsViewModel::showNextReminder() const {
    return current().showNextReminder;
}

void SettingsViewModel::setShowNextReminder(bool show) {
    editSettings([show](AppSettings& s) { s.showNextReminder = show; });
}

int SettingsViewModel::selectedDuration() const {
    return int(current().selectedDurationMinutes);
}

void SettingsViewModel::setSelectedDuration(int minutes) {
    editSettings([minutes](AppSettings& s) { s.selectedDurationMinutes = minutes; });
}

void SettingsViewModel::commitDurationText(const QString& text) {
    bool ok = false;
    const qlonglong minutes = text.trimmed().toLongLong(&ok);
    if (ok)
        editSettings([minutes](AppSettings& s) { s.selectedDurationMinutes = minutes; });
    else
        Q_EMIT changed();
}

QStringList SettingsViewModel::completionSoundOptions() {
    return quill::completionSoundOptions();
}

int SettingsViewModel::completionSoundIndex() const {
    return int(completionSoundOptions().indexOf(current().completionSound));
}

void SettingsViewModel::setCompletionSoundIndex(int index) {
    const QStringList options = completionSoundOptions();
    if (index < 0 || index >= options.size())
        return;
    editSettings([&](AppSettings& s) { s.completionSound = options.at(index); });
}

bool SettingsViewModel::floatingTimerOnMinimize() const {
    return current().effectiveFloatingTimerOnMinimize();
}

void SettingsViewModel::setFloatingTimerOnMinimize(bool on) {
    editSettings([on](AppSettings& s) { s.floatingTimerOnMinimize = on; });
}

bool SettingsViewModel::floatingSignalButtons() const {
    return current().effectiveFloatingSignalButtons();
}

void SettingsViewModel::setFloatingSignalButtons(bool on) {
    editSettings([on](AppSettings& s) { s.floatingSignalButtons = on; });
}

QString SettingsViewModel::dataSubtitle() {
#ifdef Q_OS_MACOS
    return QStringLiteral("全部记录只保存在这台 Mac");
#else
    return QStringLiteral("全部记录只保存在这台电脑");
#endif
}

bool SettingsViewModel::clearEnabled() const {
    return store().sessionCount() > 0;
}

void SettingsViewModel::previewReminderSound() {
    store().playSound(current().reminderSound);
}

void SettingsViewModel::previewCompletionSound() {
    store().playSound(current().completionSound);
}

void SettingsViewModel::exportSessions() {
    store().exportSessions();
}

void SettingsViewModel::requestClear() {
    if (clearEnabled())
        setClearConfirmation(true);
}

void SettingsViewModel::cancelClear() {
    setClearConfirmation(false);
}

void SettingsViewModel::confirmClear() {
    if (!m_clearConfirmation)
        return;
    setClearConfirmation(false);
    store().clearHistory();
}

void SettingsViewModel::setClearConfirmation(bool shown) {
    if (assign(m_clearConfirmation, shown))
        Q_EMIT clearConfirmationChanged();
}

} // namespace quill
