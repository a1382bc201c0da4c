#include "audio/AmbientResources.h"
#include "ui/UiLog.h"
#include "ui/UiModule.h"
#include "ui/shell/AppIdentity.h"
#include "ui/shell/DesktopNotifier.h"
#include "ui/shell/DesktopServices.h"
#include "ui/shell/PlatformChoice.h"
#include "ui/shell/QtTranslations.h"
#include "ui/shell/RoundEndNotice.h"
#include "ui/shell/SingleInstance.h"
#include "ui/shell/UiRuntime.h"

#include <QApplication>
#include <QDBusConnection>
#include <QSystemTrayIcon>

int main(int argc, char** argv) {
    quill::choosePlatformForDesktop();
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quillmere"));
    QApplication::setOrganizationName(QStringLiteral("Quillmere"));
    // The Wayland app id and the desktop entry the shell matches windows and icons with.
    QApplication::setDesktopFileName(quill::appId());
    // With a tray item the app lives on after its window is closed, as the tray panel and a
    // second launch can bring it back; without a tray, closing the window quits.
    QApplication::setQuitOnLastWindowClosed(!QSystemTrayIcon::isSystemTrayAvailable());

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

    quill::DesktopNotifier notifier(QDBusConnection::sessionBus());
    quill::RoundEndNotice roundEndNotice(runtime.store(), runtime.mainWindow(), &notifier);
    return QApplication::exec();
}
