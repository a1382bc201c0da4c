#include "ViewModels.h"

namespace quill {

ViewModels::ViewModels(AppStore& store, QObject* parent) : QObject(parent), m_store(store) {}

ShellViewModel* ViewModels::shell() {
    return built(m_shell);
}
SettingsBridge* ViewModels::settingsBridge() {
    return built(m_settingsBridge);
}
FocusViewModel* ViewModels::focus() {
    return built(m_focus);
}
ControlCardViewModel* ViewModels::controlCard() {
    return built(m_controlCard);
}
AmbientCardViewModel* ViewModels::ambientCard() {
    return built(m_ambientCard);
}
CompletionViewModel* ViewModels::completion() {
    return built(m_completion);
}
InsightsViewModel* ViewModels::insights() {
    return built(m_insights);
}
HistoryViewModel* ViewModels::history() {
    return built(m_history);
}
SettingsViewModel* ViewModels::settings() {
    return built(m_settings);
}
MusicSettingsViewModel* ViewModels::music() {
    return built(m_music);
}
TaskSettingsViewModel* ViewModels::tasks() {
    return built(m_tasks);
}
FocusGuardViewModel* ViewModels::focusGuard() {
    return built(m_focusGuard);
}
MenuBarViewModel* ViewModels::menuBar() {
    return built(m_menuBar);
}
FloatingTimerViewModel* ViewModels::floatingTimer() {
    return built(m_floatingTimer);
}

} // namespace quill
