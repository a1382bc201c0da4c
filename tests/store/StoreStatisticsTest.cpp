// The store's statistics follow its sessions and the calendar day.
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

TEST_F(StoreStatisticsTest, TheDayTurningNotifiesOnce) {
    // 23:59:00 local time in Shanghai (UTC+8), where the tests run.
    fakes.clock->set(QDateTime(QDate(2026, 3, 5), QTime(15, 59), Qt::UTC));
    createStore();
    int notifications = 0;
    QObject::connect(store.get(), &AppStore::statisticsChanged, [&] { ++notifications; });
    advanceSeconds(59);
    EXPECT_EQ(notifications, 0);
    advanceSeconds(2);
    EXPECT_EQ(notifications, 1);
    advanceSeconds(60);
    EXPECT_EQ(notifications, 1);
}

} // namespace
} // namespace quill::test
