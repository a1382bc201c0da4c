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

// ---------------------------------------------------------------- task list and selection

struct TaskCase {
    const char* label;
    QList<QString> tasks;
    std::optional<QString> selected;
    QList<QString> wantTasks;
    std::optional<QString> wantSelected{};
};

class TaskRepair : public ::testing::TestWithParam<TaskCase> {};

TEST_P(TaskRepair, TrimsFoldsDuplicatesAndKeepsOnlyAListedSelection) {
    const TaskCase& c = GetParam();
    const AppSettings out = normalizedSettings(withTasks(c.tasks, c.selected));
    EXPECT_EQ(out.taskNames, c.wantTasks);
    // Canonically equivalent spellings are one name.
    EXPECT_EQ(out.selectedTaskName
                  ? std::optional(out.selectedTaskName->normalized(QString::NormalizationForm_C))
                  : std::nullopt,
              c.wantSelected);
    EXPECT_EQ(normalizedSettings(out), out) << "repairing again changes nothing more";
}

const QString kForty = repeated(QStringLiteral("a"), 40);

INSTANTIATE_TEST_SUITE_P(
    Cases, TaskRepair,
    ::testing::Values(
        TaskCase{"caseAndDiacriticDuplicatesAndEmptyNamesGo",
                 {u"  Math "_qs, u"math"_qs, u"Mäth"_qs, QString()},
                 std::nullopt,
                 {u"Math"_qs}},
        TaskCase{"firstSpellingAndOrderStay",
                 {u"写作"_qs, u"Café"_qs, u"阅读"_qs, u"CAFE"_qs, u"cafe\u0301"_qs, u"写作 "_qs},
                 std::nullopt,
                 {u"写作"_qs, u"Café"_qs, u"阅读"_qs}},
        // Greek final sigma and tonos fold like any other case and accent.
        TaskCase{"foldsBeyondLatin",
                 {u"ΣΟΦΙΑ"_qs, u"σοφία"_qs, u"Straße"_qs},
                 std::nullopt,
                 {u"ΣΟΦΙΑ"_qs, u"Straße"_qs}},
        TaskCase{"lookAlikesStay",
                 {u"数学"_qs, u"数学 2"_qs, u"b2"_qs, u"b10"_qs},
                 std::nullopt,
                 {u"数学"_qs, u"数学 2"_qs, u"b2"_qs, u"b10"_qs}},
        TaskCase{"everyWhiteSpaceTrimmed",
                 {u"\t\n Deep work \r\n"_qs, u"\u3000"_qs, u" \n "_qs, u"\u00a0读书\u00a0"_qs},
                 std::nullopt,
                 {u"Deep work"_qs, u"读书"_qs}},
        TaskCase{"trimmedBeforeCutting", {QString(10, u' ') + kForty}, std::nullopt, {kForty}},
        TaskCase{"equalAfterCuttingAreDuplicates",
                 {kForty + u"one"_qs, kForty.toUpper() + u"two"_qs},
                 std::nullopt,
                 {kForty}},
        TaskCase{"trimmedSelectionStays", {u"Math"_qs}, u"  Math\n"_qs, {u"Math"_qs}, u"Math"_qs},
        TaskCase{"selectionIsCaseSensitive", {u"Math"_qs}, u"math"_qs, {u"Math"_qs}},
        TaskCase{"selectionIsDiacriticSensitive", {u"Math"_qs}, u"Mäth"_qs, {u"Math"_qs}},
        // "math" was folded into "Math", so selecting the dropped spelling selects nothing.
        TaskCase{
            "selectionOfADroppedDuplicate", {u"Math"_qs, u"math"_qs}, u"math"_qs, {u"Math"_qs}},
        TaskCase{"canonicallyEquivalentSelection",
                 {u"Mäth"_qs},
                 u"Ma\u0308th"_qs,
                 {u"Mäth"_qs},
                 u"Mäth"_qs},
        TaskCase{"unlistedSelection", {u"写作"_qs}, u"阅读"_qs, {u"写作"_qs}},
        TaskCase{"blankSelection", {u"写作"_qs}, u"  "_qs, {u"写作"_qs}},
        TaskCase{"noSelection", {u"写作"_qs}, std::nullopt, {u"写作"_qs}},
        // A cut that ends on a space: the space goes at once, not on the next repair.
        TaskCase{"cutEndingOnASpace",
                 {kForty.left(39) + u" bcd"_qs, QString(39, u'b') + u"\u3000"_qs},
                 kForty.left(39) + u" bcd"_qs,
                 {kForty.left(39), QString(39, u'b')},
                 kForty.left(39)},
        TaskCase{"cutFamiliesAndCombiningMarks",
                 {repeated(u"👨‍👩‍👧"_qs, 50), repeated(u"e\u0301"_qs, 41)},
                 repeated(u"e\u0301"_qs, 45),
                 {repeated(u"👨‍👩‍👧"_qs, 40), repeated(u"e\u0301"_qs, 40)},
                 repeated(u"\u00e9"_qs, 40)}),
    [](const auto& info) { return std::string(info.param.label); });

TEST(TaskListRepair, AbsentListBecomesPresentAndEmptyAndSelectsNothing) {
    AppSettings in;
    in.taskNames.reset();
    in.selectedTaskName = QStringLiteral("阅读");
    const AppSettings out = normalizedSettings(in);
    EXPECT_EQ(out.taskNames, QList<QString>{});
    EXPECT_EQ(out.selectedTaskName, std::nullopt);
    EXPECT_EQ(normalizedSettings(out), out);
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
    EXPECT_EQ(normalizedSettings(withTasks({repeated(unit, 40)})).taskNames, out.taskNames);
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
    EXPECT_EQ(normalizedSettings(out), out) << "repairing again changes nothing more";
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

} // namespace
} // namespace quill
