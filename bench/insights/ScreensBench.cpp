// Opens the app's main window (the app's own start-up path) on a history of N sessions and
// reports, as key=value lines:
//   insights_ms / history_ms   section switch → the next frame on screen (screen built then)
//   settings_ms                the same for the settings section, as a baseline
//   revisit_ms                 switching back to a screen already built
//   scroll_frame_ms_avg/max    frame to frame while the history list scrolls at 60 px a frame
//   delete_ms                  removing one session on the UI thread, the save included
//   delete_frame_ms            removing one session → the next frame on screen
//   rss_focus_mb / rss_both_mb resident memory on the focus screen, then after both screens
// Usage: bench_insights_screens [--sessions N]; run under X by measure.sh.
#include "../ProcessUsage.h"
#include "storage/Persistence.h"
#include "store/AppStore.h"
#include "ui/UiModule.h"
#include "ui/shell/DesktopServices.h"
#include "ui/shell/UiRuntime.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QQuickItem>
#include <QQuickWindow>
#include <QStandardPaths>
#include <QTimer>
#include <cstdio>
#include <functional>

using namespace quill;

using quill::bench::cpuSeconds;
using quill::bench::residentMb;

namespace {

// A plausible history: a few rounds a day going back, a dozen tasks, some notes and events.
QList<StudySession> history(int count, const QDateTime& now) {
    QList<StudySession> out;
    out.reserve(count);
    for (int i = 0; i < count; ++i) {
        StudySession s;
        s.id = QUuid::createUuid();
        s.startedAt = now.addSecs(-qint64(i) * 4 * 3600 - 600);
        s.focusedSeconds = 600 + (i * 97) % 3000;
        s.endedAt = s.startedAt.addSecs(s.focusedSeconds + 120);
        if (i % 7 != 0)
            s.taskName = QStringLiteral("任务 %1").arg(i % 12);
        s.plannedMinutes = 25 + (i % 4) * 10;
        s.reminderMinimumMinutes = 3;
        s.reminderMaximumMinutes = 5;
        s.microBreakSeconds = 10;
        for (int e = 0; e < i % 4; ++e)
            s.events << FocusEvent{QUuid::createUuid(), s.startedAt.addSecs(300 * (e + 1)),
                                   300 * (e + 1),
                                   e % 2 ? FocusEventKind::reminder : FocusEventKind::mindWander};
        s.startEnergy = 1 + i % 5;
        s.endEnergy = 1 + (i / 3) % 5;
        s.focusRating = 1 + (i / 2) % 5;
        s.completed = i % 5 != 0;
        if (i % 3 == 0)
            s.note = QStringLiteral("这一轮的备注，记下了当时的状态和下次想调整的地方。");
        out << s;
    }
    return out;
}

// Runs `action` and waits for the next frame on screen; returns the milliseconds between.
double toNextFrame(QQuickWindow* window, const std::function<void()>& action) {
    QEventLoop loop;
    QElapsedTimer timer;
    double elapsed = -1;
    const auto connection = QObject::connect(
        window, &QQuickWindow::frameSwapped, &loop,
        [&] {
            if (elapsed < 0)
                elapsed = double(timer.nsecsElapsed()) / 1e6;
            loop.quit();
        },
        Qt::QueuedConnection);
    timer.start();
    action();
    window->update();
    QTimer::singleShot(5000, &loop, &QEventLoop::quit);
    loop.exec();
    QObject::disconnect(connection);
    return elapsed;
}

void settle(int ms) {
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

QQuickItem* findItem(QQuickItem* root, const QString& name) {
    if (!root || root->objectName() == name)
        return root;
    for (QQuickItem* child : root->childItems())
        if (QQuickItem* found = findItem(child, name))
            return found;
    return nullptr;
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    const int at = int(args.indexOf(QStringLiteral("--sessions")));
    const int count = at > 0 ? args.value(at + 1).toInt() : 10'000;

    const QString dataDir =
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/Quillmere";
    Persistence::save(dataDir, AppSettings{}, history(count, QDateTime::currentDateTimeUtc()));

    linkUiModule();
    UiRuntime::prepareApplication();
    UiRuntime runtime(makeDesktopServices());
    if (!runtime.load())
        return 1;
    QQuickWindow* window = runtime.mainWindow();
    AppStore* store = runtime.store();
    std::printf("sessions=%d\n", int(store->sessions().size()));
    settle(2000);
    std::printf("rss_focus_mb=%.1f\n", residentMb());

    const auto show = [&](AppSection section) {
        return toNextFrame(window, [&] { store->setSelectedSection(section); });
    };
    // Another section built on first visit, for comparison: what any first switch costs.
    std::printf("settings_ms=%.1f\n", show(AppSection::settings));
    settle(500);
    std::printf("insights_ms=%.1f\n", show(AppSection::insights));
    settle(500);
    std::printf("history_ms=%.1f\n", show(AppSection::history));
    settle(500);
    show(AppSection::focus);
    settle(300);
    std::printf("revisit_insights_ms=%.1f\n", show(AppSection::insights));
    settle(300);
    std::printf("revisit_history_ms=%.1f\n", show(AppSection::history));
    settle(1000);
    std::printf("rss_both_mb=%.1f\n", residentMb());

    if (QQuickItem* list = findItem(window->contentItem(), QStringLiteral("history.list"))) {
        double total = 0, worst = 0;
        const int frames = 120;
        for (int i = 0; i < frames; ++i) {
            const double ms = toNextFrame(window, [&] {
                list->setProperty("contentY", list->property("contentY").toReal() + 60);
            });
            total += ms;
            worst = std::max(worst, ms);
        }
        std::printf("scroll_frame_ms_avg=%.2f\nscroll_frame_ms_max=%.2f\n", total / frames, worst);
    }

    settle(300);
    double deleteMs = 0;
    const double frameMs = toNextFrame(window, [&] {
        QElapsedTimer t;
        t.start();
        store->removeSession(store->sessions().at(store->sessions().size() / 2));
        deleteMs = double(t.nsecsElapsed()) / 1e6;
    });
    std::printf("delete_ms=%.1f\ndelete_frame_ms=%.1f\n", deleteMs, frameMs);
    std::printf("backend=%s\n",
                window->rendererInterface()->graphicsApi() == QSGRendererInterface::Software
                    ? "software"
                    : "opengl");
    std::fflush(stdout);
    return 0;
}
