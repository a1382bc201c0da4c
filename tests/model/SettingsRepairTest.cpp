#include "model/AppSettings.h"

#include <gtest/gtest.h>
#include <limits>

namespace quill {
namespace {

AppSettings withTasks(QList<QString> tasks, std::optional<QString> selected = std::nullopt) {
    AppSettings s;
    s.taskNames = std::move(tasks);
    s.selectedTaskName = std::move(selected);
    return s;
}

QString repeated(const QString& unit, int times) {
    return unit.repeated(times);
}

// ---------------------------------------------------------------- task list

TEST(TaskListRepair, TrimsAndDropsCaseAndDiacriticDuplicatesAndEmptyNames) {
    const AppSettings out = normalizedSettings(withTasks(
        {QStringLiteral("  Math "), QStringLiteral("math"), QStringLiteral("Mäth"), QString()}));
    EXPECT_EQ(out.taskNames, QList<QString>{QStringLiteral("Math")});
}

TEST(TaskListRepair, KeepsTheFirstSpellingAndTheOrder) {
    const AppSettings out = normalizedSettings(
        withTasks({QStringLiteral("写作"), QStringLiteral("Café"), QStringLiteral("阅读"),
                   QStringLiteral("CAFE"), QStringLiteral("cafe\u0301"), QStringLiteral("写作 ")}));
    EXPECT_EQ(out.taskNames, (QList<QString>{QStringLiteral("写作"), QStringLiteral("Café"),
                                             QStringLiteral("阅读")}));
}

TEST(TaskListRepair, FoldsBeyondLatin) {
    // Greek final sigma and tonos fold like any other case and accent.
    const AppSettings out = normalizedSettings(
        withTasks({QStringLiteral("ΣΟΦΙΑ"), QStringLiteral("σοφία"), QStringLiteral("Straße")}));
    EXPECT_EQ(out.taskNames, (QList<QString>{QStringLiteral("ΣΟΦΙΑ"), QStringLiteral("Straße")}));
}

TEST(TaskListRepair, DistinctNamesThatOnlyLookAlikeStay) {
    const AppSettings out =
        normalizedSettings(withTasks({QStringLiteral("数学"), QStringLiteral("数学 2"),
                                      QStringLiteral("b2"), QStringLiteral("b10")}));
    EXPECT_EQ(out.taskNames->size(), 4);
}

TEST(TaskListRepair, TrimsEveryKindOfWhiteSpaceAndDropsBlankEntries) {
    const AppSettings out = normalizedSettings(
        withTasks({QStringLiteral("\t\n Deep work \r\n"), QStringLiteral("\u3000"),
                   QStringLiteral(" \n "), QStringLiteral("\u00a0读书\u00a0")}));
    EXPECT_EQ(out.taskNames, (QList<QString>{QStringLiteral("Deep work"), QStringLiteral("读书")}));
}

TEST(TaskListRepair, AbsentListBecomesPresentAndEmpty) {
    AppSettings in;
    in.taskNames.reset();
    const AppSettings out = normalizedSettings(in);
    ASSERT_TRUE(out.taskNames.has_value());
    EXPECT_TRUE(out.taskNames->isEmpty());
}

struct CutCase {
    const char* label;
    QString unit; ///< one user-perceived character
};

class TaskNameCut : public ::testing::TestWithParam<CutCase> {};

TEST_P(TaskNameCut, KeepsFortyUserPerceivedCharacters) {
    const QString unit = GetParam().unit;
    const QString long45 = repeated(unit, 45);
    const AppSettings out = normalizedSettings(withTasks({long45}, long45));
    ASSERT_EQ(out.taskNames->size(), 1);
    EXPECT_EQ(out.taskNames->first(), repeated(unit, 40));
    // The selection is cut the same way, so it still matches its entry.
    EXPECT_EQ(out.selectedTaskName, repeated(unit, 40));
}

TEST_P(TaskNameCut, LeavesFortyAlone) {
    const QString exactly40 = repeated(GetParam().unit, 40);
    EXPECT_EQ(normalizedSettings(withTasks({exactly40})).taskNames->first(), exactly40);
}

INSTANTIATE_TEST_SUITE_P(
    Characters, TaskNameCut,
    ::testing::Values(CutCase{"ascii", QStringLiteral("a")}, CutCase{"han", QStringLiteral("字")},
                      CutCase{"emoji", QStringLiteral("😀")},
                      CutCase{"emojiModifier", QStringLiteral("👍🏽")},
                      CutCase{"zwjFamily", QStringLiteral("👨‍👩‍👧")},
                      CutCase{"flag", QStringLiteral("🇨🇳")},
                      CutCase{"combiningMarks", QStringLiteral("e\u0301\u0323")},
                      CutCase{"hangulJamo", QStringLiteral("\u1100\u1161\u11a8")}),
    [](const auto& info) { return std::string(info.param.label); });

TEST(TaskNameCut, TrimsBeforeCutting) {
    const QString padded = QStringLiteral("          ") + repeated(QStringLiteral("x"), 40);
    EXPECT_EQ(normalizedSettings(withTasks({padded})).taskNames->first(),
              repeated(QStringLiteral("x"), 40));
}

TEST(TaskNameCut, NamesEqualAfterCuttingAreDuplicates) {
    const QString base = repeated(QStringLiteral("a"), 40);
    const AppSettings out = normalizedSettings(
        withTasks({base + QStringLiteral("one"), base.toUpper() + QStringLiteral("two")}));
    EXPECT_EQ(out.taskNames, QList<QString>{base});
}

// ---------------------------------------------------------------- selected task

TEST(SelectedTaskRepair, TrimmedSelectionThatIsListedStays) {
    const AppSettings out =
        normalizedSettings(withTasks({QStringLiteral("Math")}, QStringLiteral("  Math\n")));
    EXPECT_EQ(out.selectedTaskName, QStringLiteral("Math"));
}

TEST(SelectedTaskRepair, MatchIsCaseAndDiacriticSensitive) {
    EXPECT_EQ(normalizedSettings(withTasks({QStringLiteral("Math")}, QStringLiteral("math")))
                  .selectedTaskName,
              std::nullopt);
    EXPECT_EQ(normalizedSettings(withTasks({QStringLiteral("Math")}, QStringLiteral("Mäth")))
                  .selectedTaskName,
              std::nullopt);
}

TEST(SelectedTaskRepair, MatchesAnEntryWhoseDuplicateWasDropped) {
    // "math" was folded into "Math", so selecting the dropped spelling selects nothing.
    const AppSettings out = normalizedSettings(
        withTasks({QStringLiteral("Math"), QStringLiteral("math")}, QStringLiteral("math")));
    EXPECT_EQ(out.selectedTaskName, std::nullopt);
}

TEST(SelectedTaskRepair, CanonicallyEquivalentSpellingsMatch) {
    const AppSettings out =
        normalizedSettings(withTasks({QStringLiteral("Mäth")}, QStringLiteral("Ma\u0308th")));
    ASSERT_TRUE(out.selectedTaskName.has_value());
    EXPECT_EQ(out.selectedTaskName->normalized(QString::NormalizationForm_C),
              QStringLiteral("Mäth"));
}

TEST(SelectedTaskRepair, UnlistedSelectionBecomesAbsent) {
    EXPECT_EQ(normalizedSettings(withTasks({QStringLiteral("写作")}, QStringLiteral("阅读")))
                  .selectedTaskName,
              std::nullopt);
    AppSettings noList;
    noList.taskNames.reset();
    noList.selectedTaskName = QStringLiteral("阅读");
    const AppSettings out = normalizedSettings(noList);
    EXPECT_EQ(out.selectedTaskName, std::nullopt);
    EXPECT_EQ(out.taskNames, QList<QString>{});
}

TEST(SelectedTaskRepair, BlankSelectionBecomesAbsentAndAbsentStaysAbsent) {
    EXPECT_EQ(normalizedSettings(withTasks({QStringLiteral("写作")}, QStringLiteral("  ")))
                  .selectedTaskName,
              std::nullopt);
    EXPECT_EQ(normalizedSettings(withTasks({QStringLiteral("写作")})).selectedTaskName,
              std::nullopt);
}

// ---------------------------------------------------------------- ranges

constexpr qint64 kMax = std::numeric_limits<qint64>::max();
constexpr qint64 kMin = std::numeric_limits<qint64>::min();

struct RangeCase {
    qint64 duration, minimum, maximum, microBreak;
    qint64 wantDuration, wantMinimum, wantMaximum, wantMicroBreak;
};

class RangeRepair : public ::testing::TestWithParam<RangeCase> {};

TEST_P(RangeRepair, LimitsEveryRange) {
    const RangeCase c = GetParam();
    AppSettings in;
    in.selectedDurationMinutes = c.duration;
    in.reminderMinimumMinutes = c.minimum;
    in.reminderMaximumMinutes = c.maximum;
    in.microBreakSeconds = c.microBreak;
    const AppSettings out = normalizedSettings(in);
    EXPECT_EQ(out.selectedDurationMinutes, c.wantDuration);
    EXPECT_EQ(out.reminderMinimumMinutes, c.wantMinimum);
    EXPECT_EQ(out.reminderMaximumMinutes, c.wantMaximum);
    EXPECT_EQ(out.microBreakSeconds, c.wantMicroBreak);
}

INSTANTIATE_TEST_SUITE_P(
    Limits, RangeRepair,
    ::testing::Values(
        // duration, min, max, break  →  repaired
        RangeCase{50, 3, 5, 10, 50, 3, 5, 10},               // defaults untouched
        RangeCase{0, 0, 5, 3, 1, 1, 5, 5},                   // lower limits
        RangeCase{2000, 75, 120, 90, 1440, 60, 90, 60},      // upper limits
        RangeCase{1, 1, 1, 5, 1, 1, 1, 5},                   // exactly at the lower limits
        RangeCase{1440, 60, 90, 60, 1440, 60, 90, 60},       // exactly at the upper limits
        RangeCase{25, 30, 10, 10, 25, 30, 30, 10},           // maximum below minimum is raised
        RangeCase{25, 75, 70, 10, 25, 60, 70, 10},           // compared with the repaired minimum
        RangeCase{25, 75, 0, 10, 25, 60, 60, 10},            // raised to the repaired minimum
        RangeCase{25, 4, -3, 10, 25, 4, 4, 10},              // no lower bound but the minimum
        RangeCase{-5, -5, -5, -5, 1, 1, 1, 5},               // negatives
        RangeCase{kMax, kMax, kMax, kMax, 1440, 60, 90, 60}, // the extremes do not overflow
        RangeCase{kMin, kMin, kMin, kMin, 1, 1, 1, 5}));

// ---------------------------------------------------------------- the rest

TEST(SettingsRepair, LeavesUnrepairedFieldsAsTheyAre) {
    AppSettings in;
    in.reminderSound = QStringLiteral("NoSuchSound");
    in.completionSound = QString();
    in.playlistName = QStringLiteral("  spaced  ");
    in.musicService.reset();
    in.appearanceMode = AppearanceMode::light;
    in.floatingTimerOnMinimize.reset();
    in.floatingSignalButtons = true;
    in.ambientSounds = QList<QString>{QStringLiteral("thunder"), QStringLiteral("rain")};
    in.ambientVolumes =
        std::map<QString, double>{{QStringLiteral("rain"), 1.5}, {QStringLiteral("wind"), -0.2}};
    in.ambientMasterVolume = 3.0;
    in.ambientFollowsFocus.reset();
    const AppSettings out = normalizedSettings(in);
    EXPECT_EQ(out, in);
}

TEST(SettingsRepair, DefaultIsAlreadyRepaired) {
    EXPECT_EQ(normalizedSettings(AppSettings{}), AppSettings{});
}

TEST(SettingsRepair, RepairingTwiceChangesNothingMore) {
    std::vector<AppSettings> inputs;
    inputs.push_back(withTasks(
        {QStringLiteral("  Math "), QStringLiteral("math"), QStringLiteral("Mäth"), QString()},
        QStringLiteral(" Math")));
    // A cut that ends on a space: the space goes at once, not on the next repair.
    const QString spaceAt40 = repeated(QStringLiteral("a"), 39) + QStringLiteral(" bcd");
    inputs.push_back(withTasks(
        {spaceAt40, repeated(QStringLiteral("b"), 39) + QStringLiteral("\u3000")}, spaceAt40));
    EXPECT_EQ(normalizedSettings(inputs.back()).taskNames->first(),
              repeated(QStringLiteral("a"), 39));
    EXPECT_EQ(normalizedSettings(inputs.back()).selectedTaskName,
              repeated(QStringLiteral("a"), 39));
    inputs.push_back(withTasks({repeated(QStringLiteral("👨‍👩‍👧"), 50),
                                repeated(QStringLiteral("e\u0301"), 41)},
                               repeated(QStringLiteral("e\u0301"), 45)));
    AppSettings ranges;
    ranges.selectedDurationMinutes = 9999;
    ranges.reminderMinimumMinutes = 75;
    ranges.reminderMaximumMinutes = 2;
    ranges.microBreakSeconds = -1;
    ranges.taskNames.reset();
    ranges.selectedTaskName = QStringLiteral("gone");
    inputs.push_back(ranges);
    for (const AppSettings& in : inputs) {
        const AppSettings once = normalizedSettings(in);
        EXPECT_EQ(normalizedSettings(once), once);
    }
}

} // namespace
} // namespace quill
