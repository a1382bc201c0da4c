#include "ui/shell/PanelPlacement.h"

#include <gtest/gtest.h>

using namespace quill;

namespace {

const QRect kScreen(0, 0, 1920, 1080);
const QSize kPanel(270, 240);

TEST(PanelPlacementTest, BelowATopTrayAboveABottomOneAlwaysOnItsScreen) {
    const QRect right(1920, 0, 1280, 1024); // a second screen keeps its own coordinates
    const struct {
        QPoint anchor;
        QSize panel;
        QRect screen;
        QPoint expected;
    } cases[] = {
        {{1000, 12}, kPanel, kScreen, {865, 20}},           // below, centred
        {{1000, 1070}, kPanel, kScreen, {865, 1070 - 248}}, // above
        {{1915, 5}, kPanel, kScreen, {1920 - 270, 13}},     // inside at the edges
        {{3, 5}, kPanel, kScreen, {0, 13}},
        {{3190, 1020}, kPanel, right, {3200 - 270, 1020 - 248}},
        {{100, 10}, {900, 900}, {0, 0, 800, 600}, {0, 0}}, // larger: its corner on screen
        {{500, 10}, kPanel, QRect(), {365, 18}},           // no screen: still a position
    };
    for (const auto& c : cases)
        EXPECT_EQ(panelPosition(c.anchor, c.panel, c.screen), c.expected) << c.anchor.x();
}

TEST(PanelPlacementTest, ItHangsFromTheIconThenTheTrustedPointerThenTheTraysCorner) {
    TrayClick click{QRect(1800, 0, 24, 24), QPoint(5, 5), kScreen, QRect(0, 24, 1920, 1056)};
    EXPECT_EQ(trayAnchor(click), QPoint(1811, 23)) << "below an icon in a top panel";
    click.icon = QRect(1800, 1050, 24, 24);
    EXPECT_EQ(trayAnchor(click), QPoint(1811, 1050)) << "above one in a bottom panel";
    click.icon = QRect();
    EXPECT_EQ(trayAnchor(click), QPoint(5, 5));

    // No icon and no pointer to trust (Wayland, XWayland): the side the desktop's panel
    // takes from the screen, else the desktop's habit.
    click.cursor.reset();
    EXPECT_EQ(trayAnchor(click), QPoint(1919, 24));
    click.available = QRect(0, 0, 1920, 1040);
    EXPECT_EQ(trayAnchor(click), QPoint(1919, 1039));
    click.available = kScreen;
    click.desktopTrayAtTop = false;
    EXPECT_EQ(trayAnchor(click), QPoint(1919, 1079));
    EXPECT_EQ(panelPosition(trayAnchor(click), kPanel, kScreen),
              QPoint(1920 - 270, 1079 - 8 - 240));
}

} // namespace
