#include "ui/shell/PanelPlacement.h"

#include <gtest/gtest.h>

using namespace quill;

namespace {

const QRect kScreen(0, 0, 1920, 1080);
const QSize kPanel(270, 240);

TEST(PanelPlacementTest, ATopTrayOpensThePanelBelowThePointerCentred) {
    EXPECT_EQ(panelPosition(QPoint(1000, 12), kPanel, kScreen), QPoint(865, 20));
}

TEST(PanelPlacementTest, ABottomTrayOpensItAbove) {
    EXPECT_EQ(panelPosition(QPoint(1000, 1070), kPanel, kScreen), QPoint(865, 1070 - 8 - 240));
}

TEST(PanelPlacementTest, ThePanelStaysInsideTheScreenAtItsEdges) {
    EXPECT_EQ(panelPosition(QPoint(1915, 5), kPanel, kScreen).x(), 1920 - 270);
    EXPECT_EQ(panelPosition(QPoint(3, 5), kPanel, kScreen).x(), 0);
    // A second screen to the right keeps its own coordinates.
    const QRect right(1920, 0, 1280, 1024);
    EXPECT_EQ(panelPosition(QPoint(3190, 1020), kPanel, right), QPoint(3200 - 270, 1020 - 248));
}

TEST(PanelPlacementTest, APanelLargerThanTheScreenKeepsItsCornerOnScreen) {
    const QPoint at = panelPosition(QPoint(100, 10), QSize(900, 900), QRect(0, 0, 800, 600));
    EXPECT_EQ(at, QPoint(0, 0));
}

TEST(PanelPlacementTest, WithoutAScreenItStillGivesAPosition) {
    EXPECT_EQ(panelPosition(QPoint(500, 10), kPanel, QRect()), QPoint(365, 18));
}

} // namespace
