// Starts the app exactly as main.cpp does and reports, as key=value lines:
//   first_frame_ms  process start → first frame of the main window on screen
//   rss_mb          resident memory with the main window open, after the measuring window
//   cpu_percent     CPU time of the whole process over the measuring window, in % of one core
// Options: --round starts a round through the store before measuring, --ambient starts the
// ambient sound (and prints how long starting it took; with --prepared the store is told a
// second earlier that a play may follow, as hovering the card does), --hidden hides the main window
// while measuring; --seconds N sets the measuring window (default 30), which begins after --settle
// N seconds (default 5).
// --census only prints how many objects each QML file contributes to the started window
// (largest first) and quits: where start-up time and memory go.
// --locate NAME only prints the window coordinates of the item's centre (x y) and quits, so
// measure.sh can click it in the real binary.
// --write-history N only writes N synthetic sessions as the data file and quits; the next
// start then measures opening them (start-up on a long history), e.g. under Xvfb:
//   bench_ui_app --write-history 100000 && bench_ui_app --settle 1 --seconds 1
#include "../ProcessUsage.h"
#include "SyntheticHistory.h"
#include "storage/Persistence.h"
#include "store/AppStore.h"
#include "ui/UiModule.h"
#include "ui/shell/DesktopServices.h"
#include "ui/shell/UiRuntime.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QMap>
#include <QQmlContext>
#include <QQuickItem>
#include <QQuickWindow>
#include <QStandardPaths>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <ctime>
#include <functional>
#include <sys/resource.h>
#include <unistd.h>
#include <utility>

using quill::bench::cpuSeconds;
using quill::bench::residentMb;

namespace {

// Milliseconds since this process was started by the kernel, from its start tick.
double msSinceProcessStart() {
    QFile stat(QStringLiteral("/proc/self/stat"));
    if (!stat.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray line = stat.readAll();
    // Field 22 (starttime) follows the ")" that closes the command name.
    const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
    const double startTicks = fields.value(19).toDouble();
    timespec boot{};
    clock_gettime(CLOCK_BOOTTIME, &boot);
    const double nowMs = boot.tv_sec * 1000.0 + boot.tv_nsec / 1e6;
    return nowMs - startTicks * 1000.0 / double(sysconf(_SC_CLK_TCK));
}

} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    const bool round = args.contains(QStringLiteral("--round"));
    const bool ambient = args.contains(QStringLiteral("--ambient"));
    const bool hidden = args.contains(QStringLiteral("--hidden"));
    const bool prepared = args.contains(QStringLiteral("--prepared"));
    const auto number = [&args](const char* name, int fallback) {
        const int at = int(args.indexOf(QLatin1String(name)));
        return at > 0 ? args.value(at + 1).toInt() : fallback;
    };
    const int seconds = number("--seconds", 30);
    const int settleMs = number("--settle", 5) * 1000;
    if (const int sessions = number("--write-history", 0); sessions > 0) {
        const QString folder =
            QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
            QStringLiteral("/Quillmere");
        return quill::Persistence::save(folder, quill::bench::syntheticSettings(),
                                        quill::bench::syntheticHistory(sessions))
                   ? 0
                   : 1;
    }

    quill::linkUiModule();
    quill::UiRuntime::prepareApplication();
    quill::UiRuntime runtime(quill::makeDesktopServices());
    if (!runtime.load())
        return 1;

    if (args.contains(QStringLiteral("--census"))) {
        QTimer::singleShot(500, &app, [&] {
            QMap<QString, int> perFile;
            const QList<QObject*> all = runtime.mainWindow()->findChildren<QObject*>();
            for (QObject* o : all) {
                const QQmlContext* context = qmlContext(o);
                perFile[context ? context->baseUrl().fileName() : QStringLiteral("(C++)")] += 1;
            }
            QList<std::pair<int, QString>> sorted;
            for (auto it = perFile.cbegin(); it != perFile.cend(); ++it)
                sorted.append({it.value(), it.key()});
            std::sort(sorted.begin(), sorted.end(), std::greater<>());
            std::printf("objects=%d\n", int(all.size()));
            for (const auto& [count, file] : sorted)
                std::printf("%6d %s\n", count, qPrintable(file));
            std::fflush(stdout);
            QCoreApplication::exit(0);
        });
        return QApplication::exec();
    }

