#include "SettingsScenes.h"

#include "store/AppStore.h"
#include "ui/UiHarness.h"
#include "ui/shell/FloatingTimerController.h"

#include <QQuickItem>
#include <QQuickWindow>

namespace quill::screenshots {

namespace {

using test::UiHarness;

void editSettings(UiHarness& ui, const std::function<void(AppSettings&)>& change) {
    ui.store().editSettings(change);
    ui.settle();
}

QQuickWindow* settingsScreen(UiHarness& ui) {
    ui.click("sidebar.section.settings");
    return nullptr;
}

void scrollToEnd(UiHarness& ui) {
    QQuickItem* scroll = ui.item("settings.scroll");
    scroll->setProperty(
        "contentY", std::max(0.0, scroll->property("contentHeight").toReal() - scroll->height()));
    ui.settle();
}

QQuickWindow* floating(UiHarness& ui, bool countdown, bool buttons, qint64 runMs) {
    editSettings(ui, [=](AppSettings& s) {
        s.floatingTimerOnMinimize = countdown;
        s.floatingSignalButtons = buttons;
    });
    ui.fakes.random->script.push_back(600);
    ui.store().startSession();
    ui.advance(runMs);
    ui.store().recordMindWander();
    ui.window()->showMinimized();
    ui.settle();
    auto* controller =
        ui.window()->findChild<FloatingTimerController*>(QStringLiteral("floatingTimerController"));
    QQuickWindow* panel = controller ? controller->panel() : nullptr;
    if (panel)
        ui.settle(panel);
    return panel;
}

} // namespace

void addSettingsScenes(QList<QPair<QString, SceneRecorder::Scene>>& scenes) {
    scenes.append({QStringLiteral("settings"), settingsScreen});
    scenes.append({QStringLiteral("settings-playlist"), [](UiHarness& ui) -> QQuickWindow* {
                       editSettings(ui, [](AppSettings& s) {
                           s.musicSource = MusicSource::playlist;
                           s.playlistName = QStringLiteral("深度专注");
                       });
                       return settingsScreen(ui);
                   }});
    scenes.append({QStringLiteral("settings-netease"), [](UiHarness& ui) -> QQuickWindow* {
                       editSettings(ui, [](AppSettings& s) {
                           s.musicService = MusicService::netEase;
                           s.autoPlayMusic = true;
                       });
                       settingsScreen(ui);
                       ui.store().testMusic();
                       if (!ui.fakes.music->requests.empty())
                           ui.fakes.music->requests.back().completion(
                               {false, QStringLiteral("没有找到网易云音乐客户端")});
                       ui.settle();
                       return nullptr;
                   }});
    scenes.append({QStringLiteral("settings-tasks-data"), [](UiHarness& ui) -> QQuickWindow* {
                       settingsScreen(ui);
                       scrollToEnd(ui);
                       return nullptr;
                   }});
    scenes.append({QStringLiteral("settings-clear-alert"), [](UiHarness& ui) -> QQuickWindow* {
                       settingsScreen(ui);
                       scrollToEnd(ui);
                       ui.click("settings.clear");
                       return nullptr;
                   }});
    scenes.append({QStringLiteral("floating-countdown"),
                   [](UiHarness& ui) { return floating(ui, true, false, 754'000); }});
    scenes.append({QStringLiteral("floating-countdown-signals"),
                   [](UiHarness& ui) { return floating(ui, true, true, 754'000); }});
    scenes.append({QStringLiteral("floating-signals"),
                   [](UiHarness& ui) { return floating(ui, false, true, 754'000); }});
    scenes.append({QStringLiteral("floating-micro-break"),
                   [](UiHarness& ui) { return floating(ui, true, true, 600'250 + 3'000); }});
}

} // namespace quill::screenshots
