// The real services behind the store's seams: Qt timers, random draws, the data folder.
#include "store/SystemServices.h"

#include <QCoreApplication>
#include <QStandardPaths>
#include <QTest>
#include <gtest/gtest.h>

namespace quill {
namespace {

using namespace std::chrono_literals;

TEST(SystemServicesTest, DelayedCallsRunOnceAndCanDropTheirOwnHandle) {
    Services services = makeSystemServices();
    int runs = 0;
    std::unique_ptr<Scheduler::Handle> handle;
    handle = services.scheduler->after(0ms, [&] {
        ++runs;
        handle.reset(); // a debounce re-arming itself drops the running handle
    });
    QTRY_COMPARE_WITH_TIMEOUT(runs, 1, 5000);
    EXPECT_FALSE(handle);

    auto pending = services.scheduler->after(0ms, [&] { ++runs; });
    pending.reset(); // cancelled before it fires
    auto marker = services.scheduler->after(1ms, [&] { runs += 10; });
    QTRY_COMPARE_WITH_TIMEOUT(runs, 11, 5000);
    EXPECT_FALSE(marker->isActive());

    // The same on the wall clock, which the rest's step waits on.
    handle = services.scheduler->afterWallTime(1ms, [&] {
        runs += 100;
        handle.reset();
    });
    auto dropped = services.scheduler->afterWallTime(0ms, [&] { runs += 1000; });
    dropped.reset();
    QTRY_COMPARE_WITH_TIMEOUT(runs, 111, 5000);
    auto wallMarker = services.scheduler->afterWallTime(2ms, [&] { runs += 10'000; });
    QTRY_COMPARE_WITH_TIMEOUT(runs, 10'111, 5000);
    EXPECT_FALSE(wallMarker->isActive());
}

TEST(SystemServicesTest, RepeatingTimersKeepFiringUntilDropped) {
    Services services = makeSystemServices();
    int ticks = 0;
    auto timer = services.scheduler->every(1ms, [&] { ++ticks; });
    QTRY_VERIFY_WITH_TIMEOUT(ticks >= 3, 5000);
    EXPECT_TRUE(timer->isActive());
    timer.reset();
    const int seen = ticks;
    QCoreApplication::processEvents();
    EXPECT_EQ(ticks, seen);
}

TEST(SystemServicesTest, RandomDrawsStayInTheClosedRange) {
    Services services = makeSystemServices();
    bool sawLow = false, sawHigh = false;
    for (int i = 0; i < 2000; ++i) {
        const qint64 v = services.random->between(180, 183);
        ASSERT_GE(v, 180);
        ASSERT_LE(v, 183);
        sawLow |= v == 180;
        sawHigh |= v == 183;
    }
    EXPECT_TRUE(sawLow && sawHigh) << "both ends are included";
    EXPECT_EQ(services.random->between(7, 7), 7);
}

TEST(SystemServicesTest, DataFolderIsQuillmereInTheGenericDataLocation) {
    QStandardPaths::setTestModeEnabled(true);
    const QString dir = makeSystemServices().dataLocation->directory();
    EXPECT_TRUE(dir.endsWith(QStringLiteral("/Quillmere"))) << dir.toStdString();
    EXPECT_TRUE(
        dir.startsWith(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)));
}

} // namespace
} // namespace quill
