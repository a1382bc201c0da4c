#pragma once

#include <QColor>
#include <QImage>
#include <QString>

namespace quill {

/// Draws a symbol for the tray: outline-only names ("leaf") stroked, the rest filled; a `halo`
/// colour other than transparent rims the ink with it.
QImage trayIconImage(const QString& symbol, int size, const QColor& color,
                     const QColor& halo = Qt::transparent);

/// The tray's own drawing of `symbol`: a light neutral outline while idle, a mint leaf during a
/// round ("….fill"), both rimmed dark so they read on light panels as well as dark ones.
QImage trayIconImage(const QString& symbol, int size);

} // namespace quill
