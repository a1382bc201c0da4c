#pragma once

#include <QColor>
#include <QImage>
#include <QString>

namespace quill {

/// Draws a symbol for the tray: outline-only names ("leaf") stroked, the rest filled.
QImage trayIconImage(const QString& symbol, int size, const QColor& color);

} // namespace quill
