// The floating timer's cost, on the app's own start-up path with real services, reported as
// key=value lines (run it under an X server with a window manager, see measure-floating.sh):
//   panel_first_frame_ms  minimising the main window → first frame of the panel on screen
//   panel_rss_added_mb    resident memory with the panel open minus just before the round
//   panel_cpu_percent     CPU of the whole process while only the panel is visible during a
//                         round, in % of one core, over the measuring window
// Options: --seconds N sets the measuring window (default 20); --signals shows the two
// signal buttons as well.
#include "../ProcessUsage.h"
#include "store/AppStore.h"
#include "ui/UiModule.h"
#include "ui/shell/DesktopServices.h"
#include "ui/shell/FloatingTimerController.h"
#include "ui/shell/UiRuntime.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QQuickWindow>
#include <QTimer>
#include <cstdio>
#include <sys/resource.h>

using quill::bench::cpuSeconds;
using quill::bench::residentMb;

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const QStringList args = QCoreApplication::arguments();
    const int secondsAt = int(args.indexOf(QStringLiteral("--seconds")));
    const int seconds = secondsAt > 0 ? args.value(secondsAt + 1).toInt() : 20;
    const bool signalButtons = args.contains(QStringLiteral("--signals"));

    quill::linkUiModule();
    quill::UiRuntime::prepareApplication();
    quill::UiRuntime runtime(quill::makeDesktopServices());
    if (!runtime.load())
        return 1;
    auto* controller = runtime.mainWindow()->findChild<quill::FloatingTimerController*>(
        QStringLiteral("floatingTimerController"));
    if (!controller)
        return 1;

    QElapsedTimer sinceMinimise;
    double rssBefore = 0, cpuAtStart = 0;
    QElapsedTimer wall;
    QObject::connect(controller, &quill::FloatingTimerController::panelChanged, &app, [&] {
        QQuickWindow* panel = controller->panel();
        if (!panel)
            return;
        QObject::connect(
            panel, &QQuickWindow::frameSwapped, panel,
            [&, panel] {
                if (!sinceMinimise.isValid())
                    return;
                std::printf("panel_first_frame_ms=%.1f\n", sinceMinimise.nsecsElapsed() / 1e6);
                sinceMinimise.invalidate();
                (void)panel;
            },
            Qt::DirectConnection);
    });

    QTimer::singleShot(3000, &app, [&] {
        runtime.store()->editSettings(
            [&](quill::AppSettings& s) { s.floatingSignalButtons = signalButtons; });
        // Before the round: its start already compiles the panel's component.
        rssBefore = residentMb();
        runtime.store()->startSession();
        sinceMinimise.start();
        runtime.mainWindow()->showMinimized();
    });
    // Two seconds for the window manager to iconify the main window and settle the panel.
    QTimer::singleShot(5000, &app, [&] {
        std::printf("panel_open=%d main_minimised=%d\n", controller->panel() != nullptr,
                    bool(runtime.mainWindow()->windowStates() & Qt::WindowMinimized));
        std::printf("panel_rss_added_mb=%.1f\n", residentMb() - rssBefore);
        cpuAtStart = cpuSeconds();
        wall.start();
    });
    QTimer::singleShot(5000 + seconds * 1000, &app, [&] {
        const double cpu = cpuSeconds() - cpuAtStart;
        std::printf("panel_cpu_percent=%.2f\n", 100.0 * cpu / (wall.elapsed() / 1000.0));
        std::printf("rss_mb=%.1f\n", residentMb());
        std::fflush(stdout);
        runtime.store()->abandonSession();
        QCoreApplication::quit();
    });
    return QApplication::exec();
}
