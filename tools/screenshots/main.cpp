#include "InsightScenes.h"
#include "SceneRecorder.h"
#include "SettingsScenes.h"
#include "store/AppStore.h"
#include "ui/UiHarness.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QInputMethodEvent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>
#include <cstdio>
#include <ctime>

using namespace quill;
using quill::test::UiHarness;

namespace {

// The first reminder comes after the scripted delay; rounds shown "running" stay before it.
void startRound(UiHarness& ui, qint64 reminderDelaySeconds, qint64 runMs) {
    ui.fakes.random->script.push_back(reminderDelaySeconds);
    ui.click("focus.primary");
    ui.advance(runMs);
}

QQuickWindow* focusing(UiHarness& ui) {
    startRound(ui, 900, 240'000);
    ui.click("focus.signal.wander");
    ui.advance(205'250);
    // The start toast has cleared by now; show the screen as it is while working.
    return nullptr;
}

QQuickWindow* review(UiHarness& ui) {
    startRound(ui, 600, 300'000);
    ui.click("focus.signal.wander");
    ui.advance(300'250 + 10'000);
    ui.click("focus.signal.wander");
    ui.advance(800'000);
    ui.click("focus.end");
    ui.click("endDialog.review");
    ui.click("review.focus.5");
    return nullptr;
}

// Tabs until the named control has the keyboard focus (and shows its ring).
void tabTo(UiHarness& ui, const char* name) {
    for (int i = 0; i < 60; ++i) {
        QQuickItem* focused = ui.window()->activeFocusItem();
        if (focused && focused->objectName() == QLatin1String(name))
            return;
        ui.pressKey(Qt::Key_Tab);
    }
}

void hover(UiHarness& ui, const char* name) {
    QQuickItem* item = ui.item(QString::fromLatin1(name));
    if (!item)
        return;
    const QPointF centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseMove(ui.window(), centre.toPoint());
    ui.settle();
}

void typeChinese(UiHarness& ui, const QString& text) {
    QObject* target = ui.window()->focusObject();
    if (!target)
        return;
    QInputMethodEvent commit;
    commit.setCommitString(text);
    QCoreApplication::sendEvent(target, &commit);
    ui.settle();
}

} // namespace

int main(int argc, char** argv) {
    // Local times of the demo history are Shanghai times, as the app's users see them.
    qputenv("TZ", "Asia/Shanghai");
    tzset();
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    if (args.size() != 2) {
        std::fprintf(stderr, "usage: quillmere_screenshots <output folder>\n");
        return 2;
    }
    const QString outputDir = args.at(1);
    if (!QDir().mkpath(outputDir)) {
        std::fprintf(stderr, "Cannot create %s.\n", qPrintable(outputDir));
        return 1;
    }

    QList<QPair<QString, screenshots::SceneRecorder::Scene>> scenes = {
        {QStringLiteral("idle"), [](UiHarness&) -> QQuickWindow* { return nullptr; }},
        {QStringLiteral("focusing"), focusing},
        {QStringLiteral("paused"),
         [](UiHarness& ui) -> QQuickWindow* {
             focusing(ui);
             ui.click("focus.primary");
             return nullptr;
         }},
        {QStringLiteral("micro-break"),
         [](UiHarness& ui) -> QQuickWindow* {
             startRound(ui, 180, 180'250 + 3'000);
             return nullptr;
         }},
        {QStringLiteral("end-dialog"),
         [](UiHarness& ui) -> QQuickWindow* {
             focusing(ui);
             ui.click("focus.end");
             return nullptr;
         }},
        {QStringLiteral("review-sheet"), review},
        {QStringLiteral("abandon-confirmation"),
         [](UiHarness& ui) -> QQuickWindow* {
             review(ui);
             ui.click("review.abandon");
             return nullptr;
         }},
        {QStringLiteral("tray-panel"),
         [](UiHarness& ui) -> QQuickWindow* {
             focusing(ui);
             QMetaObject::invokeMethod(ui.trayIcon(), "activate");
             ui.settle(ui.trayPanel());
             return ui.trayPanel();
         }},
        {QStringLiteral("tray-panel-idle"),
         [](UiHarness& ui) -> QQuickWindow* {
             QMetaObject::invokeMethod(ui.trayIcon(), "activate");
             ui.settle(ui.trayPanel());
             return ui.trayPanel();
         }},
        {QStringLiteral("task-row"),
         [](UiHarness& ui) -> QQuickWindow* {
             ui.click("control.taskToggle");
             ui.click("control.newTaskField");
             typeChinese(ui, QStringLiteral("英语听力"));
             return nullptr;
         }},
        {QStringLiteral("toast-saved"),
         [](UiHarness& ui) -> QQuickWindow* {
             review(ui);
             ui.click("review.save");
             return nullptr;
         }},
        {QStringLiteral("focus-ring"),
         [](UiHarness& ui) -> QQuickWindow* {
             tabTo(ui, "focus.primary");
             return nullptr;
         }},
        {QStringLiteral("focus-ring-dialog"),
         [](UiHarness& ui) -> QQuickWindow* {
             focusing(ui);
             tabTo(ui, "focus.end");
             ui.pressKey(Qt::Key_Space);
             return nullptr;
         }},
        {QStringLiteral("tooltip"),
         [](UiHarness& ui) -> QQuickWindow* {
             QQuickItem* scroll = ui.item("focus.scroll");
             scroll->setProperty("contentY",
                                 scroll->property("contentHeight").toReal() - scroll->height());
             ui.settle();
             hover(ui, "ambient.tile.birds.toggle");
             return nullptr;
         }},
        {QStringLiteral("ambient-playing"),
         [](UiHarness& ui) -> QQuickWindow* {
             for (const char* raw : {"rain", "fire", "brownNoise"})
                 ui.store().toggleAmbientSound(*ambientSoundFromRaw(QString::fromLatin1(raw)));
             ui.store().setAmbientVolume(0.4, AmbientSound::fire);
             ui.advance(3'500); // past the toast of the first selection
             QQuickItem* scroll = ui.item("focus.scroll");
             scroll->setProperty("contentY",
                                 scroll->property("contentHeight").toReal() - scroll->height());
             return nullptr;
         }},
    };

    scenes += screenshots::insightScenes();
    screenshots::addSettingsScenes(scenes);
    screenshots::SceneRecorder recorder(outputDir);
    bool ok = true;
    for (AppearanceMode appearance : {AppearanceMode::dark, AppearanceMode::light})
        for (const auto& [name, scene] : scenes)
            ok = recorder.record(appearance, name, scene) && ok;
    for (const QString& file : recorder.written())
        std::printf("%s\n", qPrintable(file));
    return ok ? 0 : 1;
}
