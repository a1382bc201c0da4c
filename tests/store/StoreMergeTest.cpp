// Another writer (a sync tool, a second computer) replaces the data file while the app runs:
// what it wrote reaches the history without a restart, and the app's own saves keep it.
#include "StoreHarness.h"

#include "store/FileSystemFolderWatcher.h"
#include "store/ThreadWorkQueue.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QSet>
#include <QTest>

namespace quill::test {
namespace {

QSet<QUuid> idsOf(const QList<StudySession>& sessions) {
    QSet<QUuid> ids;
    for (const StudySession& s : sessions)
        ids.insert(s.id);
    return ids;
}

class StoreMergeTest : public StoreTest {
protected:
    QList<StudySession> history;

    void SetUp() override {
        for (int i = 0; i < 3; ++i)
            history << sessionAt(now().addDays(-i - 1));
        writeData(AppSettings{}, history);
    }
    /// The other writer: reads the file, changes it, and replaces it by an atomic rename.
    void writeElsewhere(const std::function<void(PersistedData&)>& change) {
        PersistedData data = readDataFile();
        change(data);
        QString error;
        ASSERT_TRUE(Persistence::writeAtomically(dataFile(), DataFileCodec::encode(data), &error));
    }
    void announceAndSettle() {
        fakes.watcher->announceChange();
        advanceMs(500);
        advanceMs(0);
    }
};

TEST_F(StoreMergeTest, AnOutsideChangeReachesTheHistoryAndTheAppsOwnSavesKeepIt) {
    createStore();
    const StudySession outside = sessionAt(now().addSecs(-3600));
    writeElsewhere([&](PersistedData& d) {
        d.sessions.prepend(outside);
        d.sessions.removeAt(2); // history[1], deleted there without leaving a record
        d.settings.playlistName = QStringLiteral("另一台电脑");
    });
    announceAndSettle();
    EXPECT_EQ(idsOf(store->sessions()), QSet<QUuid>({outside.id, history[0].id, history[2].id}));
    EXPECT_EQ(store->sessions().at(0).id, outside.id) << "newest first, as the history shows";
    EXPECT_EQ(store->settings().playlistName, QStringLiteral("另一台电脑"));

    // A delete here writes the file again: the outside session stays, both deletions hold.
    store->removeSession(history[0]);
    advanceMs(0);
    const PersistedData saved = readDataFile();
    EXPECT_EQ(idsOf(saved.sessions), QSet<QUuid>({outside.id, history[2].id}));
    EXPECT_EQ(saved.ledger.deletedSessions.size(), 2);
    EXPECT_EQ(saved.settings.playlistName, QStringLiteral("另一台电脑"));

    // A clear there by a writer that keeps no record: everything the app had seen goes, and
    // the file now remembers it for copies elsewhere.
    writeElsewhere([](PersistedData& d) { d = PersistedData{}; });
    announceAndSettle();
    EXPECT_TRUE(store->sessions().isEmpty());
    EXPECT_EQ(readDataFile().ledger.deletedSessions.size(), 4);
}

TEST_F(StoreMergeTest, ASaveMergesFirstAndChangesMadeWhileTheWorkerMergedAreKept) {
    createStore();
    const StudySession outside = sessionAt(now().addSecs(-3600));
    writeElsewhere([&](PersistedData& d) { d.sessions.prepend(outside); });
    // No notice from the watcher: the save itself finds the new version.
    fakes.work->hold = true;
    store->removeSession(history[0]);
    fakes.work->runHeld(); // merged and written; the result not yet back on the UI thread
    store->removeSession(history[1]); // handed over before the store took the merge in
    fakes.work->runHeld();
    EXPECT_EQ(idsOf(readDataFile().sessions), QSet<QUuid>({outside.id, history[2].id}));
    advanceMs(0);
    EXPECT_EQ(idsOf(store->sessions()), QSet<QUuid>({outside.id, history[2].id}));

    // A settings change made while an outside one was merged is newer, so it stays.
    fakes.clock->elapse(5000);
    writeElsewhere([&](PersistedData& d) {
        d.settings.playlistName = QStringLiteral("there");
        d.ledger.settingsChangedAt = now().addSecs(-2);
    });
    announceAndSettle();
    fakes.work->runHeld();
    updateSettings([](AppSettings& s) { s.playlistName = QStringLiteral("here"); });
    advanceMs(250);
    fakes.work->runHeld();
    advanceMs(0);
    EXPECT_EQ(store->settings().playlistName, QStringLiteral("here"));
    EXPECT_EQ(readDataFile().settings.playlistName, QStringLiteral("here"));
}

TEST_F(StoreMergeTest, AnUnreadableFileDroppedInIsSetAsideAndTheHistoryWrittenBeside) {
    createStore();
    const QByteArray foreign = "{\"sessions\": \"not ours\"}";
    QFile::remove(dataFile());
    writeDataFile(foreign);
    announceAndSettle();
    EXPECT_EQ(store->sessions().size(), 3);
    EXPECT_EQ(readDataFile().sessions.size(), 3);
    QDirIterator kept(fakes.data->directory(), {QStringLiteral("focus-data.json.unreadable-*")});
    ASSERT_TRUE(kept.hasNext());
    QFile copy(kept.next());
    ASSERT_TRUE(copy.open(QIODevice::ReadOnly));
    EXPECT_EQ(copy.readAll(), foreign);
}

// The real worker thread and the system's file notifications; the second writer replaces
// the file the way sync tools do. Virtual time still drives the debounce.
TEST_F(StoreMergeTest, WithTheRealWatcherAndWorkerNothingEitherSideWroteIsLost) {
    class CountingWatcher final : public FolderWatcher {
    public:
        std::unique_ptr<Handle> watch(const QString& d, const QString& f,
                                      std::function<void()> changed) override {
            return real.watch(d, f, [this, changed] {
                ++notices;
                changed();
            });
        }
        FileSystemFolderWatcher real;
        int notices = 0;
    };
    auto watcher = std::make_shared<CountingWatcher>();
    Services services = fakes.services();
    services.work = std::make_shared<ThreadWorkQueue>();
    services.folderWatcher = watcher;
    store = std::make_unique<AppStore>(services);

    QList<StudySession> outside;
    for (int round = 0; round < 5; ++round) {
        outside << sessionAt(now().addSecs(-600 * (round + 1)));
        writeElsewhere([&](PersistedData& d) {
            d.sessions.prepend(outside.last());
            if (round == 0)
                d.sessions.removeIf([&](const StudySession& s) { return s.id == history[2].id; });
        });
        QTRY_VERIFY_WITH_TIMEOUT(watcher->notices > 0, 20000);
        watcher->notices = 0;
        advanceMs(500);
        store->waitForSaves();
        QCoreApplication::processEvents();
        ASSERT_TRUE(idsOf(store->sessions()).contains(outside.last().id)) << round;
        // The app's own save in between, with its own deletion.
        if (round == 2) {
            store->removeSession(history[0]);
            store->waitForSaves();
        }
    }
    store.reset();
    const QSet<QUuid> expected = idsOf(outside) + QSet<QUuid>{history[1].id};
    EXPECT_EQ(idsOf(readDataFile().sessions), expected);
}

} // namespace
} // namespace quill::test
