#include "ui/theme/Symbols.h"
#include "audio/AmbientSound.h"
#include "ui/UiModule.h"

#include <QDirIterator>
#include <QFile>
#include <QFontDatabase>
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
}

TEST(SymbolsTest, UnknownAndEmptyNamesGiveNoGlyph) {
    EXPECT_EQ(Symbols::glyph(QStringLiteral("no.such.symbol")), QString());
    EXPECT_EQ(Symbols::glyph(QString()), QString());
    EXPECT_FALSE(Symbols::contains(QStringLiteral("no.such.symbol")));
}

TEST(SymbolsTest, OnlyTheBareLeafIsDrawnAsAnOutline) {
    EXPECT_TRUE(Symbols::isOutline(QStringLiteral("leaf")));
    EXPECT_FALSE(Symbols::isOutline(QStringLiteral("leaf.fill")));
    EXPECT_EQ(Symbols::glyph(QStringLiteral("leaf")), Symbols::glyph(QStringLiteral("leaf.fill")));
}

TEST(SymbolsTest, TheCatalogueSymbolsAreInTheTable) {
    for (AmbientSound sound : kAllAmbientSounds)
        EXPECT_TRUE(Symbols::contains(QString::fromLatin1(info(sound).symbol))) << info(sound).raw;
}

TEST(SymbolsTest, EverySymbolNamedInTheScreensIsInTheTable) {
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
