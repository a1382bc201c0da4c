#include "SymbolDrawing.h"

#include <QPainter>
#include <QPainterPath>
#include <array>

namespace quill {

namespace {

// Adds round-capped strokes to the shapes as one outline, so where a leg meets the body a
// translucent colour does not add up to a darker spot.
QPainterPath withStrokes(QPainterPath shapes, std::initializer_list<QLineF> lines, qreal width) {
    QPainterPathStroker stroker;
    stroker.setWidth(width);
    stroker.setCapStyle(Qt::RoundCap);
    for (const QLineF& line : lines) {
        QPainterPath segment(line.p1());
        segment.lineTo(line.p2());
        shapes = shapes.united(stroker.createStroke(segment));
    }
    return shapes;
}

QPainterPath circles(std::initializer_list<QPointF> centres, qreal radius) {
    QPainterPath path;
    for (const QPointF& centre : centres)
        path.addEllipse(centre, radius, radius);
    return path;
}

// Each drawing is one outline on the icon font's 24-unit grid.
QPainterPath dottedCircle() {
    return circles({{12, 3.2},
                    {17.2, 4.9},
                    {20.4, 9.3},
                    {20.4, 14.7},
                    {17.2, 19.1},
                    {12, 20.8},
                    {6.8, 19.1},
                    {3.6, 14.7},
                    {3.6, 9.3},
                    {6.8, 4.9}},
                   1.6);
}

QPainterPath rainCloud() {
    QPainterPath cloud;
    cloud.setFillRule(Qt::WindingFill);
    cloud.addEllipse(QPointF(8, 10), 4.2, 4.2);
    cloud.addEllipse(QPointF(13.2, 7.6), 5.2, 5.2);
    cloud.addEllipse(QPointF(18, 10.6), 3.6, 3.6);
    cloud.addRoundedRect(QRectF(3.8, 10, 17.8, 4.6), 2.3, 2.3);
    return withStrokes(cloud.simplified(),
                       {{8, 17.6, 6.8, 21.4}, {12.6, 17.6, 11.4, 21.4}, {17.2, 17.6, 16, 21.4}}, 2);
}

QPainterPath bird() {
    QPainterPath shape;
    shape.setFillRule(Qt::WindingFill);
    shape.addEllipse(QPointF(16.4, 7.6), 3.4, 3.4);
    QPainterPath beak;
    beak.moveTo(19.4, 6.6);
    beak.lineTo(23, 7.8);
    beak.lineTo(19.4, 9.2);
    beak.closeSubpath();
    shape.addPath(beak);
    QPainterPath body;
    body.moveTo(14, 8.6);
    body.cubicTo(17.6, 10.4, 18.2, 14.6, 15.2, 17);
    body.cubicTo(12.6, 19.2, 7.6, 18.6, 4.8, 16.4);
    body.lineTo(1, 18.2);
    body.lineTo(3.2, 14.2);
    body.cubicTo(4.8, 10.6, 9.6, 7.2, 14, 8.6);
    body.closeSubpath();
    shape.addPath(body);
    return withStrokes(shape.simplified(), {{10.6, 18.2, 10, 21.6}, {13.4, 18, 13.4, 21.6}}, 1.5);
}

struct Named {
    const char* name;
    QPainterPath (*make)();
};

constexpr std::array kDrawings{Named{"circle.dotted", dottedCircle},
                               Named{"cloud.rain.fill", rainCloud}, Named{"bird.fill", bird}};

const Named* find(const QString& name) {
    for (const Named& entry : kDrawings)
        if (name == QLatin1String(entry.name))
            return &entry;
    return nullptr;
}

} // namespace

SymbolDrawing::SymbolDrawing(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
}

bool SymbolDrawing::draws(const QString& name) {
    return find(name) != nullptr;
}

void SymbolDrawing::setName(const QString& name) {
    if (name == m_name)
        return;
    m_name = name;
    Q_EMIT nameChanged();
    update();
}

void SymbolDrawing::setColor(const QColor& color) {
    if (color == m_color)
        return;
    m_color = color;
    Q_EMIT colorChanged();
    update();
}

void SymbolDrawing::paint(QPainter* painter) {
    const Named* entry = find(m_name);
    if (!entry || width() <= 0 || height() <= 0)
        return;
    // Built per paint: a drawing repaints only when its colour, name or size changes.
    const QPainterPath path = entry->make();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->scale(width() / 24.0, height() / 24.0);
    painter->fillPath(path, m_color);
}

} // namespace quill
