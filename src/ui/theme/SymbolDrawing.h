#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace quill {

/// The few symbols the icon font has no fitting glyph for, drawn with the painter on the
/// font's 24-unit grid, scaled to the item and filled in `color`.
class SymbolDrawing : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY nameChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)

public:
    explicit SymbolDrawing(QQuickItem* parent = nullptr);

    /// True for the names drawn here rather than taken from the font.
    static bool draws(const QString& name);

    QString name() const { return m_name; }
    void setName(const QString& name);
    QColor color() const { return m_color; }
    void setColor(const QColor& color);

    void paint(QPainter* painter) override;

Q_SIGNALS:
    void nameChanged();
    void colorChanged();

private:
    QString m_name;
    QColor m_color;
};

} // namespace quill
