#pragma once

#include "AmbientCardViewModel.h"
#include "CompletionViewModel.h"
#include "ControlCardViewModel.h"
#include "FloatingTimerViewModel.h"
#include "FocusGuardViewModel.h"
#include "FocusViewModel.h"
#include "HistoryViewModel.h"
#include "InsightsViewModel.h"
#include "MenuBarViewModel.h"
#include "MusicSettingsViewModel.h"
#include "SettingsBridge.h"
#include "SettingsViewModel.h"
#include "ShellViewModel.h"
#include "TaskSettingsViewModel.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace quill {

/// The screens' view models, one each, all on the app's one store. Each is built the first
/// time a view asks for it, so a screen that is never opened costs nothing.
class ViewModels : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The view models are created by the application")
    Q_PROPERTY(quill::ShellViewModel* shell READ shell CONSTANT)
    Q_PROPERTY(quill::SettingsBridge* settingsBridge READ settingsBridge CONSTANT)
    Q_PROPERTY(quill::FocusViewModel* focus READ focus CONSTANT)
    Q_PROPERTY(quill::ControlCardViewModel* controlCard READ controlCard CONSTANT)
    Q_PROPERTY(quill::AmbientCardViewModel* ambientCard READ ambientCard CONSTANT)
    Q_PROPERTY(quill::CompletionViewModel* completion READ completion CONSTANT)
    Q_PROPERTY(quill::InsightsViewModel* insights READ insights CONSTANT)
    Q_PROPERTY(quill::HistoryViewModel* history READ history CONSTANT)
    Q_PROPERTY(quill::SettingsViewModel* settings READ settings CONSTANT)
    Q_PROPERTY(quill::MusicSettingsViewModel* music READ music CONSTANT)
    Q_PROPERTY(quill::TaskSettingsViewModel* tasks READ tasks CONSTANT)
    Q_PROPERTY(quill::FocusGuardViewModel* focusGuard READ focusGuard CONSTANT)
    Q_PROPERTY(quill::MenuBarViewModel* menuBar READ menuBar CONSTANT)
    Q_PROPERTY(quill::FloatingTimerViewModel* floatingTimer READ floatingTimer CONSTANT)

public:
    explicit ViewModels(AppStore& store, QObject* parent = nullptr);

    AppStore& store() const { return m_store; }

    ShellViewModel* shell();
    SettingsBridge* settingsBridge();
    FocusViewModel* focus();
    ControlCardViewModel* controlCard();
    AmbientCardViewModel* ambientCard();
    CompletionViewModel* completion();
    InsightsViewModel* insights();
    HistoryViewModel* history();
    SettingsViewModel* settings();
    MusicSettingsViewModel* music();
    TaskSettingsViewModel* tasks();
    FocusGuardViewModel* focusGuard();
    MenuBarViewModel* menuBar();
    FloatingTimerViewModel* floatingTimer();

private:
    template <class T> T* built(T*& slot) {
        if (!slot)
            slot = new T(m_store, this);
        return slot;
    }

    AppStore& m_store;
    ShellViewModel* m_shell = nullptr;
    SettingsBridge* m_settingsBridge = nullptr;
    FocusViewModel* m_focus = nullptr;
    ControlCardViewModel* m_controlCard = nullptr;
    AmbientCardViewModel* m_ambientCard = nullptr;
    CompletionViewModel* m_completion = nullptr;
    InsightsViewModel* m_insights = nullptr;
    HistoryViewModel* m_history = nullptr;
    SettingsViewModel* m_settings = nullptr;
    MusicSettingsViewModel* m_music = nullptr;
    TaskSettingsViewModel* m_tasks = nullptr;
    FocusGuardViewModel* m_focusGuard = nullptr;
    MenuBarViewModel* m_menuBar = nullptr;
    FloatingTimerViewModel* m_floatingTimer = nullptr;
};

} // namespace quill
