#include "ui/UiModule.h"
#include "ui/shell/DesktopServices.h"
#include "ui/shell/SingleInstance.h"
#include "ui/shell/UiRuntime.h"

#include <QApplication>
#include <QSystemTrayIcon>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quillmere"));
    QApplication::setOrganizationName(QStringLiteral("Quillmere"));
    QApplication::setDesktopFileName(QStringLiteral("quillmere"));
    // With a tray item the app lives on after its window is closed, as the tray panel and a
    // second launch can bring it back; without a tray, closing the window quits.
    QApplication::setQuitOnLastWindowClosed(!QSystemTrayIcon::isSystemTrayAvailable());

    // A second launch only brings the running app to the front.
    quill::SingleInstance instance(QStringLiteral("quillmere"));
    if (!instance.claim())
        return 0;

    quill::linkUiModule();
    quill::UiRuntime::prepareApplication();

    quill::UiRuntime runtime(quill::makeDesktopServices());
    if (!runtime.load())
        return 1;
    QObject::connect(&instance, &quill::SingleInstance::activationRequested, &runtime,
                     &quill::UiRuntime::bringToFront);
    return QApplication::exec();
}
