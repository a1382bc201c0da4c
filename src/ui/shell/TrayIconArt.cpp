#include "TrayIconArt.h"

#include "ui/theme/Symbols.h"

#include <QFont>
#include <QPainter>
#include <QPainterPath>

namespace quill {

QImage trayIconImage(const QString& symbol, int size, const QColor& color) {
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
    if (Symbols::isOutline(symbol)) {
        painter.setPen(QPen(color, std::max(1.0, size / 14.0)));
        painter.setBrush(Qt::NoBrush);
    } else {
        painter.setPen(Qt::NoPen);
        painter.setBrush(color);
    }
    painter.drawPath(path);
    return image;
}

} // namespace quill
