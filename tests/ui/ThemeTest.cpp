#include "ui/theme/Theme.h"
#include "ui/theme/AdaptiveColor.h"
#include "ui/theme/ThemeColors.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

using namespace quill;

namespace {

QRgb rgb(const QColor& c) {
    return c.rgb() & 0xFFFFFF;
}

TEST(AdaptiveColorTest, DarkTakesTheDarkPairAndEverythingElseTheLightPair) {
    const AdaptiveColor hairline = ThemeColors::hairline;
    EXPECT_EQ(rgb(hairline.resolve(AppearanceMode::dark)), 0xFFFFFFu);
    EXPECT_NEAR(hairline.resolve(AppearanceMode::dark).alphaF(), 0.09, 1e-3);
    EXPECT_EQ(rgb(hairline.resolve(AppearanceMode::light)), 0x14211Cu);
    EXPECT_EQ(hairline.resolve(std::nullopt), hairline.resolve(AppearanceMode::light));
    // Channels are the hex digits over 255; the tile's adaptive takes light before dark.
    EXPECT_EQ(ThemeColors::mint.resolve(AppearanceMode::dark), QColor("#78D7B2"));
    const AdaptiveColor tile = adaptive(0xFFFFFF, 0x14211C, 0.035, 0.02975);
    EXPECT_EQ(rgb(tile.resolve(AppearanceMode::light)), 0xFFFFFFu);
    EXPECT_NEAR(tile.resolve(AppearanceMode::dark).alphaF(), 0.02975, 1e-3);
    for (double o : {0.035, 0.09, 0.5, 1.0}) { // neutral fills: white when dark, capped when light
        EXPECT_EQ(rgb(neutralFill(o).resolve(AppearanceMode::dark)), 0xFFFFFFu);
        EXPECT_NEAR(neutralFill(o).resolve(AppearanceMode::dark).alphaF(), o, 1e-3);
        EXPECT_LE(neutralFill(o).resolve(AppearanceMode::light).alphaF(), 0.16 + 1e-3) << o;
    }
}

TEST(ThemeObjectTest, SwitchingTheAppearanceRecoloursAndNotifiesOnce) {
    Theme theme;
    EXPECT_TRUE(theme.dark());
    QSignalSpy spy(&theme, &Theme::appearanceChanged);
    const QColor darkBackground = theme.background();
    theme.setDark(false);
    theme.setDark(false);
    EXPECT_EQ(spy.count(), 1);
    EXPECT_NE(theme.background(), darkBackground);
    EXPECT_NEAR(theme.palette()->neutralFill(0.5).alphaF(), 0.16, 1e-3);
    // An unknown tint name falls back to the primary accent.
    EXPECT_EQ(theme.palette()->tint("purple"), theme.mint());
}

TEST(ThemeObjectTest, AlphaOverAndContrastDoTheirArithmetic) {
    EXPECT_NEAR(Theme::alpha(QColor("#78D7B2"), 0.12).alphaF(), 0.12, 1e-3);
    EXPECT_NEAR(Theme::alpha(QColor("#78D7B2"), 4.0).alphaF(), 1.0, 1e-3);
    EXPECT_NEAR(Theme::alpha(QColor("#78D7B2"), -1.0).alphaF(), 0.0, 1e-3);
    // A translucent palette colour stays translucent: 0.095 seen through 0.9.
    const QColor strong = ThemeColors::panelStrong.resolve(AppearanceMode::dark);
    EXPECT_NEAR(Theme::alpha(strong, 0.9).alphaF(), 0.0855, 1e-3);

    const QColor mixed = Theme::over(QColor::fromRgbF(1, 1, 1, 0.5), QColor("#000000"));
    EXPECT_NEAR(mixed.redF(), 0.5, 1e-3);
    EXPECT_NEAR(mixed.alphaF(), 1.0, 1e-3);
    EXPECT_EQ(Theme::over(QColor(Qt::transparent), QColor("#0E1518")), QColor("#0E1518"));
    EXPECT_NEAR(Theme::contrast(QColor("#000000"), QColor("#FFFFFF")), 21.0, 1e-6);
    EXPECT_NEAR(Theme::contrast(QColor("#777777"), QColor("#777777")), 1.0, 1e-6);
}

TEST(ThemeObjectTest, FloatingTextAndFocusRingsReadInBothAppearances) {
    Theme theme;
    for (bool dark : {true, false}) {
        theme.setDark(dark);
        const QColor fill = theme.floatingFill();
        EXPECT_EQ(fill.alpha(), 255) << dark;
        EXPECT_GE(Theme::contrast(theme.primaryText(), fill), 4.5) << dark;
        EXPECT_GE(Theme::contrast(theme.secondaryText(), fill), 4.5) << dark;
        // Non-text contrast for the ring against the window and the cards.
        EXPECT_GE(Theme::contrast(theme.focusRing(), theme.background()), 3.0) << dark;
        EXPECT_GE(
            Theme::contrast(theme.focusRing(), Theme::over(theme.panel(), theme.background())), 3.0)
            << dark;
    }
}

} // namespace
