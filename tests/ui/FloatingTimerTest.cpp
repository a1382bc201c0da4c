#include "UiHarness.h"
#include "ui/shell/FloatingTimerController.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QPointer>
#include <QScreen>
#include <QTest>
#include <gtest/gtest.h>

using namespace quill;
using namespace quill::test;

namespace {

class FloatingTimerTest : public ::testing::Test {
protected:
    UiHarness ui;
    FloatingTimerController* controller() {
        return ui.window()->findChild<FloatingTimerController*>("floatingTimerController");
    }
    QQuickWindow* panel() { return controller()->panel(); }
    void minimise() {
        ui.window()->showMinimized();
        settle();
    }
    void settle() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        if (panel())
            ui.settle(panel());
        ui.settle();
    }
    void setFloating(bool countdown, bool buttons) {
        ui.store().editSettings([&](AppSettings& s) {
            s.floatingTimerOnMinimize = countdown;
            s.floatingSignalButtons = buttons;
        });
        settle();
    }
};

TEST_F(FloatingTimerTest, OpensOnlyWhileMinimisedDuringARound) {
    ASSERT_NE(controller(), nullptr);
    minimise();
    EXPECT_EQ(panel(), nullptr); // idle: nothing to keep in view

    ui.store().startSession(); // e.g. from the tray while minimised
    settle();
    ASSERT_NE(panel(), nullptr);
    EXPECT_TRUE(panel()->isVisible());
    EXPECT_TRUE(panel()->flags() & Qt::WindowStaysOnTopHint);
    EXPECT_TRUE(panel()->flags() & Qt::FramelessWindowHint);
    EXPECT_EQ(panel()->size(), QSize(264, 116));
    EXPECT_EQ(ui.text("floatingTimer.time", panel()), "50:00");

    QPointer<QQuickWindow> first = panel();
    ui.store().abandonSession(); // the round ends while the window stays minimised
    settle();
    EXPECT_EQ(panel(), nullptr);
    EXPECT_TRUE(first.isNull()); // destroyed, not hidden
}

TEST_F(FloatingTimerTest, FollowsBothFloatingSwitches) {
    ui.store().startSession();
    setFloating(false, false);
    minimise();
    EXPECT_EQ(panel(), nullptr);

    setFloating(false, true); // buttons alone still open it, without the countdown
    ASSERT_NE(panel(), nullptr);
    EXPECT_EQ(panel()->size(), QSize(292, 70));
    EXPECT_FALSE(ui.isShown("floatingTimer.countdown", panel()));
    ui.click("floatingTimer.wander", panel());
    EXPECT_EQ(ui.store().currentEventCount(), 1);
    EXPECT_EQ(ui.text("floatingTimer.wander.count", panel()), "1");

    setFloating(true, true);
    EXPECT_EQ(panel()->size(), QSize(292, 174));
    EXPECT_TRUE(ui.isShown("floatingTimer.countdown", panel()));
    setFloating(false, false);
    EXPECT_EQ(panel(), nullptr);
}

TEST_F(FloatingTimerTest, ItsButtonsDriveTheRoundAndRestoreTheMainWindow) {
    ui.fakes.random->script.push_back(180);
    ui.store().startSession();
    setFloating(true, true);
    minimise();
    ASSERT_NE(panel(), nullptr);

    ui.click("floatingTimer.round", panel());
    EXPECT_EQ(ui.store().phase(), SessionPhase::paused);
    EXPECT_EQ(ui.text("floatingTimer.status", panel()), "已暂停");
    ui.click("floatingTimer.round", panel());

    ui.advance(180'250);
    settle();
    ASSERT_EQ(ui.store().phase(), SessionPhase::microBreak);
    EXPECT_EQ(ui.text("floatingTimer.time", panel()), "10 秒");
    EXPECT_FALSE(ui.item("floatingTimer.fatigue", panel())->isEnabled());
    ui.click("floatingTimer.round", panel()); // "提前继续"
    EXPECT_EQ(ui.store().phase(), SessionPhase::focusing);

    ui.click("floatingTimer.restore", panel());
    settle();
    EXPECT_FALSE(ui.window()->windowStates() & Qt::WindowMinimized);
    EXPECT_EQ(panel(), nullptr);
    EXPECT_EQ(ui.store().phase(), SessionPhase::focusing); // the round runs on
}

TEST_F(FloatingTimerTest, ClickingTheTrayIconBringsTheMainWindowBackAndClosesIt) {
    ui.store().startSession();
    minimise();
    ASSERT_NE(panel(), nullptr);
    QMetaObject::invokeMethod(ui.trayIcon(), "activate");
    settle();
    EXPECT_FALSE(ui.window()->windowStates() & Qt::WindowMinimized);
    EXPECT_TRUE(ui.window()->isVisible());
    EXPECT_EQ(panel(), nullptr);
}

TEST_F(FloatingTimerTest, ItReopensWhereItWasLeft) {
    ui.store().startSession();
    minimise();
    ASSERT_NE(panel(), nullptr);
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_EQ(panel()->position(), QPoint(screen.right() + 1 - 24 - panel()->width(), 24))
        << "first in the top-right corner, not over the middle of the screen";
    panel()->setPosition(40, 300); // dragged there
    ui.click("floatingTimer.restore", panel());
    settle();
    minimise();
    ASSERT_NE(panel(), nullptr);
    EXPECT_EQ(panel()->position(), QPoint(40, 300));
}

// The panel holds only the countdown and its buttons: a tip inside it would cover one of
// them, so it opens beside the panel, below it or above it at the screen's bottom.
TEST_F(FloatingTimerTest, ItsTipsOpenOutsideThePanel) {
    ui.store().startSession();
    setFloating(true, true);
    minimise();
    ASSERT_NE(panel(), nullptr);
    const int screenBottom = QGuiApplication::primaryScreen()->geometry().bottom();
    for (const int y : {24, screenBottom - panel()->height()}) {
        panel()->setPosition(40, y);
        for (const QString name : {"floatingTimer.wander", "floatingTimer.round"}) {
            const QQuickItem* button = ui.item(name, panel());
            QTest::mouseMove(panel(),
                             button->mapToScene(button->boundingRect().center()).toPoint());
            settle();
            const QWindow* tip = nullptr;
            for (const QWindow* w : QGuiApplication::allWindows())
                tip = w->objectName() == name + ".tip" && w->isVisible() ? w : tip;
            ASSERT_NE(tip, nullptr) << name.toStdString();
            EXPECT_FALSE(tip->geometry().intersects(panel()->geometry())) << name.toStdString();
            EXPECT_LE(tip->geometry().bottom(), screenBottom);
        }
    }
}

} // namespace