    const int locateAt = int(args.indexOf(QStringLiteral("--locate")));
    if (locateAt > 0) {
        QTimer::singleShot(500, &app, [&] {
            auto* item = runtime.mainWindow()->findChild<QQuickItem*>(args.value(locateAt + 1));
            if (item) {
                const QPointF c = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
                std::printf("%d %d\n", int(c.x()), int(c.y()));
            }
            std::fflush(stdout);
            QCoreApplication::exit(item ? 0 : 1);
        });
        return QApplication::exec();
    }

    // The end waits for the first frame: under a window manager the window is mapped only
    // after a round trip to it, which can come after a measuring window of zero seconds.
    std::atomic<bool> firstFrame{false};
    bool endDue = false, ended = false;
    std::function<void()> end;
    QObject::connect(
        runtime.mainWindow(), &QQuickWindow::frameSwapped, runtime.mainWindow(),
        [&] {
            if (firstFrame.exchange(true))
                return;
            std::printf("first_frame_ms=%.1f\n", msSinceProcessStart());
            std::printf("sessions=%d\n", int(runtime.store()->sessions().size()));
            std::fflush(stdout);
            QMetaObject::invokeMethod(
                &app,
                [&] {
                    if (endDue)
                        end();
                },
                Qt::QueuedConnection);
        },
        Qt::DirectConnection);

    // As when the pointer has been on the ambient card for a moment before the click.
    if (ambient && prepared)
        QTimer::singleShot(std::max(0, settleMs - 1000), &app,
                           [&] { runtime.store()->prepareAmbientPlayback(); });
    double cpuAtStart = 0;
    QElapsedTimer wall;
    QTimer::singleShot(settleMs, &app, [&] {
        if (round)
            runtime.store()->startSession();
        if (ambient) {
            // Starting from rest brings up the audio system and opens the output.
            QElapsedTimer play;
            play.start();
            runtime.store()->toggleAmbientPlayback();
            std::printf("ambient_play_ms=%.1f\n", play.nsecsElapsed() / 1e6);
            std::fflush(stdout);
        }
        if (hidden)
            runtime.mainWindow()->hide();
        cpuAtStart = cpuSeconds();
        wall.start();
    });
    if (ambient) {
        // A stop, its fade, then a play within the quiet spell: the audio system is still up.
        QTimer::singleShot(settleMs + 1000, &app,
                           [&] { runtime.store()->toggleAmbientPlayback(); });
        QTimer::singleShot(settleMs + 5000, &app, [&] {
            QElapsedTimer play;
            play.start();
            runtime.store()->toggleAmbientPlayback();
            std::printf("ambient_replay_ms=%.1f\n", play.nsecsElapsed() / 1e6);
        });
    }
    end = [&] {
        if (std::exchange(ended, true))
            return;
        const double cpu = cpuSeconds() - cpuAtStart;
        std::printf("cpu_percent=%.2f\n", 100.0 * cpu / (wall.elapsed() / 1000.0));
        std::printf("rss_mb=%.1f\n", residentMb());
        std::printf("backend=%s\n",
                    qPrintable(runtime.mainWindow()->rendererInterface()->graphicsApi() ==
                                       QSGRendererInterface::Software
                                   ? QStringLiteral("software")
                                   : QStringLiteral("opengl")));
        std::fflush(stdout);
        if (round)
            runtime.store()->abandonSession();
        QCoreApplication::quit();
    };
    QTimer::singleShot(settleMs + seconds * 1000, &app, [&] {
        endDue = true;
        if (firstFrame)
            end();
    });
    return QApplication::exec();
}
