#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

namespace quill {

/// Where the tray panel opens: centred under the pointer when the tray sits in the top half
/// of the screen, above it otherwise, always kept inside the available area.
QPoint panelPosition(QPoint cursor, QSize panel, QRect available);

} // namespace quill
