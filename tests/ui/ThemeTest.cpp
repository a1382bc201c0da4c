#include "ui/theme/Theme.h"
#include "ui/theme/AdaptiveColor.h"
#include "ui/theme/ThemeColors.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

using namespace quill;

namespace {

TEST(AdaptiveColorTest, DarkUsesTheDarkPairAndEverythingElseTheLightPair) {
    const AdaptiveColor hairline = ThemeColors::hairline;
    const QColor dark = hairline.resolve(AppearanceMode::dark);
    EXPECT_EQ(dark.rgb() & 0xFFFFFF, 0xFFFFFFu);
    EXPECT_NEAR(dark.alphaF(), 0.09, 1e-3);
    const QColor light = hairline.resolve(AppearanceMode::light);
    EXPECT_EQ(light.rgb() & 0xFFFFFF, 0x14211Cu);
    EXPECT_NEAR(light.alphaF(), 0.10, 1e-3);
    // With no appearance match the light values are used.
    EXPECT_EQ(hairline.resolve(std::nullopt), light);
}

TEST(AdaptiveColorTest, ChannelsAreTheHexDigitsOverTwoFiftyFive) {
    const QColor mint = ThemeColors::mint.resolve(AppearanceMode::dark);
    EXPECT_EQ(mint.red(), 0x78);
    EXPECT_EQ(mint.green(), 0xD7);
    EXPECT_EQ(mint.blue(), 0xB2);
    EXPECT_EQ(ThemeColors::mint.resolve(AppearanceMode::light), QColor("#219A71"));
    EXPECT_EQ(ThemeColors::onAccent.resolve(AppearanceMode::light),
              ThemeColors::onAccent.resolve(AppearanceMode::dark));
}

TEST(NeutralFillTest, IsWhiteWhenDarkAndCappedAtPointOneSixWhenLight) {
    for (double o : {0.035, 0.04, 0.06, 0.09, 0.13, 0.5, 1.0}) {
        const QColor dark = neutralFill(o).resolve(AppearanceMode::dark);
        EXPECT_EQ(dark.rgb() & 0xFFFFFF, 0xFFFFFFu);
        EXPECT_NEAR(dark.alphaF(), o, 1e-3);
        const QColor light = neutralFill(o).resolve(AppearanceMode::light);
        EXPECT_EQ(light.rgb() & 0xFFFFFF, 0x14211Cu);
        EXPECT_LE(light.alphaF(), 0.16 + 1e-3) << o;
    }
}

TEST(NeutralFillTest, TheTileAdaptiveTakesLightBeforeDark) {
    const AdaptiveColor tile = adaptive(0xFFFFFF, 0x14211C, 0.035, 0.02975);
    EXPECT_EQ(tile.resolve(AppearanceMode::light).rgb() & 0xFFFFFF, 0xFFFFFFu);
    EXPECT_NEAR(tile.resolve(AppearanceMode::dark).alphaF(), 0.02975, 1e-3);
}

TEST(ThemeObjectTest, SwitchingTheAppearanceRecoloursAndNotifiesOnce) {
    Theme theme;
    EXPECT_TRUE(theme.dark());
    EXPECT_EQ(theme.background(), QColor("#0E1518"));
    EXPECT_NEAR(theme.palette()->neutralFill(0.09).alphaF(), 0.09, 1e-3);

    QSignalSpy spy(&theme, &Theme::appearanceChanged);
    theme.setDark(false);
    theme.setDark(false);
    EXPECT_EQ(spy.count(), 1);
    EXPECT_EQ(theme.background(), QColor("#F3F7F5"));
    EXPECT_EQ(theme.sidebarBackground(), QColor("#EAF1EE"));
    EXPECT_EQ(theme.palette()->tint("amber"), QColor("#B47A17"));
    EXPECT_NEAR(theme.palette()->neutralFill(0.5).alphaF(), 0.16, 1e-3);
    // An unknown tint name falls back to the primary accent.
    EXPECT_EQ(theme.palette()->tint("purple"), theme.mint());
}

TEST(ThemeObjectTest, AlphaFadesAColourWithoutLosingItsOwnOpacity) {
    EXPECT_NEAR(Theme::alpha(QColor("#78D7B2"), 0.12).alphaF(), 0.12, 1e-3);
    EXPECT_NEAR(Theme::alpha(QColor("#78D7B2"), 4.0).alphaF(), 1.0, 1e-3);
    EXPECT_NEAR(Theme::alpha(QColor("#78D7B2"), -1.0).alphaF(), 0.0, 1e-3);
    // A translucent palette colour stays translucent: 0.095 seen through 0.9.
    const QColor strong = ThemeColors::panelStrong.resolve(AppearanceMode::dark);
    EXPECT_NEAR(Theme::alpha(strong, 0.9).alphaF(), 0.0855, 1e-3);
}

TEST(ThemeObjectTest, OverCompositesSourceOver) {
    const QColor half = QColor::fromRgbF(1, 1, 1, 0.5);
    const QColor mixed = Theme::over(half, QColor("#000000"));
    EXPECT_NEAR(mixed.redF(), 0.5, 1e-3);
    EXPECT_NEAR(mixed.alphaF(), 1.0, 1e-3);
    EXPECT_EQ(Theme::over(QColor("#219A71"), QColor("#FFFFFF")), QColor("#219A71"));
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
