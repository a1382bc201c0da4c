// Tasks, appearance, history, export, toasts, named sounds and the settings write-back.
#include "StoreHarness.h"

#include <QLoggingCategory>

namespace quill::test {
namespace {

class CommandsTest : public StoreTest {
protected:
    void SetUp() override { createStore(); }
    QList<QString> tasks() const { return store->settings().effectiveTaskNames(); }
};

TEST_F(CommandsTest, AddingANameThatMatchesIgnoringCaseAndAccentsSelectsTheStoredOne) {
    EXPECT_TRUE(store->addTask(QStringLiteral("  Mäth \n")));
    EXPECT_EQ(store->toastMessageText(), QStringLiteral("已新增并选择任务“Mäth”。"));
    EXPECT_TRUE(store->addTask(QStringLiteral("math")));
    EXPECT_EQ(tasks(), QList<QString>{QStringLiteral("Mäth")});
    EXPECT_EQ(store->selectedTaskName(), QStringLiteral("Mäth"));
    EXPECT_EQ(store->toastMessageText(), QStringLiteral("已选择任务“Mäth”。"));
    EXPECT_FALSE(store->addTask(QStringLiteral(" \n\t ")));
    // A long name is cut before it is added and shown.
    const QString forty(40, QLatin1Char('x'));
    store->addTask(forty + QStringLiteral("0123456789"));
    EXPECT_EQ(tasks().back(), forty);
    EXPECT_EQ(store->toastMessageText(), QStringLiteral("已新增并选择任务“%1”。").arg(forty));
}

TEST_F(CommandsTest, SettingsEditsAreRepairedAtOnceAndTheRoundsDesignIsHeldDuringARound) {
    using Time = AppStore::EditTime;
    struct Case {
        const char* what;
        std::function<void(AppSettings&)> edit;
        Time when;
        bool duringRound;
        qint64 duration, earliest, latest;
    };
    // Defaults: 50 minutes, reminders 3–5.
    const Case cases[] = {
        {"length below 1", [](AppSettings& s) { s.selectedDurationMinutes = 0; }, Time::anyTime,
         false, 1, 3, 5},
        {"length above a day", [](AppSettings& s) { s.selectedDurationMinutes = 5000; },
         Time::anyTime, false, 1440, 3, 5},
        {"earliest past latest", [](AppSettings& s) { s.reminderMinimumMinutes = 8; },
         Time::anyTime, false, 50, 8, 8},
        {"latest below earliest", [](AppSettings& s) { s.reminderMaximumMinutes = 1; },
         Time::anyTime, false, 50, 3, 3},
        {"reminder range beyond its bounds",
         [](AppSettings& s) {
             s.reminderMinimumMinutes = 0;
             s.reminderMaximumMinutes = 500;
         },
         Time::anyTime, false, 50, 1, 90},
        {"round design while a round runs", [](AppSettings& s) { s.selectedDurationMinutes = 90; },
         Time::betweenRounds, true, 50, 3, 5},
        {"other settings while a round runs", [](AppSettings& s) { s.reminderMinimumMinutes = 4; },
         Time::anyTime, true, 50, 4, 5},
    };
    for (const Case& c : cases) {
        store->abandonSession();
        store->editSettings([](AppSettings& s) { s = AppSettings{}; });
        if (c.duringRound)
            store->startSession(std::nullopt);
        const bool accepted = store->editSettings(c.edit, c.when);
        EXPECT_EQ(accepted, !(c.duringRound && c.when == Time::betweenRounds)) << c.what;
        EXPECT_EQ(store->settings().selectedDurationMinutes, c.duration) << c.what;
        EXPECT_EQ(store->settings().reminderMinimumMinutes, c.earliest) << c.what;
        EXPECT_EQ(store->settings().reminderMaximumMinutes, c.latest) << c.what;
        EXPECT_EQ(store->settings().reminderMaximumFloor(), c.earliest) << c.what;
    }
}

TEST_F(CommandsTest, AdoptingTheSuggestedLengthSetsTheNextRound) {
    store->adoptRecommendedLength();
    EXPECT_EQ(store->settings().selectedDurationMinutes, 30); // fewer than three rounds stored
}

TEST_F(CommandsTest, SelectingNeedsAnExactMatchAndIsLockedDuringARound) {
    store->addTask(QStringLiteral("Reading"));
    store->selectTask(std::nullopt);
    EXPECT_FALSE(store->selectedTaskName());
    store->selectTask(QStringLiteral("  Reading "));
    EXPECT_EQ(store->selectedTaskName(), QStringLiteral("Reading"));
    store->selectTask(QStringLiteral("reading"));
    EXPECT_FALSE(store->selectedTaskName()) << "case differs: selection cleared";

    store->selectTask(QStringLiteral("Reading"));
    store->startSession(25);
    store->selectTask(std::nullopt);
    EXPECT_EQ(store->selectedTaskName(), QStringLiteral("Reading"));
    EXPECT_FALSE(store->addTask(QStringLiteral("Other")));
    EXPECT_EQ(tasks().size(), 1);
    EXPECT_EQ(store->draft()->taskName, QStringLiteral("Reading"));
}

TEST_F(CommandsTest, RemovingATaskClearsItsSelectionAndKeepsHistory) {
    store->addTask(QStringLiteral("A"));
    store->addTask(QStringLiteral("B"));
    store->removeTask(QStringLiteral("B"));
    EXPECT_EQ(tasks(), QList<QString>{QStringLiteral("A")});
    EXPECT_FALSE(store->selectedTaskName());
    EXPECT_EQ(store->toastMessageText(), QStringLiteral("已从任务列表移除“B”，历史记录仍保留。"));
    store->removeTask(QStringLiteral("nothing"));
    EXPECT_EQ(store->toastMessageText(),
              QStringLiteral("已从任务列表移除“nothing”，历史记录仍保留。"));
    store->removeTask(QStringLiteral("A"));
    ASSERT_TRUE(store->settings().taskNames.has_value()) << "an empty list, not absent";
    EXPECT_TRUE(store->settings().taskNames->isEmpty());
}

TEST_F(CommandsTest, AppearanceTogglesFromAbsentToLightAndBack) {
    updateSettings([](AppSettings& s) { s.appearanceMode.reset(); });
    store->toggleAppearance();
    EXPECT_EQ(store->settings().appearanceMode, AppearanceMode::light);
    store->toggleAppearance();
    EXPECT_EQ(store->settings().appearanceMode, AppearanceMode::dark);
}

TEST_F(CommandsTest, ToastsReplaceAtOnceAndEachLastsItsOwnThreeSeconds) {
    store->toast(QStringLiteral("one"));
    advanceMs(2000);
    store->toast(QStringLiteral("two"));
    EXPECT_EQ(store->toastMessageText(), QStringLiteral("two"));
    advanceMs(1500); // the first toast's check passes and leaves "two" alone
    EXPECT_EQ(store->toastMessageText(), QStringLiteral("two"));
    advanceMs(1500);
    EXPECT_FALSE(store->toastMessage().has_value());

    // The same text again within 3 s is cleared when the first one's time ends.
    store->toast(QStringLiteral("same"));
    advanceMs(1000);
    store->toast(QStringLiteral("same"));
    advanceMs(2000);
    EXPECT_FALSE(store->toastMessage().has_value());
}

TEST_F(CommandsTest, RandomSoundDrawsFromThePoolAndOthersPassThrough) {
    fakes.random->script = {6};
    store->playSound(QStringLiteral("随机"));
    store->playSound(QStringLiteral("NoSuchSound"));
    EXPECT_EQ(fakes.sounds->played,
              (QStringList{QStringLiteral("Morse"), QStringLiteral("NoSuchSound")}));
    EXPECT_EQ(fakes.random->ranges.back(), std::make_pair(qint64(0), qint64(6)));
}

// A slider drag, never 250 ms apart, ending in a repaired value: held at once, written once.
TEST_F(CommandsTest, ABurstOfSettingsChangesIsWrittenOnceRepaired) {
    advanceMs(1000);
    for (int i = 1; i <= 20; ++i) {
        updateSettings([i](AppSettings& s) {
            s.ambientMasterVolume = i / 20.0;
            s.selectedDurationMinutes = 250 * i;
        });
        EXPECT_EQ(store->settings().selectedDurationMinutes, std::min(250 * i, 1440));
        advanceMs(i < 20 ? 100 : 200);
        EXPECT_FALSE(dataFileExists()) << "not written during the burst";
    }
    advanceMs(50);
    ASSERT_TRUE(dataFileExists());
    EXPECT_EQ(readDataFile().settings.ambientMasterVolume, 1.0);
    EXPECT_EQ(readDataFile().settings.selectedDurationMinutes, 1440);
}

TEST_F(CommandsTest, StartingARoundRewritesTheDurationAndSavesShortlyAfter) {
    advanceMs(1000);
    store->startSession(std::nullopt);
    EXPECT_EQ(store->plannedSeconds(), 50 * 60);
    advanceMs(250);
    EXPECT_TRUE(dataFileExists());
}

TEST_F(CommandsTest, RemovingASessionKeepsTheOrderOfTheOthers) {
    const QDateTime t = now();
    QList<StudySession> sessions{sessionAt(t.addDays(-1)), sessionAt(t.addDays(-2)),
                                 sessionAt(t.addDays(-3))};
    writeData(store->settings(), sessions);
    createStore();
    store->removeSession(sessions[1]);
    ASSERT_EQ(store->sessions().size(), 2);
    EXPECT_EQ(store->sessions()[0].id, sessions[0].id);
    EXPECT_EQ(store->sessions()[1].id, sessions[2].id);
    EXPECT_EQ(readDataFile().sessions.size(), 2) << "written at once";
}

TEST_F(CommandsTest, ExportReportsWrittenOrNot) {
    store->exportSessions();
    EXPECT_EQ(store->toastMessageText(), QStringLiteral("没有导出文件。"));

    fakes.files->answer = fakes.data->directory() + QStringLiteral("-export.csv");
    store->exportSessions();
    EXPECT_EQ(store->toastMessageText(), QStringLiteral("CSV 已导出。"));
    EXPECT_TRUE(QFile::exists(*fakes.files->answer));

    fakes.files->answer = QStringLiteral("/proc/forbidden/out.csv");
    store->exportSessions();
    EXPECT_EQ(store->toastMessageText(), QStringLiteral("没有导出文件。"));
}

} // namespace
} // namespace quill::test
