#include "ui/viewmodels/InsightsViewModel.h"
#include "InsightScreensFixture.h"

#include <QSignalSpy>
#include <QVariantMap>

namespace quill::test {
namespace {

class InsightsViewModelTest : public InsightScreensTest {
protected:
    std::unique_ptr<InsightsViewModel> vm;

    void show(const QList<StudySession>& sessions) {
        vm.reset();
        startWith(sessions);
        vm = std::make_unique<InsightsViewModel>(*store);
    }
    QStringList tileValues() const {
        QStringList out;
        for (const QVariant& t : vm->tiles())
            out << t.toMap().value("value").toString();
        return out;
    }
    QVariantMap taskRow(int i) const { return vm->taskRows().at(i).toMap(); }
};

TEST_F(InsightsViewModelTest, AnEmptyHistoryShowsDefaults) {
    show({});
    EXPECT_EQ(tileValues(), (QStringList{"30 分钟", "30 分钟", "—", "—"}));
    ASSERT_EQ(vm->weekBars().size(), 7);
    QStringList labels;
    for (const QVariant& bar : vm->weekBars()) {
        labels << bar.toMap().value("label").toString();
        EXPECT_EQ(bar.toMap().value("minutes").toLongLong(), 0);
    }
    EXPECT_EQ(labels, (QStringList{"五", "六", "日", "一", "二", "三", "四"})); // today is Thursday
    EXPECT_DOUBLE_EQ(vm->ringProgress(), 0.25);
    EXPECT_EQ(vm->recommendedValue(), "30");
    EXPECT_TRUE(vm->taskFootnote().isEmpty());
}

TEST_F(InsightsViewModelTest, TwentySessionsSampleTwelveAndTrendTheTenNewestOldestFirst) {
    QList<StudySession> sessions; // newest first; ratings cycle so the order shows
    for (int i = 0; i < 20; ++i)
        sessions << session(today(16).addSecs(-3600 * i), 1500, std::nullopt, 1 + i % 5);
    show(sessions);
    EXPECT_EQ(vm->sampleText(), "基于最近 12 轮");
    ASSERT_EQ(vm->trendPoints().size(), 10);
    for (int i = 0; i < 10; ++i) {
        const QVariantMap p = vm->trendPoints().at(i).toMap();
        EXPECT_EQ(p.value("x").toInt(), i + 1);
        EXPECT_EQ(p.value("y").toInt(), 1 + (9 - i) % 5) << i;
    }
    EXPECT_EQ(vm->trendAxisMax(), 10);
}

TEST_F(InsightsViewModelTest, WeekBarsSumTodayAndTheSixDaysBefore) {
    show({session(today(9), 1530), session(today(8), 89), session(today(12).addDays(-6), 600),
          session(today(12).addDays(-7), 6000)});
    const QVariantList bars = vm->weekBars();
    EXPECT_EQ(bars.first().toMap().value("minutes").toLongLong(), 10);
    EXPECT_EQ(bars.last().toMap().value("minutes").toLongLong(), 27); // 26 + 1, per session
    EXPECT_GE(vm->weekAxisMax(), 27);
}

TEST_F(InsightsViewModelTest, TheRingFillsAtACapacityOf120AndNeverBeyond) {
    QList<StudySession> sessions;
    for (int i = 0; i < 3; ++i)
        sessions << session(today(15 - i), 200 * 60, std::nullopt, 5);
    show(sessions);
    EXPECT_DOUBLE_EQ(vm->ringProgress(), 1.0);
    EXPECT_EQ(tileValues().first(), "120 分钟");
}

TEST_F(InsightsViewModelTest, TheTaskTableShowsEightRowsScaledToTheLargest) {
    QList<StudySession> sessions;
    for (int i = 1; i <= 9; ++i)
        sessions << session(today(10), 60 * i, QStringLiteral("任务%1").arg(i));
    show(sessions);
    ASSERT_EQ(vm->taskRows().size(), 8);
    EXPECT_EQ(taskRow(0).value("name").toString(), "任务9");
    EXPECT_DOUBLE_EQ(taskRow(0).value("fraction").toDouble(), 1.0);
    EXPECT_DOUBLE_EQ(taskRow(7).value("fraction").toDouble(), 2.0 / 9.0);
    EXPECT_EQ(vm->taskFootnote(), "仅显示专注分钟最多的前 8 个任务。");

    sessions.removeLast(); // eight tasks: all shown, no footnote
    show(sessions);
    EXPECT_EQ(vm->taskRows().size(), 8);
    EXPECT_TRUE(vm->taskFootnote().isEmpty());
}

TEST_F(InsightsViewModelTest, TaskRowsFormatTheirFiguresLikePrintf) {
    // One minute fills the bar (scale 1); under half a minute is 0 and an empty bar. Ratings
    // 3, 3, 3, 4 average exactly 3.25, which prints as 3.2.
    show({session(today(10), 60, QStringLiteral("阅读"), 3), session(today(9), 20, std::nullopt, 3),
          session(today(8), 60, QStringLiteral("阅读"), 3),
          session(today(7), 60, QStringLiteral("阅读"), 3),
          session(today(6), 60, QStringLiteral("阅读"), 4)});
    ASSERT_EQ(vm->taskRows().size(), 2);
    EXPECT_EQ(taskRow(0).value("rating").toString(), "3.2");
    EXPECT_EQ(taskRow(0).value("minutes").toString(), "4");
    EXPECT_EQ(taskRow(0).value("sessions").toString(), "4");
    EXPECT_FALSE(taskRow(0).value("uncategorized").toBool());
    EXPECT_EQ(taskRow(1).value("name").toString(), "未分类");
    EXPECT_TRUE(taskRow(1).value("uncategorized").toBool());
    EXPECT_DOUBLE_EQ(taskRow(1).value("fraction").toDouble(), 0.0);

    show({session(today(10), 60, QStringLiteral("阅读"))});
    EXPECT_DOUBLE_EQ(taskRow(0).value("fraction").toDouble(), 1.0);
}

TEST_F(InsightsViewModelTest, TheBarAxisEndsOnARoundNumberAboveTheLargestBar) {
    for (qint64 largest : {5, 7, 10, 27, 47, 99, 100, 101, 480, 1440, 9999}) {
        const auto [top, step] = InsightsViewModel::niceAxis(largest);
        EXPECT_GE(top, largest) << largest;
        EXPECT_LT(top - step, largest) << largest;
        EXPECT_GE(top / step, 2) << largest;
        EXPECT_LE(top / step, 5) << largest;
    }
    for (qint64 small : {0, 1, 4})
        EXPECT_EQ(InsightsViewModel::niceAxis(small), std::make_pair(4, 1)) << small;
}

TEST_F(InsightsViewModelTest, FollowsTheHistory) {
    QList<StudySession> sessions;
    for (int i = 0; i < 3; ++i)
        sessions << session(today(15 - i), 40 * 60, std::nullopt, 5);
    show(sessions);
    EXPECT_EQ(vm->recommendedValue(), "45");
    QSignalSpy changed(vm.get(), &InsightsViewModel::figuresChanged);
    store->removeSession(sessions[1]);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(vm->sampleText(), "基于最近 2 轮");
    EXPECT_EQ(vm->recommendedValue(), "30");
}

} // namespace
} // namespace quill::test
