#pragma once

#include <QColor>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace quill {

/// The one mapping from the symbol names the screens use ("leaf.fill", "scope", ...) onto
/// glyphs of the Material Icons font. Outline and filled variants that the font does not
/// distinguish share a glyph; `isOutline()` tells a renderer to stroke instead of fill.
class Symbols : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    /// The font family the glyphs come from.
    Q_PROPERTY(QString fontFamily READ fontFamily CONSTANT)

public:
    explicit Symbols(QObject* parent = nullptr) : QObject(parent) {}

    static QString fontFamily() { return QStringLiteral("Material Icons"); }
    /// Registers the font's plain TrueType file where the system has one, so the glyphs come
    /// from that file rather than from a compressed web copy of the same family.
    static void preferPlainFontFile();
    /// The glyph for a symbol name; empty (and one warning) for a name not in the table.
    Q_INVOKABLE static QString glyph(const QString& name);
    /// True for names the table knows.
    static bool contains(const QString& name);
    /// True for the outline-only names ("leaf") that share a glyph with their filled form.
    static bool isOutline(const QString& name);
    /// True for the few symbols the icon font has no good glyph for (a dotted ring that read
    /// as a QR code, an umbrella for rain, a blob for a bird): a `SymbolDrawing` draws them.
    Q_INVOKABLE static bool isDrawn(const QString& name);
    /// Every name in the table, in table order.
    static QStringList names();
};

} // namespace quill
