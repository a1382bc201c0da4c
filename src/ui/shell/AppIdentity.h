#pragma once

#include <QIcon>
#include <QString>

namespace quill {

/// The application id: the desktop entry's and metainfo's name, the icon's name, the
/// Wayland app id. The build defines it once (QUILL_APP_ID) for the packaging files too.
QString appId();

/// Adds the icon folder of the installed tree (relative to the executable) to the theme
/// search path, ahead of the system's, so a copy installed in any prefix shows its own icon.
void addInstalledIconPath(const QString& applicationDir);

/// The application icon: the theme's icon of that name when one is installed, else the
/// built-in drawing. `source`, when given, receives where it came from (for the log).
QIcon applicationIcon(QString* source = nullptr);

} // namespace quill
