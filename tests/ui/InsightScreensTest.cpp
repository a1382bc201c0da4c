#include "UiHarness.h"

#include "storage/Persistence.h"

#include <QTest>
#include <gtest/gtest.h>

namespace quill::test {
namespace {

QDateTime today(int hour) {
    return QDateTime(QDate(2026, 3, 5), QTime(hour, 0), Qt::LocalTime);
}

QList<QUuid> storedIds(const UiHarness& ui) {
    QList<QUuid> out;
    for (const StudySession& s : Persistence::load(ui.fakes.data->directory()).data.sessions)
        out << s.id;
    return out;
}

void rightClick(UiHarness& ui, const QString& name) {
    ui.settle();
    QQuickItem* it = ui.item(name);
    ASSERT_TRUE(it && it->isVisible()) << name.toStdString();
    const QPointF centre = it->mapToScene(QPointF(it->width() / 2, it->height() / 2));
    QTest::mouseClick(ui.window(), Qt::RightButton, Qt::NoModifier, centre.toPoint());
    ui.settle();
}

TEST(InsightScreens, ThePlanButtonSetsTheNextRoundAndShowsTheFocusScreen) {
    QList<StudySession> sessions; // three sound 40-minute rounds: the suggestion is 45
    for (int hour : {15, 14, 13}) {
        StudySession s = sessionAt(today(hour), 40 * 60);
        s.focusRating = 5;
        sessions << s;
    }
    UiHarness ui(seedSessions(sessions));
    ui.click("sidebar.section.insights");
    EXPECT_TRUE(ui.isShown("insightsScreen"));
    EXPECT_EQ(ui.text("insights.plan.minutes"), "45");
    EXPECT_EQ(ui.text("insights.tile.1.value"), "45 分钟");
    EXPECT_FALSE(ui.isShown("insights.trend.empty"));

    ui.click("insights.plan.adopt");
    EXPECT_EQ(ui.store().settings().selectedDurationMinutes, 45);
    EXPECT_TRUE(ui.isShown("focusScreen"));
    EXPECT_FALSE(ui.isShown("insightsScreen"));
}

TEST(InsightScreens, WithoutHistoryBothScreensShowTheirEmptyStates) {
    UiHarness ui;
    ui.click("sidebar.section.insights");
    EXPECT_EQ(ui.text("insights.sample"), "基于最近 0 轮");
    EXPECT_TRUE(ui.isShown("insights.trend.empty"));
    EXPECT_TRUE(ui.isShown("insights.tasks.empty"));
    ui.click("sidebar.section.history");
    EXPECT_TRUE(ui.isShown("history.empty"));
    EXPECT_FALSE(ui.isShown("history.totals"));
    ui.click("history.empty.start");
    EXPECT_EQ(ui.store().selectedSection(), AppSection::focus);
}

TEST(InsightScreens, DeletingThroughTheMenuAndAlertRemovesExactlyThatSessionForGood) {
    const QList<StudySession> sessions{sessionAt(today(12)), sessionAt(today(11)),
                                       sessionAt(today(10))};
    UiHarness ui(seedSessions(sessions));
    ui.click("sidebar.section.history");
    EXPECT_EQ(ui.text("history.total.count.value"), "3");
    rightClick(ui, "history.card.1");
    ui.click("history.menu.delete");
    ui.click("history.confirm.confirm");
    EXPECT_FALSE(ui.isShown("history.confirm"));
    EXPECT_EQ(storedIds(ui), (QList<QUuid>{sessions[0].id, sessions[2].id}));
    EXPECT_EQ(ui.text("history.total.count.value"), "2");
}

TEST(InsightScreens, TheHistoryMenuAndDeleteWorkFromTheKeyboardAlone) {
    UiHarness ui(seedSessions({sessionAt(today(9), 89)}));
    ui.click("sidebar.section.history");
    EXPECT_EQ(ui.text("history.card.0.title"), "1 分钟专注");
    QQuickItem* list = ui.item("history.list");
    list->forceActiveFocus(Qt::TabFocusReason);

    ui.pressKey(Qt::Key_Menu);
    ASSERT_TRUE(ui.isShown("history.menu.delete"));
    ui.pressKey(Qt::Key_Escape);
    EXPECT_FALSE(ui.isShown("history.menu.delete"));
    EXPECT_TRUE(list->hasActiveFocus());

    QTest::keyClick(ui.window(), Qt::Key_F10, Qt::ShiftModifier);
    ui.settle();
    ui.pressKey(Qt::Key_Return);
    ASSERT_TRUE(ui.isShown("history.confirm"));
    ui.click("history.confirm.cancel"); // cancelling keeps everything
    EXPECT_EQ(ui.store().sessions().size(), 1);

    list->forceActiveFocus(Qt::TabFocusReason);
    ui.pressKey(Qt::Key_Delete);
    ASSERT_TRUE(ui.isShown("history.confirm"));
    ui.click("history.confirm.confirm");
    EXPECT_TRUE(ui.store().sessions().isEmpty());
    EXPECT_TRUE(ui.isShown("history.empty"));
    EXPECT_FALSE(ui.isShown("history.totals"));
    EXPECT_TRUE(storedIds(ui).isEmpty());
}

TEST(InsightScreens, CancellingTheExportSaysNoFileWasWritten) {
    UiHarness ui(seedSessions({sessionAt(today(9))}));
    ui.fakes.files->answer = std::nullopt;
    ui.click("sidebar.section.history");
    ui.click("history.export");
    EXPECT_EQ(ui.fakes.files->suggestedNames.size(), 1);
    EXPECT_EQ(ui.store().toastMessageText(), "没有导出文件。");
    EXPECT_TRUE(ui.isShown("toast"));
}

} // namespace
} // namespace quill::test
