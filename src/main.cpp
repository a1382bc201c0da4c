#include "audio/AmbientResources.h"
#include "ui/UiLog.h"
#include "ui/UiModule.h"
#include "ui/shell/AppIdentity.h"
#include "ui/shell/DesktopNotifier.h"
#include "ui/shell/DesktopServices.h"
#include "ui/shell/GracefulExit.h"
#include "ui/shell/PlatformChoice.h"
#include "ui/shell/QtTranslations.h"
#include "ui/shell/RoundEndNotice.h"
#include "ui/shell/SessionBusProbe.h"
#include "ui/shell/SingleInstance.h"
#include "ui/shell/UiRuntime.h"

#include <QApplication>
#include <QDBusConnection>

namespace {
/// A session bus that takes connections but never answers would hold the accessibility bridge and
/// every other D-Bus call on the UI thread: the window would never appear. Such a bus is left alone
/// for this run, as if there were none.
void avoidAWedgedSessionBus() {
    QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    if (address.isEmpty() && !qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        address = "unix:path=" + qgetenv("XDG_RUNTIME_DIR") + "/bus";
    using namespace std::chrono_literals;
    if (address.isEmpty() || quill::sessionBusAnswers(address, 2s))
        return;
    qCWarning(quill::lcUi) << "The session bus does not answer; running without it";
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/dev/null/no-session-bus");
}
} // namespace

int main(int argc, char** argv) {
    avoidAWedgedSessionBus();
    quill::choosePlatformForDesktop();
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quillmere"));
    QApplication::setOrganizationName(QStringLiteral("Quillmere"));
    // The Wayland app id and the desktop entry the shell matches windows and icons with.
    QApplication::setDesktopFileName(quill::appId());

    // A second launch only brings the running app to the front.
    quill::SingleInstance instance(QStringLiteral("quillmere"));
    if (!instance.claim())
        return 0;

    quill::installQtTranslations();
    // Fonts first: the icon is drawn with the icon font.
    quill::UiRuntime::prepareApplication();
    quill::addInstalledIconPath(QApplication::applicationDirPath());
    QString iconSource;
    QApplication::setWindowIcon(quill::applicationIcon(&iconSource));
    qCDebug(quill::lcUi) << "Application icon:" << iconSource;
    qCDebug(quill::lcUi) << "Ambient recordings:"
                         << quill::AmbientResources().locate(QStringLiteral("rain"));

    quill::linkUiModule();

    quill::UiRuntime runtime(quill::makeDesktopServices());
    if (!runtime.load())
        return 1;
    QObject::connect(&instance, &quill::SingleInstance::activationRequested, &runtime,
                     &quill::UiRuntime::bringToFront);
    // Logout, shutdown, Ctrl+C or a lost display end the app as quitting does, nothing lost.
    quill::GracefulExit gracefulExit(runtime.store());
    QObject::connect(&gracefulExit, &quill::GracefulExit::terminationRequested, &app,
                     &QCoreApplication::quit);

    quill::DesktopNotifier notifier(QDBusConnection::sessionBus());
    quill::RoundEndNotice roundEndNotice(runtime.store(), runtime.mainWindow(), &notifier);
    qCDebug(quill::lcUi) << "Main window shown";
    return QApplication::exec();
}
