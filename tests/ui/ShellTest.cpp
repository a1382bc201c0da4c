#include "UiHarness.h"

#include "storage/Persistence.h"
#include "ui/shell/FloatingTimerController.h"
#include "ui/shell/TrayIcon.h"
#include "ui/theme/Symbols.h"

#include <QCursor>
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QScreen>
#include <array>
#include <gtest/gtest.h>
#include <qpa/qwindowsysteminterface.h>

using namespace quill;
using namespace quill::test;

namespace {

QColor pixel(QQuickWindow* w, QPoint at) {
    return QColor::fromRgb(w->grabWindow().pixel(at));
}

QDateTime localToday(int hour, int minute) {
    return QDateTime(QDate(2026, 3, 5), QTime(hour, minute), Qt::LocalTime);
}

TEST(ShellTest, TheAppearanceSwitchRecoloursBothWindows) {
    UiHarness ui;
    const QPoint sidebarSpot(5, 400);
    EXPECT_EQ(pixel(ui.window(), sidebarSpot), QColor("#0B1215"));
    EXPECT_EQ(ui.window()->color(), QColor("#0E1518"));
    EXPECT_EQ(ui.text("sidebar.appearance"), "切换到日间模式");
    QMetaObject::invokeMethod(ui.trayIcon(), "activate");

    ui.click("sidebar.appearance");
    EXPECT_EQ(ui.store().settings().appearanceMode, AppearanceMode::light);
    EXPECT_EQ(pixel(ui.window(), sidebarSpot), QColor("#EAF1EE"));
    EXPECT_EQ(ui.window()->color(), QColor("#F3F7F5"));
    EXPECT_EQ(ui.text("sidebar.appearance"), "切换到夜间模式");
    EXPECT_EQ(ui.item("tray.surface", ui.trayPanel())->property("color").value<QColor>(),
              QColor("#F3F7F5"));

    ui.click("sidebar.appearance");
    EXPECT_EQ(pixel(ui.window(), sidebarSpot), QColor("#0B1215"));
    EXPECT_EQ(ui.item("tray.surface", ui.trayPanel())->property("color").value<QColor>(),
              QColor("#0E1518"));
}

TEST(ShellTest, AnAbsentAppearanceIsDrawnDarkAndNoHistoryInvitesAStart) {
    UiHarness ui([](FakeServices& f) {
        AppSettings s;
        s.appearanceMode.reset();
        Persistence::save(f.data->directory(), s, {});
    });
    EXPECT_EQ(ui.window()->color(), QColor("#0E1518"));
    EXPECT_EQ(ui.text("sidebar.appearance"), "切换到日间模式");
    EXPECT_EQ(ui.text("sidebar.streak"), "从今天开始");
    EXPECT_EQ(ui.text("sidebar.todayMinutes"), "0");
}

// Texts whose family is not the app's: controls take the platform's font unless told, and that
// sets Chinese in a Latin face with Japanese glyph forms as its fallback.
std::string foreignFonts(QQuickItem* root) {
    QStringList found;
    const QString own = QGuiApplication::font().family();
    const auto visit = [&](const auto& self, QQuickItem* item) -> void {
        if (item->inherits("QQuickText") || item->inherits("QQuickTextInput") ||
            item->inherits("QQuickTextEdit")) {
            const QString family = item->property("font").value<QFont>().family();
            if (family != own && family != Symbols::fontFamily())
                found << family + " in " + item->property("text").toString();
        }
        for (QQuickItem* child : item->childItems())
            self(self, child);
    };
    visit(visit, root);
    return found.join(QStringLiteral("; ")).toStdString();
}

TEST(ShellTest, EachSidebarRowShowsOnlyItsScreenSetInTheAppFont) {
    UiHarness ui;
    const std::array<std::string, 4> sections{"insights", "history", "settings", "focus"};
    for (const std::string& section : sections) {
        ui.click(QString::fromStdString("sidebar.section." + section));
        for (const std::string& other : sections)
            EXPECT_EQ(ui.isShown(QString::fromStdString(other + "Screen")), other == section)
                << other << " after " << section;
        EXPECT_EQ(foreignFonts(ui.window()->contentItem()), "") << section;
    }
    EXPECT_FALSE(ui.isShown("placeholderScreen"));
}

TEST(ShellTest, TheFocusRowCarriesADotWhileARoundRuns) {
    UiHarness ui;
    EXPECT_FALSE(ui.isShown("sidebar.activeDot"));
    ui.click("focus.primary");
    EXPECT_TRUE(ui.isShown("sidebar.activeDot"));
    EXPECT_EQ(ui.trayIcon()->property("symbol").toString(), "leaf.fill");
    ui.click("focus.primary"); // paused is still under way
    EXPECT_TRUE(ui.isShown("sidebar.activeDot"));
    ui.click("focus.end");
    ui.click("endDialog.abandon");
    EXPECT_FALSE(ui.isShown("sidebar.activeDot"));
    EXPECT_EQ(ui.trayIcon()->property("symbol").toString(), "leaf");
}

TEST(ShellTest, TheTodayCardSumsTodaysStoredRounds) {
    UiHarness ui(
        seedSessions({sessionAt(localToday(9, 0), 1500), sessionAt(localToday(11, 0), 1530),
                      sessionAt(localToday(9, 0).addDays(-1), 3000),
                      sessionAt(localToday(9, 0).addDays(-2), 1200)}));
    EXPECT_EQ(ui.text("sidebar.todayMinutes"), "51"); // 25 + 25.5 rounded away from zero
    EXPECT_EQ(ui.text("sidebar.todaySessions"), "2");
    // A streak of 3 days beside 2 rounds today: neither can stand in for the other.
    EXPECT_EQ(ui.text("sidebar.streak"), "连续 3 天");
    EXPECT_EQ(ui.text("focus.pill.minutes.value"), "51 分钟");
    EXPECT_EQ(ui.text("focus.pill.streak.value"), "3 天");
}

TEST(ShellTest, TheToastShowsForThreeSecondsOfVirtualTime) {
    UiHarness ui;
    EXPECT_FALSE(ui.isShown("toast"));
    ui.click("focus.primary");
    EXPECT_TRUE(ui.isShown("toast"));
    const QString text = ui.text("toast.text");
    ui.advance(2'900);
    EXPECT_TRUE(ui.isShown("toast"));
    ui.advance(200);
    EXPECT_FALSE(ui.isShown("toast"));
    EXPECT_EQ(ui.text("toast.text"), text) << "the text stays while it fades out";
}

class TrayPanelTest : public ::testing::Test {
protected:
    UiHarness ui;
    QQuickWindow* panel() { return ui.trayPanel(); }
    void openPanel() {
        QMetaObject::invokeMethod(ui.trayIcon(), "activate");
        ASSERT_NE(panel(), nullptr);
        ui.settle(panel());
        ASSERT_TRUE(panel()->isVisible());
    }
};

TEST_F(TrayPanelTest, ClickingTheIconTogglesThePanel) {
    qint64 now = 0;
    qobject_cast<TrayIcon*>(ui.trayIcon())->setClock([&] { return now; });
    EXPECT_EQ(panel(), nullptr) << "built on first use";
    openPanel();
    EXPECT_EQ(ui.text("tray.title", panel()), "Quillmere");
    QMetaObject::invokeMethod(ui.trayIcon(), "activate");
    EXPECT_FALSE(panel()->isVisible());

    // A desktop's panel takes the focus at the press; the click reaches the app at the release.
    openPanel();
    using Delivery = QWindowSystemInterface::SynchronousDelivery;
    QWindowSystemInterface::handleWindowActivated<Delivery>(ui.window());
    QWindowSystemInterface::handleWindowActivated<Delivery>(panel());
    QWindowSystemInterface::handleWindowActivated<Delivery>(nullptr);
    ASSERT_FALSE(panel()->isVisible()) << "closed as the focus left";
    now += 150;
    QMetaObject::invokeMethod(ui.trayIcon(), "activate");
    EXPECT_FALSE(panel()->isVisible()) << "the click that took the focus closed it";
    now += 5000;
    QMetaObject::invokeMethod(ui.trayIcon(), "activate");
    EXPECT_TRUE(panel()->isVisible()) << "a later click opens it";
}

TEST_F(TrayPanelTest, ItsButtonsDriveTheSameStore) {
    openPanel();
    EXPECT_EQ(ui.text("tray.start", panel()), "开始 50 分钟");
    ui.click("tray.start", panel());
    ASSERT_EQ(ui.store().phase(), SessionPhase::focusing);
    EXPECT_EQ(ui.text("tray.title", panel()), "专注中");

    ui.advance(61'000);
    ui.settle(panel());
    EXPECT_EQ(ui.text("tray.time", panel()), "48:59");
    EXPECT_EQ(ui.text("focus.timerText"), "48:59"); // the main window shows the same round

    ui.click("tray.wander", panel());
    EXPECT_EQ(ui.store().currentEventCount(), 1);
    EXPECT_EQ(ui.text("focus.signal.wander.count"), "1 次");

    ui.click("tray.pause", panel());
    EXPECT_EQ(ui.store().phase(), SessionPhase::paused);
    EXPECT_EQ(ui.text("tray.pause", panel()), "继续");
    EXPECT_EQ(ui.text("focus.primary"), "继续");
    ui.click("tray.pause", panel());
    EXPECT_EQ(ui.store().phase(), SessionPhase::focusing);
}

TEST_F(TrayPanelTest, DuringAMicroBreakItOffersOnlySkipping) {
    openPanel();
    ui.click("tray.start", panel());
    ui.advance(180'250);
    ui.settle(panel());
    ASSERT_EQ(ui.store().phase(), SessionPhase::microBreak);
    EXPECT_EQ(ui.text("tray.title", panel()), "微休息");
    EXPECT_EQ(ui.text("tray.time", panel()), "10 秒后继续");
    EXPECT_FALSE(ui.isShown("tray.pause", panel()));
    EXPECT_FALSE(ui.isShown("tray.wander", panel()));
    ui.click("tray.skip", panel());
    EXPECT_EQ(ui.store().phase(), SessionPhase::focusing);
}

TEST_F(TrayPanelTest, ItsAmbientButtonPlaysAndPauses) {
    openPanel();
    EXPECT_EQ(ui.text("tray.ambientLabel", panel()), "环境音");
    ui.click("tray.ambient", panel());
    EXPECT_TRUE(ui.store().isAmbientPlaying());
    EXPECT_EQ(ui.text("tray.ambientLabel", panel()), "环境音播放中");
    EXPECT_EQ(ui.text("tray.ambient", panel()), "暂停");
    EXPECT_EQ(ui.text("ambient.status"), "正在播放：雨声"); // rain was chosen for us
    ui.click("tray.ambient", panel());
    EXPECT_FALSE(ui.store().isAmbientPlaying());
}

TEST_F(TrayPanelTest, AWaitingReviewIsOfferedInsteadOfANewStart) {
    ui.store().startSession();
    ui.store().endSessionForReview();
    ui.window()->showMinimized();
    openPanel();
    EXPECT_FALSE(ui.isShown("tray.start", panel()));
    EXPECT_EQ(ui.text("tray.reviewCaption", panel()), "这一轮还没有复盘。");
    ui.click("tray.review", panel());
    EXPECT_FALSE(panel()->isVisible());
    EXPECT_FALSE(ui.window()->windowStates() & Qt::WindowMinimized);
    ui.settle();
    EXPECT_TRUE(ui.isShown("review.save"));
    EXPECT_EQ(ui.store().phase(), SessionPhase::completed);

    QMetaObject::invokeMethod(ui.trayIcon(), "triggerMenuEntry", Q_ARG(int, 1)); // 退出
    ui.settle();
    EXPECT_EQ(ui.text("quitDialog.cancel"), "返回复盘");
    EXPECT_GT(ui.item("quitDialog.cancel")->width(), 100) << "laid out, not squeezed";
    ui.click("quitDialog.cancel"); // answerable over the sheet
    EXPECT_FALSE(ui.isShown("quitDialog.cancel"));
    EXPECT_TRUE(ui.isShown("review.save"));
}

TEST_F(TrayPanelTest, ClosingDuringARoundKeepsItAndTheTrayMenuBringsTheWindowBack) {
    QObject* closer = ui.window()->findChild<QObject*>("mainWindowCloser");
    auto* floating = ui.window()->findChild<FloatingTimerController*>("floatingTimerController");
    ui.store().startSession();
    ui.window()->close(); // no tray host here
    EXPECT_TRUE(ui.window()->windowStates() & Qt::WindowMinimized);
    EXPECT_EQ(ui.store().phase(), SessionPhase::focusing);

    QMetaObject::invokeMethod(ui.trayIcon(), "showMainWindow");
    closer->setProperty("trayHost", true);
    ui.window()->close();
    EXPECT_FALSE(ui.window()->isVisible()) << "hidden into the tray";
    EXPECT_NE(floating->panel(), nullptr) << "the round stays in view";
    EXPECT_EQ(ui.store().phase(), SessionPhase::focusing);

    EXPECT_EQ(ui.trayIcon()->property("menuEntries").toStringList(),
              QStringList({"打开 Quillmere", "退出"}));
    QMetaObject::invokeMethod(ui.trayIcon(), "triggerMenuEntry", Q_ARG(int, 1));
    ui.settle();
    EXPECT_TRUE(ui.window()->isVisible()) << "the question is asked in the window";
    EXPECT_EQ(ui.text("quitDialog.cancel"), "继续专注");
    ui.click("quitDialog.cancel");
    EXPECT_EQ(ui.store().phase(), SessionPhase::focusing);

    ui.window()->close();
    QMetaObject::invokeMethod(ui.trayIcon(), "triggerMenuEntry", Q_ARG(int, 0));
    EXPECT_TRUE(ui.window()->isVisible());
    EXPECT_EQ(floating->panel(), nullptr);
    closer->setProperty("trayHost", false);
}

TEST_F(TrayPanelTest, OnABottomPanelItGrowsUpwardAndAClickInTheWindowClosesIt) {
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    QCursor::setPos(screen.center().x(), screen.bottom() - 2); // a tray at the bottom
    openPanel();
    const int bottom = panel()->geometry().bottom();
    const int height = panel()->height();
    ui.click("tray.start", panel());
    ui.settle(panel());
    EXPECT_GT(panel()->height(), height);
    EXPECT_EQ(panel()->geometry().bottom(), bottom) << "the edge by the tray stays put";
    EXPECT_FALSE(panel()->mask().isEmpty()) << "no compositor here: the corners are cut";

    ui.clickAt(QPointF(600, 20));
    EXPECT_FALSE(panel()->isVisible());
}

} // namespace
