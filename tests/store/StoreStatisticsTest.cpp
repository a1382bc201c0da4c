// The store's statistics follow its sessions and the calendar day; the step's pace.
#include "StoreHarness.h"

namespace quill::test {
namespace {

class StoreStatisticsTest : public StoreTest {};

TEST_F(StoreStatisticsTest, SavingARoundUpdatesTodaysFiguresAndNotifies) {
    writeData(AppSettings{}, {sessionAt(now().addDays(-1))});
    createStore();
    EXPECT_EQ(store->streakDays(), 1) << "a streak that ended yesterday still counts";
    EXPECT_EQ(store->todayMinutes(), 0);

    int notifications = 0;
    QObject::connect(store.get(), &AppStore::statisticsChanged, [&] { ++notifications; });
    store->startSession(1);
    advanceSeconds(30);
    store->recordMindWander();
    advanceSeconds(31);
    store->saveCompletion(4, 4, QString());
    EXPECT_EQ(notifications, 1);
    EXPECT_EQ(store->todaySessionCount(), 1);
    EXPECT_EQ(store->todayMinutes(), 1);
    EXPECT_EQ(store->todayWanderCount(), 1);
    EXPECT_EQ(store->streakDays(), 2);
    EXPECT_EQ(store->taskSessionCount(QStringLiteral("未分类")), 2);
}

// At rest the step waits for each local minute: the greeting's hour and the day of today's
// figures still turn on the dot, at most one step a minute. Shanghai (UTC+8), where tests run.
TEST_F(StoreStatisticsTest, AtRestTheHourAndTheDayTurnOnTimeWithAStepAMinute) {
    fakes.clock->set(QDateTime(QDate(2026, 3, 5), QTime(14, 59, 30), Qt::UTC)); // 22:59:30
    createStore();
    QList<QDateTime> steps, dayTurns;
    QList<int> hours;
    QObject::connect(store.get(), &AppStore::stepped, [&] {
        steps << now();
        if (hours.isEmpty() || hours.back() != store->localHour())
            hours << store->localHour();
    });
    QObject::connect(store.get(), &AppStore::statisticsChanged, [&] { dayTurns << now(); });
    advanceSeconds(3600 + 60);
    EXPECT_EQ(hours, (QList<int>{22, 23, 0}));
    ASSERT_EQ(dayTurns.size(), 1);
    EXPECT_EQ(dayTurns[0], QDateTime(QDate(2026, 3, 5), QTime(16, 0), Qt::UTC));
    EXPECT_EQ(steps.size(), 1 + 61) << "one step at start, then one each minute";
    for (qsizetype i = 1; i < steps.size(); ++i)
        EXPECT_EQ(steps[i].time().second(), 0)
            << steps[i].toString(Qt::ISODateWithMs).toStdString();

    // A sleep past midnight shows the new day as soon as the computer wakes.
    fakes.clock->sleep(24 * 3600'000 + 1000);
    advanceMs(0);
    EXPECT_EQ(dayTurns.size(), 2);
}

TEST_F(StoreStatisticsTest, ARoundStepsFourTimesASecondAndRestsAgainWhenItEnds) {
    fakes.clock->set(QDateTime(QDate(2026, 3, 5), QTime(8, 30, 10), Qt::UTC));
    createStore();
    advanceSeconds(1);
    int steps = 0;
    QObject::connect(store.get(), &AppStore::stepped, [&] { ++steps; });
    store->startSession(1);
    advanceSeconds(10);
    EXPECT_EQ(steps, 40);
    EXPECT_EQ(store->remainingSeconds(), 50) << "counted at the round's pace from its start";
    store->togglePause();
    advanceSeconds(10);
    EXPECT_EQ(steps, 80) << "a paused round keeps the pace";
    store->abandonSession();
    steps = 0;
    advanceSeconds(120);
    EXPECT_EQ(steps, 1 + 2) << "the step at once on coming to rest, then one a minute";
}

} // namespace
} // namespace quill::test
