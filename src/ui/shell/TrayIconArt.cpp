#include "TrayIconArt.h"

#include "ui/theme/Symbols.h"

#include <QFont>
#include <QPainter>
#include <QPainterPath>

namespace quill {

QImage trayIconImage(const QString& symbol, int size, const QColor& color, const QColor& halo) {
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const QString glyph = Symbols::glyph(symbol);
    if (glyph.isEmpty() || size <= 0)
        return image;

    QFont font(Symbols::fontFamily());
    font.setPixelSize(size);
    QPainterPath path;
    path.addText(0, 0, font, glyph);
    const QRectF bounds = path.boundingRect();
    // Centre the glyph's ink, not its advance box.
    path.translate(QPointF(size, size) / 2.0 - bounds.center());

    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const double stroke = std::max(1.0, size / 14.0);
    if (halo.alpha() > 0) {
        // The rim: the same shape drawn wider underneath, so every edge of the ink is bordered.
        const double rim = 2 * std::max(1.0, size / 16.0);
        const double width = Symbols::isOutline(symbol) ? stroke + rim : rim;
        painter.setPen(QPen(halo, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Symbols::isOutline(symbol) ? QBrush(Qt::NoBrush) : QBrush(halo));
        painter.drawPath(path);
    }
    if (Symbols::isOutline(symbol)) {
        painter.setPen(QPen(color, stroke));
        painter.setBrush(Qt::NoBrush);
    } else {
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
    }
    painter.drawPath(path);
    return image;
}

QImage trayIconImage(const QString& symbol, int size) {
    const bool running = symbol.endsWith(QLatin1String(".fill"));
    // Light ink for dark panels (9:1 on #2A2A2A), a dark rim for light ones (15:1 on white).
    const QColor ink = running ? QColor(0x78, 0xD7, 0xB2) : QColor(0xC9, 0xD4, 0xD0);
    return trayIconImage(symbol, size, ink, QColor(0x16, 0x22, 0x1F));
}

} // namespace quill
