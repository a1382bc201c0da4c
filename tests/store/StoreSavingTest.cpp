// The store's saves leave the UI thread: they are handed to a work queue in order, a burst
// that piles up while a write is pending costs one write of the latest state, and the latest
// state is on disk when the store goes.
#include "StoreHarness.h"

#include "store/ThreadWorkQueue.h"

#include <QCoreApplication>

namespace quill::test {
namespace {

class SavingTest : public StoreTest {
protected:
    void SetUp() override {
        QList<StudySession> history;
        for (int i = 0; i < 5; ++i)
            history << sessionAt(now().addDays(-i - 1));
        writeData(AppSettings{}, history);
    }
};

TEST_F(SavingTest, ChangesPilingUpBehindAPendingWriteAreWrittenOnceAsTheLatestState) {
    createStore();
    fakes.work->hold = true; // the worker is busy elsewhere
    store->removeSession(store->sessions().at(0));
    store->removeSession(store->sessions().at(0));
    store->clearHistory();
    EXPECT_EQ(fakes.work->heldJobs(), 1);
    EXPECT_EQ(readDataFile().sessions.size(), 5) << "nothing written on the UI thread";
    fakes.work->runHeld();
    EXPECT_TRUE(readDataFile().sessions.isEmpty());

    // A save handed over after the write began is a write of its own, after it.
    store->toggleAppearance();
    advanceMs(250);
    fakes.work->runHeld();
    EXPECT_EQ(fakes.work->jobsRun, 2);
    EXPECT_EQ(readDataFile().settings.appearanceMode, AppearanceMode::light);
}

TEST_F(SavingTest, QuittingWritesASettingsChangeThatHadNotSettledYet) {
    createStore();
    updateSettings([](AppSettings& s) {
        s.selectedDurationMinutes = 5000; // repaired on the way out, as a settled change is
        s.playlistName = QStringLiteral("晚安");
    });
    advanceMs(100);
    store.reset();
    const PersistedData saved = readDataFile();
    EXPECT_EQ(saved.settings.playlistName, QStringLiteral("晚安"));
    EXPECT_EQ(saved.settings.selectedDurationMinutes, 1440);
    EXPECT_EQ(saved.sessions.size(), 5);
}

TEST_F(SavingTest, OnAWorkerThreadTheLatestStateIsOnDiskAtQuitAndFailuresReachTheUiThread) {
    auto worker = std::make_shared<ThreadWorkQueue>();
    Services services = fakes.services();
    services.work = worker;
    store = std::make_unique<AppStore>(services);
    for (int i = 0; i < 4; ++i)
        store->removeSession(store->sessions().at(0));
    updateSettings([](AppSettings& s) { s.playlistName = QStringLiteral("last"); });
    store.reset();
    PersistedData saved = readDataFile();
    EXPECT_EQ(saved.sessions.size(), 1);
    EXPECT_EQ(saved.settings.playlistName, QStringLiteral("last"));

    // A plain file where the folder should be: the failure comes back as a toast.
    fakes.data->setDirectory(dataFile());
    store = std::make_unique<AppStore>(services);
    store->clearHistory();
    store->waitForSaves();
    EXPECT_EQ(store->toastMessageText(), QStringLiteral("专注记录已清空。"));
    QCoreApplication::processEvents();
    EXPECT_EQ(store->toastMessageText(), QStringLiteral("无法保存专注记录：Not a directory"));
}

} // namespace
} // namespace quill::test
