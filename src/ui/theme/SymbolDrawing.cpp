#include "SymbolDrawing.h"

#include <QPainter>
#include <QPainterPath>
#include <array>

namespace quill {

namespace {

struct Stroke {
    QLineF line;
    qreal width;
};

// One drawing: filled shapes, united so overlaps of a translucent colour stay even, and
// round-capped strokes. Coordinates on the 24-unit grid of the icon font.
struct Drawing {
    QPainterPath fill;
    std::vector<Stroke> strokes;
};

QPainterPath circles(std::initializer_list<QPointF> centres, qreal radius) {
    QPainterPath path;
    for (const QPointF& centre : centres)
        path.addEllipse(centre, radius, radius);
    return path;
}

Drawing dottedCircle() {
    return {circles({{12, 3.2},
                     {17.2, 4.9},
                     {20.4, 9.3},
                     {20.4, 14.7},
                     {17.2, 19.1},
                     {12, 20.8},
                     {6.8, 19.1},
                     {3.6, 14.7},
                     {3.6, 9.3},
                     {6.8, 4.9}},
                    1.6),
            {}};
}

Drawing rainCloud() {
    QPainterPath cloud;
    cloud.setFillRule(Qt::WindingFill);
    cloud.addEllipse(QPointF(8, 10), 4.2, 4.2);
    cloud.addEllipse(QPointF(13.2, 7.6), 5.2, 5.2);
    cloud.addEllipse(QPointF(18, 10.6), 3.6, 3.6);
    cloud.addRoundedRect(QRectF(3.8, 10, 17.8, 4.6), 2.3, 2.3);
    return {
        cloud.simplified(),
        {{{8, 17.6, 6.8, 21.4}, 2}, {{12.6, 17.6, 11.4, 21.4}, 2}, {{17.2, 17.6, 16, 21.4}, 2}}};
}

Drawing bird() {
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
    return {shape.simplified(), {{{10.6, 18.2, 10, 21.6}, 1.5}, {{13.4, 18, 13.4, 21.6}, 1.5}}};
}

struct Named {
    const char* name;
    Drawing (*make)();
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
    // Built per paint: a drawing repaints only when its colour, name or size changes. Strokes
    // join the shapes in one path, so where a leg meets the body a translucent colour does
    // not add up to a darker spot.
    const Drawing drawing = entry->make();
    QPainterPath path = drawing.fill;
    for (const Stroke& stroke : drawing.strokes) {
        QPainterPath line;
        line.moveTo(stroke.line.p1());
        line.lineTo(stroke.line.p2());
        QPainterPathStroker stroker;
        stroker.setWidth(stroke.width);
        stroker.setCapStyle(Qt::RoundCap);
        path = path.united(stroker.createStroke(line));
    }
    painter->setRenderHint(QPainter::Antialiasing);
    painter->scale(width() / 24.0, height() / 24.0);
    painter->fillPath(path, m_color);
}

} // namespace quill
