#include "AppIdentity.h"

#include "TrayIconArt.h"
#include "ui/theme/AdaptiveColor.h"

#include <QDir>
#include <QFileInfo>
#include <QPixmap>

#ifndef QUILL_APP_ID
#error "QUILL_APP_ID must name the application id"
#endif

namespace quill {

QString appId() {
    return QStringLiteral(QUILL_APP_ID);
}

void addInstalledIconPath(const QString& applicationDir) {
    const QString icons = QDir::cleanPath(applicationDir + QStringLiteral("/../share/icons"));
    if (!QFileInfo(icons).isDir())
        return;
    QStringList paths = QIcon::themeSearchPaths();
    paths.removeAll(icons);
    paths.prepend(icons);
    QIcon::setThemeSearchPaths(paths);
    // A theme needs its index.theme, which only the system's hicolor folder has; a prefix of
    // our own (~/.local, /opt) is searched as plain folders when the theme finds nothing.
    QStringList plain = QIcon::fallbackSearchPaths();
    for (const char* folder : {"/hicolor/scalable/apps", "/hicolor/symbolic/apps"})
        plain << icons + QLatin1String(folder);
    QIcon::setFallbackSearchPaths(plain);
    // Platforms without a desktop theme (offscreen, bare X servers) name none, and then
    // nothing is looked up at all; hicolor is where every application's icon goes.
    if (QIcon::themeName().isEmpty())
        QIcon::setThemeName(QStringLiteral("hicolor"));
}

QIcon applicationIcon(QString* source) {
    if (QIcon::hasThemeIcon(appId())) {
        if (source)
            *source = QStringLiteral("theme");
        return QIcon::fromTheme(appId());
    }
    if (source)
        *source = QStringLiteral("built-in");
    QIcon icon;
    for (int size : {16, 24, 32, 48, 64, 128, 256})
        icon.addPixmap(QPixmap::fromImage(
            trayIconImage(QStringLiteral("leaf.fill"), size, colorFromRgb(0x78D7B2))));
    return icon;
}

} // namespace quill
