#include "RoundedWindowMask.h"

#include <QPainterPath>
#include <QPolygon>

namespace quill {

QRegion roundedWindowMask(QSize size, qreal radius) {
    QPainterPath path;
    path.addRoundedRect(QRectF(QPointF(0, 0), size), radius, radius);
    return QRegion(path.toFillPolygon().toPolygon());
}

} // namespace quill
