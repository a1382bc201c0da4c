#include "ui/shell/TrayIconArt.h"

#include <gtest/gtest.h>

using namespace quill;

namespace {

int inkedPixels(const QImage& image) {
    int n = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            n += qAlpha(image.pixel(x, y)) > 128;
    return n;
}

TEST(TrayIconArtTest, TheRunningLeafIsFilledAndTheIdleLeafOutlined) {
    const QImage filled = trayIconImage(QStringLiteral("leaf.fill"), 32, Qt::white);
    const QImage outline = trayIconImage(QStringLiteral("leaf"), 32, Qt::white);
    ASSERT_EQ(filled.size(), QSize(32, 32));
    const int filledInk = inkedPixels(filled);
    const int outlineInk = inkedPixels(outline);
    EXPECT_GT(filledInk, 100);
    EXPECT_GT(outlineInk, 20);
    EXPECT_LT(outlineInk, filledInk);
}

TEST(TrayIconArtTest, TheGlyphIsCentred) {
    const QImage image = trayIconImage(QStringLiteral("circle.fill"), 32, Qt::white);
    EXPECT_GT(qAlpha(image.pixel(16, 16)), 200);
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0);
}

TEST(TrayIconArtTest, UnknownSymbolsAndEmptySizesDrawNothing) {
    EXPECT_EQ(inkedPixels(trayIconImage(QStringLiteral("no.such"), 16, Qt::white)), 0);
    EXPECT_TRUE(trayIconImage(QStringLiteral("leaf"), 0, Qt::white).isNull() ||
                trayIconImage(QStringLiteral("leaf"), 0, Qt::white).size().isEmpty());
}

} // namespace
