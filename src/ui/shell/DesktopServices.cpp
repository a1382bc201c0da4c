#include "ui/shell/DesktopServices.h"

#include "audio/AudioServices.h"
#include "audio/music/MusicServices.h"
#include "store/SystemServices.h"
#include "store/focusguard/DesktopNotificationHold.h"
#include "store/focusguard/GnomeBannerHold.h"
#include "store/focusguard/GsettingsBannerSwitch.h"
#include "store/focusguard/PlasmaNotificationHold.h"
#include "store/focusguard/SessionLockWatch.h"
#include "ui/shell/AppIdentity.h"

#include <QDBusConnection>
#include <QDir>

namespace quill {

namespace {
// What this computer's desktop was left in belongs to this computer, not to the data folder
// a sync tool may share.
QString stateDirectory() {
    const QString state = qEnvironmentVariable("XDG_STATE_HOME");
    return (state.isEmpty() ? QDir::homePath() + QStringLiteral("/.local/state") : state) +
           QStringLiteral("/Quillmere");
}

std::shared_ptr<NotificationHold> createNotificationHold() {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    // Made at start even off GNOME: it gives back banners a crashed run left held.
    auto banners = std::make_shared<GnomeBannerHold>(
        std::make_shared<GsettingsBannerSwitch>(),
        stateDirectory() + QStringLiteral("/notification-banners-held"));
    return std::make_shared<DesktopNotificationHold>(
        bus, std::make_shared<PlasmaNotificationHold>(bus, appId()), banners);
}
} // namespace

Services makeDesktopServices() {
    Services services = makeSystemServices();
    services.sounds = createSoundPlayer();
    services.ambient = createAmbientOutput();
    services.music = createMusicPlayer();
    services.notificationHold = createNotificationHold();
    services.screenLock = std::make_shared<SessionLockWatch>(
        QDBusConnection::systemBus(), QDBusConnection::sessionBus(),
        qEnvironmentVariable("XDG_SESSION_ID"));
    return services;
}

} // namespace quill
