#include "model/AppSettings.h"

#include <gtest/gtest.h>

namespace quill {
namespace {

AppSettings allAmbientAbsent() {
    AppSettings s;
    s.ambientSounds.reset();
    s.ambientVolumes.reset();
    s.ambientMasterVolume.reset();
    return s;
}

// How a level is made: square in double precision, then narrow.
float narrowedSquare(double v) {
    return static_cast<float>(v * v);
}

TEST(AmbientLevels, AllFieldsAbsentGiveSquaredDefaultMasterAndSilence) {
    for (const AppSettings& s : {allAmbientAbsent(), AppSettings{}}) {
        const AmbientLevels levels = s.ambientLevels();
        EXPECT_EQ(levels.master, 0.49f);
        for (AmbientSound sound : kAllAmbientSounds)
            EXPECT_EQ(levels.level(sound), 0.0f) << rawValue(sound).toStdString();
    }
}

TEST(AmbientLevels, SquaresInDoubleBeforeNarrowing) {
    // For these volumes squaring the float gives a different float than narrowing the double.
    for (double v : {0.33, 0.45, 0.7, 0.8, 0.9, 0.123}) {
        AppSettings s;
        s.ambientMasterVolume = v;
        s.ambientSounds = QList<QString>{QStringLiteral("wind")};
        s.ambientVolumes = std::map<QString, double>{{QStringLiteral("wind"), v}};
        const AmbientLevels levels = s.ambientLevels();
        ASSERT_NE(narrowedSquare(v), static_cast<float>(v) * static_cast<float>(v)) << v;
        EXPECT_EQ(levels.master, narrowedSquare(v)) << v;
        EXPECT_EQ(levels.level(AmbientSound::wind), narrowedSquare(v)) << v;
    }
}

// A selected sound without a stored volume plays at seven tenths, a repeated one at one level
// (not a sum), and volumes outside the range pass through squared; unselected ones are silent
// whatever their volume.
TEST(AmbientLevels, EachSelectedSoundOnceAtItsStoredVolumeOrSevenTenths) {
    AppSettings s;
    s.ambientSounds = QList<QString>{u"brownNoise"_qs, u"rain"_qs, u"fire"_qs, u"rain"_qs};
    s.ambientVolumes = std::map<QString, double>{
        {u"rain"_qs, 0.6}, {u"fire"_qs, 1.5}, {u"birds"_qs, 0.9}, {u"wind"_qs, 1.0}};
    s.ambientMasterVolume = -0.5;
    const AmbientLevels levels = s.ambientLevels();
    EXPECT_EQ(levels.level(AmbientSound::brownNoise), narrowedSquare(0.7));
    EXPECT_EQ(levels.level(AmbientSound::rain), narrowedSquare(0.6));
    EXPECT_EQ(levels.level(AmbientSound::fire), 2.25f);
    EXPECT_EQ(levels.master, 0.25f);
    for (AmbientSound sound : {AmbientSound::birds, AmbientSound::wind, AmbientSound::waves})
        EXPECT_EQ(levels.level(sound), 0.0f) << rawValue(sound).toStdString();
    s.ambientVolumes.reset();
    EXPECT_EQ(s.ambientLevels().level(AmbientSound::fire), narrowedSquare(0.7));
}

TEST(AmbientVolume, ReturnsTheStoredValueUnclampedOrSevenTenths) {
    AppSettings s;
    s.ambientVolumes =
        std::map<QString, double>{{QStringLiteral("waves"), 1.75}, {QStringLiteral("Stream"), 0.1}};
    EXPECT_EQ(s.ambientVolume(AmbientSound::waves), 1.75);
    EXPECT_EQ(s.ambientVolume(AmbientSound::stream), 0.7); // keys are case-sensitive raw values
    s.ambientVolumes.reset();
    EXPECT_EQ(s.ambientVolume(AmbientSound::waves), 0.7);
}

TEST(SelectedAmbientSounds, SkipsUnknownNamesAndKeepsOrderAndRepeats) {
    AppSettings s;
    s.ambientSounds =
        QList<QString>{QStringLiteral("rain"), QStringLiteral("thunder"),  QStringLiteral("rain"),
                       QStringLiteral("Rain"), QStringLiteral("crickets"), QString()};
    EXPECT_EQ(
        s.selectedAmbientSounds(),
        (QList<AmbientSound>{AmbientSound::rain, AmbientSound::rain, AmbientSound::crickets}));
    EXPECT_TRUE(allAmbientAbsent().selectedAmbientSounds().isEmpty());
}

TEST(SelectedAmbientSounds, EveryCatalogueRawValueIsRecognised) {
    AppSettings s;
    QList<QString> all;
    for (AmbientSound sound : kAllAmbientSounds)
        all << rawValue(sound);
    s.ambientSounds = all;
    EXPECT_EQ(s.selectedAmbientSounds().size(), 8);
    EXPECT_EQ(all, (QList<QString>{"rain", "waves", "stream", "wind", "fire", "birds", "crickets",
                                   "brownNoise"}));
}

} // namespace
} // namespace quill
