#include "ui/shell/TrayIconArt.h"
#include "ui/theme/Theme.h"

#include <QPainter>

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

TEST(TrayIconArtTest, TheRunningLeafIsFilledTheIdleLeafOutlinedAndUnknownsBlank) {
    const QImage filled = trayIconImage(QStringLiteral("leaf.fill"), 32, Qt::white);
    const QImage outline = trayIconImage(QStringLiteral("leaf"), 32, Qt::white);
    ASSERT_EQ(filled.size(), QSize(32, 32));
    const int filledInk = inkedPixels(filled);
    const int outlineInk = inkedPixels(outline);
    EXPECT_GT(filledInk, 100);
    EXPECT_GT(outlineInk, 20);
    EXPECT_LT(outlineInk, filledInk);
    const QImage dot = trayIconImage(QStringLiteral("circle.fill"), 32, Qt::white); // centred
    EXPECT_GT(qAlpha(dot.pixel(16, 16)), 200);
    EXPECT_EQ(qAlpha(dot.pixel(0, 0)), 0);
    EXPECT_EQ(inkedPixels(trayIconImage(QStringLiteral("no.such"), 16, Qt::white)), 0);
    EXPECT_TRUE(trayIconImage(QStringLiteral("leaf"), 0, Qt::white).size().isEmpty());
}

// Pixels of the icon laid on a panel of `panel` colour that stand out from it by 3:1.
int legiblePixels(const QImage& icon, const QColor& panel) {
    QImage onPanel(icon.size(), QImage::Format_RGB32);
    onPanel.fill(panel);
    QPainter(&onPanel).drawImage(0, 0, icon);
    int n = 0;
    for (int y = 0; y < onPanel.height(); ++y)
        for (int x = 0; x < onPanel.width(); ++x)
            n += Theme::contrast(onPanel.pixelColor(x, y), panel) >= 3.0;
    return n;
}

TEST(TrayIconArtTest, BothIconsReadOnLightAndDarkPanels) {
    for (const char* symbol : {"leaf", "leaf.fill"}) {
        for (int size : {16, 22, 32}) {
            const QImage icon = trayIconImage(QString::fromLatin1(symbol), size);
            // A legible outline on either kind of panel: at least half as many pixels stand
            // out as the bare glyph inks (a filled glyph reads by its rim on a light panel).
            const int ink =
                inkedPixels(trayIconImage(QString::fromLatin1(symbol), size, Qt::white));
            for (const QColor panel : {QColor(0xFA, 0xFA, 0xFA), QColor(0xE8, 0xE8, 0xE7),
                                       QColor(0x2A, 0x2A, 0x2A), QColor(0x20, 0x20, 0x20)})
                EXPECT_GE(legiblePixels(icon, panel), ink / 2)
                    << symbol << " " << size << " on " << panel.name().toStdString();
        }
    }
}

} // namespace
