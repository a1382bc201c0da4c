#pragma once

#include <QRegion>
#include <QSize>

namespace quill {

/// The shape mask of a frameless rounded window drawn without a compositor: there the clear
/// pixels of a translucent window show black, so its corners are cut off instead.
QRegion roundedWindowMask(QSize size, qreal radius);

} // namespace quill
