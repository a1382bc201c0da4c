#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <optional>

namespace quill {

/// Where the tray panel opens: centred under the pointer when the tray sits in the top half
/// of the screen, above it otherwise, always kept inside the available area.
QPoint panelPosition(QPoint cursor, QSize panel, QRect available);

/// What the desktop tells about the tray click, for trayAnchor().
struct TrayClick {
    QRect icon;                   ///< the icon's geometry, when the tray host gives it (XEmbed)
    std::optional<QPoint> cursor; ///< the pointer, where it can be trusted (X11, not XWayland)
    QRect screen, available;      ///< the screen's whole and available geometry
    bool desktopTrayAtTop = true; ///< where this desktop keeps its tray (GNOME top, Plasma bottom)
};

/// The point the panel hangs from: the tray icon when the host says where it is, else the
/// pointer, else the corner where the desktop keeps its tray (the side its panel takes from
/// the available area, or the desktop's habit).
QPoint trayAnchor(const TrayClick& click);

} // namespace quill
