#include "ui/theme/Symbols.h"
#include "model/AmbientSound.h"
#include "ui/UiModule.h"
#include "ui/theme/SymbolDrawing.h"

#include <QDirIterator>
#include <QFile>
#include <QFontDatabase>
#include <QImage>
#include <QPainter>
#include <QRawFont>
#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace quill;

namespace {

QRawFont iconFont() {
    QFont font(Symbols::fontFamily());
    font.setPixelSize(24);
    return QRawFont::fromFont(font);
}

TEST(SymbolsTest, EveryNameMapsToAGlyphTheIconFontHas) {
    const QRawFont font = iconFont();
    ASSERT_TRUE(font.isValid());
    ASSERT_EQ(font.familyName(), Symbols::fontFamily()) << "the Material Icons font is missing";
    for (const QString& name : Symbols::names()) {
        const QString glyph = Symbols::glyph(name);
        ASSERT_EQ(glyph.size(), 1) << name.toStdString();
        EXPECT_TRUE(font.supportsCharacter(glyph.at(0))) << name.toStdString();
    }
    EXPECT_EQ(Symbols::glyph(QStringLiteral("no.such.symbol")), QString());
    EXPECT_EQ(Symbols::glyph(QString()), QString());
    EXPECT_FALSE(Symbols::contains(QStringLiteral("no.such.symbol")));
    // The bare leaf is the filled leaf's glyph drawn as an outline.
    EXPECT_TRUE(Symbols::isOutline(QStringLiteral("leaf")));
    EXPECT_FALSE(Symbols::isOutline(QStringLiteral("leaf.fill")));
    EXPECT_EQ(Symbols::glyph(QStringLiteral("leaf")), Symbols::glyph(QStringLiteral("leaf.fill")));
}

TEST(SymbolsTest, DrawnSymbolsFillTheirBoxInTheirColourAndNothingOutside) {
    int drawn = 0;
    for (const QString& name : Symbols::names()) {
        if (!Symbols::isDrawn(name))
            continue;
        ++drawn;
        SymbolDrawing drawing;
        drawing.setName(name);
        drawing.setColor(QColor(255, 0, 0, 128));
        drawing.setSize(QSizeF(24, 24));
        // A frame of 8 px around the box shows anything drawn outside it.
        QImage image(40, 40, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.translate(8, 8);
        drawing.paint(&painter);
        painter.end();
        int inside = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                if (pixel.alpha() == 0)
                    continue;
                const bool inBox = x >= 8 && x < 32 && y >= 8 && y < 32;
                EXPECT_TRUE(inBox) << name.toStdString() << " at " << x << "," << y;
                EXPECT_LE(pixel.alpha(), 129) << name.toStdString() << ": overlaps add up";
                EXPECT_EQ(pixel.green(), 0);
                inside += inBox;
            }
        EXPECT_GT(inside, 24 * 24 / 10) << name.toStdString();
    }
    EXPECT_EQ(drawn, 3);
    EXPECT_FALSE(Symbols::isDrawn(QStringLiteral("leaf.fill")));
}

TEST(SymbolsTest, EverySymbolTheCatalogueAndTheScreensNameIsInTheTable) {
    for (AmbientSound sound : kAllAmbientSounds)
        EXPECT_TRUE(Symbols::contains(QString::fromLatin1(info(sound).symbol))) << info(sound).raw;
    linkUiModule();
    const QRegularExpression literal(
        QStringLiteral(R"re((?:name|symbol|symbolName)\s*:\s*"([a-z0-9.]+)")re"));
    int files = 0;
    int names = 0;
    QDirIterator it(QStringLiteral(":/qt/qml/Quillmere"), {QStringLiteral("*.qml")});
    while (it.hasNext()) {
        QFile file(it.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
        ++files;
        const QString text = QString::fromUtf8(file.readAll());
        auto matches = literal.globalMatch(text);
        while (matches.hasNext()) {
            const QString name = matches.next().captured(1);
            ++names;
            EXPECT_TRUE(Symbols::contains(name))
                << name.toStdString() << " in " << file.fileName().toStdString();
        }
    }
    EXPECT_GT(files, 20);
    EXPECT_GT(names, 20);
}

} // namespace
