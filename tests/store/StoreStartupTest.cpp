// Start-up: loading, ordering, the start-up repair, unreadable files and failing saves.
#include "StoreHarness.h"

#include <QDirIterator>

namespace quill::test {
namespace {

class StartupTest : public StoreTest {};

TEST_F(StartupTest, NoFileGivesDefaultsAndWritesNothing) {
    createStore();
    EXPECT_EQ(store->settings(), AppSettings{});
    EXPECT_TRUE(store->sessions().isEmpty());
    EXPECT_EQ(store->phase(), SessionPhase::idle);
    advanceMs(5000);
    EXPECT_FALSE(dataFileExists()) << "defaults are already repaired: nothing to write";
}

TEST_F(StartupTest, SessionsAreOrderedNewestFirstStably) {
    const QDateTime t = now();
    StudySession a = sessionAt(t.addDays(-3)), b = sessionAt(t.addDays(-1)),
                 c = sessionAt(t.addDays(-1)), d = sessionAt(t.addDays(-2));
    writeData(AppSettings{}, {a, b, c, d});
    createStore();
    ASSERT_EQ(store->sessions().size(), 4);
    EXPECT_EQ(store->sessions()[0].id, b.id);
    EXPECT_EQ(store->sessions()[1].id, c.id) << "equal start times keep their file order";
    EXPECT_EQ(store->sessions()[2].id, d.id);
    EXPECT_EQ(store->sessions()[3].id, a.id);
}

TEST_F(StartupTest, ARepairAtStartUpHoldsAtOnceAndReachesTheFile250msLater) {
    AppSettings s;
    s.selectedDurationMinutes = std::numeric_limits<qint64>::max();
    s.taskNames = QList<QString>{QStringLiteral("  Math "), QStringLiteral("math")};
    writeData(s);
    createStore();
    store->startSession(std::nullopt);
    EXPECT_EQ(store->remainingSeconds(), 1440 * 60);
    advanceMs(250);
    const PersistedData saved = readDataFile();
    EXPECT_EQ(saved.settings.selectedDurationMinutes, 1440);
    EXPECT_EQ(saved.settings.taskNames, QList<QString>{QStringLiteral("Math")});
}

TEST_F(StartupTest, AnUnreadableFileIsKeptBesideTheNewOne) {
    const QByteArray torn = R"({"sessions":[{"id":"6F1C)";
    writeDataFile(torn);
    createStore();
    EXPECT_EQ(store->settings(), AppSettings{});
    advanceMs(1000);
    EXPECT_TRUE(dataFileExists()) << "nothing replaced it yet";
    store->toggleAppearance();
    advanceMs(300);

    QStringList kept;
    QDirIterator it(fakes.data->directory(), {QStringLiteral("focus-data.json.unreadable-*")});
    while (it.hasNext())
        kept << it.next();
    ASSERT_EQ(kept.size(), 1);
    QFile f(kept.front());
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_EQ(f.readAll(), torn);
    EXPECT_EQ(readDataFile().settings.appearanceMode, AppearanceMode::light);
}

TEST_F(StartupTest, AFailedReviewSaveIsNeverConfirmedAndQuittingKeepsACopy) {
    // A plain file where the data folder should be: the folder cannot be created.
    const QString blocked = fakes.data->directory() + QStringLiteral("-blocked");
    QFile blocker(blocked);
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    fakes.data->setDirectory(blocked + QStringLiteral("/Quillmere"));
    createStore();
    store->startSession(1);
    advanceSeconds(61);
    ASSERT_TRUE(store->lastSaveFailed()) << "an earlier save failed and said so";

    auto catcher = std::make_unique<WarningCatcher>();
    store->saveCompletion(4, 4, QStringLiteral("note"));
    advanceMs(0);
    const QStringList warnings = catcher->warnings;
    catcher.reset();

    ASSERT_EQ(warnings.size(), 1);
    EXPECT_TRUE(warnings[0].startsWith(QStringLiteral("Quillmere save failed: ")));
    EXPECT_EQ(store->sessions().size(), 1) << "the session stays in memory";
    EXPECT_EQ(store->toastMessageText(), QStringLiteral("无法保存专注记录：Not a directory"))
        << "told again, though a failure was shown before";
    EXPECT_TRUE(store->toastIsWarning());
    EXPECT_TRUE(store->lastSaveFailed());

    // Quitting now tries once more; that fails too, so a copy goes where it can be written.
    const AppStore::FinalSave last = store->saveBeforeQuit();
    EXPECT_FALSE(last.saved);
    EXPECT_EQ(last.error, QStringLiteral("Not a directory"));
    ASSERT_FALSE(last.copyPath.isEmpty());
    EXPECT_EQ(Persistence::load(QFileInfo(last.copyPath).path()).data.sessions.size(), 1);

    QFile::remove(blocked);
    EXPECT_TRUE(store->saveBeforeQuit().saved);
    EXPECT_FALSE(store->lastSaveFailed());
    const PersistedData saved = readDataFile(); // reads fakes.data->filePath()
    EXPECT_EQ(saved.sessions.size(), 1);
    EXPECT_EQ(saved.sessions[0].note, QStringLiteral("note"));

    // A review that reaches the disk is confirmed once it is there, with the check mark.
    store->startSession(1);
    advanceSeconds(61);
    store->saveCompletion(3, 3, QString());
    advanceMs(0);
    EXPECT_EQ(store->toastMessageText(), QStringLiteral("这一轮已存入你的专注档案。"));
    EXPECT_FALSE(store->toastIsWarning());
}

TEST_F(StartupTest, NoDataLocationRunsInMemory) {
    fakes.data->setDirectory(QString());
    createStore();
    WarningCatcher catcher;
    store->startSession(1);
    advanceSeconds(61);
    store->saveCompletion(4, 4, QString());
    EXPECT_EQ(store->sessions().size(), 1);
    EXPECT_EQ(catcher.warnings.size(), 2) << "one line per failed save (settings, then session)";
}

} // namespace
} // namespace quill::test
