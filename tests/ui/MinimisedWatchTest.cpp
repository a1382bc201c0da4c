#include "ui/shell/MinimisedWatch.h"

#include "support/FakeServices.h"

#include <QSignalSpy>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>
#include <private/qwindow_p.h>

using namespace quill;
using namespace quill::test;

namespace {

void changeExposure(QWindow& window, bool exposed) {
    QWindowPrivate::get(&window)->exposed = exposed;
    QExposeEvent event(exposed ? QRegion(QRect(QPoint(), window.size())) : QRegion());
    QCoreApplication::sendEvent(&window, &event);
}

/// A real window whose exposure is changed the way the window system changes it.
class MinimisedWatchTest : public ::testing::Test {
protected:
    void SetUp() override {
        window.resize(200, 100);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    /// What Qt does on Wayland when the compositor stops (or resumes) sending frame callbacks:
    /// the window's exposure changes, then it gets an expose event. (The offscreen platform
    /// keeps every shown window exposed, so the change is made here.)
    void setExposed(bool exposed) { changeExposure(window, exposed); }
    void advance(qint64 ms) { fakes.scheduler->advance(ms); }

    FakeServices fakes;
    QWindow window;
};

TEST_F(MinimisedWatchTest, OnWaylandAWindowNoLongerShownCountsAsMinimisedOnceThatLasts) {
    MinimisedWatch watch(&window, fakes.scheduler, /*exposureCounts=*/true);
    QSignalSpy changes(&watch, &MinimisedWatch::minimisedChanged);

    // One late frame callback on a busy compositor: back before it settles, nothing changes.
    setExposed(false);
    advance(MinimisedWatch::kSettle.count() - 1);
    setExposed(true);
    advance(MinimisedWatch::kSettle.count());
    EXPECT_FALSE(watch.isMinimised());
    EXPECT_EQ(changes.count(), 0);

    setExposed(false);
    advance(MinimisedWatch::kSettle.count());
    EXPECT_TRUE(watch.isMinimised());
    setExposed(true); // shown again: restored at once
    EXPECT_FALSE(watch.isMinimised());
    EXPECT_EQ(changes.count(), 2);

    // Hidden by the app (closed to the tray) is not minimised: that has its own rules.
    window.hide();
    advance(MinimisedWatch::kSettle.count());
    EXPECT_FALSE(watch.isMinimised());
}

TEST_F(MinimisedWatchTest, WhereTheWindowSystemTellsOnlyTheWindowStateCounts) {
    MinimisedWatch watch(&window, fakes.scheduler, /*exposureCounts=*/false);
    setExposed(false); // X11: another workspace, not minimised
    advance(MinimisedWatch::kSettle.count());
    EXPECT_FALSE(watch.isMinimised());

    window.setWindowState(Qt::WindowMinimized);
    EXPECT_TRUE(watch.isMinimised()) << "at once, without waiting";
    window.setWindowState(Qt::WindowNoState);
    EXPECT_FALSE(watch.isMinimised());
    EXPECT_EQ(MinimisedWatch::of(&window, fakes.scheduler), MinimisedWatch::of(&window, {}))
        << "one watch per window";
}

} // namespace
