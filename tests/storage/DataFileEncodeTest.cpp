#include "StorageSamples.h"
#include "storage/DataFileCodec.h"

#include <QTimeZone>
#include <gtest/gtest.h>
#include <limits>

namespace quill {
namespace {

using test::eventAt;
using test::plainSession;
using test::utc;

AppSettings sampleSettings() {
    AppSettings s;
    s.selectedDurationMinutes = 45;
    s.reminderSound = QStringLiteral("随机");
    s.showNextReminder = true;
    s.musicService.reset();
    s.musicSource = MusicSource::playlist;
    s.playlistName = QStringLiteral("Lo-fi/夜读");
    s.appearanceMode = AppearanceMode::light;
    s.floatingTimerOnMinimize.reset();
    s.floatingSignalButtons = true;
    s.taskNames = QList<QString>{QStringLiteral("数学/代数"), QStringLiteral("Writing")};
    s.selectedTaskName = QStringLiteral("数学/代数");
    s.ambientSounds = QList<QString>{QStringLiteral("rain"), QStringLiteral("brownNoise")};
    s.ambientVolumes = std::map<QString, double>{{QStringLiteral("rain"), 0.7},
                                                 {QStringLiteral("brownNoise"), 0.25}};
    s.ambientMasterVolume = 0.7;
    s.ambientFollowsFocus = false;
    return s;
}

QList<StudySession> sampleSessions() {
    StudySession a = plainSession("0a1b2c3d-4e5f-4a6b-8c7d-9e0f1a2b3c4d", {});
    // Local time with a fraction: written in UTC, the fraction dropped.
    a.startedAt = QDateTime(QDate(2026, 3, 5), QTime(16, 30, 0, 750),
                            QTimeZone(QByteArrayLiteral("Asia/Shanghai")));
    a.endedAt = utc(2026, 3, 5, 9, 0, 0, 999);
    a.taskName = QStringLiteral("数学/代数");
    a.focusedSeconds = 1795;
    a.events = {eventAt("11111111-2222-3333-4444-555555555555", utc(2026, 3, 5, 8, 33), 180,
                        FocusEventKind::reminder),
                eventAt("aaaaaaaa-bbbb-cccc-dddd-eeeeeeeeeeee", utc(2026, 3, 5, 8, 41, 7), 667,
                        FocusEventKind::mindWander)};
    a.focusRating = 5;
    a.note = QStringLiteral("读完 \"第一章\"\n下次: a/b\\c");

    StudySession b =
        plainSession("F0E1D2C3-B4A5-9687-7869-5A4B3C2D1E0F", utc(2026, 3, 4, 23, 59, 59));
    b.endedAt = utc(2026, 3, 5, 0, 10);
    b.plannedMinutes = 25;
    b.focusedSeconds = 0;
    b.reminderMinimumMinutes = 1;
    b.reminderMaximumMinutes = 90;
    b.microBreakSeconds = 60;
    b.startEnergy = 1;
    b.endEnergy = 5;
    b.focusRating = 1;
    b.completed = false;
    return {a, b};
}

const char* const kSampleFile = R"({
  "sessions" : [
    {
      "completed" : true,
      "endEnergy" : 3,
      "endedAt" : "2026-03-05T09:00:00Z",
      "events" : [
        {
          "date" : "2026-03-05T08:33:00Z",
          "elapsedSeconds" : 180,
          "id" : "11111111-2222-3333-4444-555555555555",
          "kind" : "reminder"
        },
        {
          "date" : "2026-03-05T08:41:07Z",
          "elapsedSeconds" : 667,
          "id" : "AAAAAAAA-BBBB-CCCC-DDDD-EEEEEEEEEEEE",
          "kind" : "mindWander"
        }
      ],
      "focusRating" : 5,
      "focusedSeconds" : 1795,
      "id" : "0A1B2C3D-4E5F-4A6B-8C7D-9E0F1A2B3C4D",
      "microBreakSeconds" : 10,
      "note" : "读完 \"第一章\"\n下次: a\/b\\c",
      "plannedMinutes" : 30,
      "reminderMaximumMinutes" : 5,
      "reminderMinimumMinutes" : 3,
      "startEnergy" : 4,
      "startedAt" : "2026-03-05T08:30:00Z",
      "taskName" : "数学\/代数"
    },
    {
      "completed" : false,
      "endEnergy" : 5,
      "endedAt" : "2026-03-05T00:10:00Z",
      "events" : [],
      "focusRating" : 1,
      "focusedSeconds" : 0,
      "id" : "F0E1D2C3-B4A5-9687-7869-5A4B3C2D1E0F",
      "microBreakSeconds" : 60,
      "note" : "",
      "plannedMinutes" : 25,
      "reminderMaximumMinutes" : 90,
      "reminderMinimumMinutes" : 1,
      "startEnergy" : 1,
      "startedAt" : "2026-03-04T23:59:59Z"
    }
  ],
  "settings" : {
    "ambientFollowsFocus" : false,
    "ambientMasterVolume" : 0.7,
    "ambientSounds" : [
      "rain",
      "brownNoise"
    ],
    "ambientVolumes" : {
      "brownNoise" : 0.25,
      "rain" : 0.7
    },
    "appearanceMode" : "light",
    "autoPlayMusic" : false,
    "completionSound" : "Hero",
    "floatingSignalButtons" : true,
    "microBreakSeconds" : 10,
    "musicSource" : "指定播放列表",
    "playlistName" : "Lo-fi\/夜读",
    "reminderMaximumMinutes" : 5,
    "reminderMinimumMinutes" : 3,
    "reminderSound" : "随机",
    "selectedDurationMinutes" : 45,
    "selectedTaskName" : "数学\/代数",
    "showNextReminder" : true,
    "taskNames" : [
      "数学\/代数",
      "Writing"
    ]
  }
})";

TEST(DataFileEncoding, SmallFileHasExactlyTheseBytes) {
    const QByteArray bytes = DataFileCodec::encode(sampleSettings(), sampleSessions());
    EXPECT_EQ(bytes.toStdString(), std::string(kSampleFile));
}

TEST(DataFileEncoding, EmptyHistoryWithDefaultSettings) {
    const QByteArray bytes = DataFileCodec::encode(AppSettings{}, {});
    EXPECT_TRUE(bytes.startsWith("{\n  \"sessions\" : [],\n  \"settings\" : {\n"));
    EXPECT_TRUE(bytes.contains("\n    \"ambientMasterVolume\" : 0.7,\n"));
    EXPECT_TRUE(bytes.contains("\n    \"ambientVolumes\" : {},\n"));
    EXPECT_TRUE(bytes.contains("\n    \"musicService\" : \"Apple Music\",\n"));
    EXPECT_TRUE(bytes.contains("\n    \"taskNames\" : []\n  }\n}"));
    EXPECT_FALSE(bytes.contains("selectedTaskName"));
}

AppSettings everyOptionalPresent() {
    AppSettings s = sampleSettings();
    s.musicService = MusicService::netEase;
    s.floatingTimerOnMinimize = false;
    s.pauseNotificationsWhileFocusing = true;
    s.pauseRoundOnScreenLock = false;
    s.ambientVolumes = std::map<QString, double>{
        {QStringLiteral("wind"), 0.1},   {QStringLiteral("birds"), 0.2},
        {QStringLiteral("Rain"), 0.3},   {QStringLiteral("rain"), 0.4},
        {QStringLiteral("雨"), 0.5},     {QStringLiteral("brownNoise"), 0.6},
        {QStringLiteral("brown"), 0.65}, {QStringLiteral("crickets"), 1.0}};
    return s;
}

// Each member on a line of its own, and every object's keys in ascending order.
TEST(DataFileEncoding, KeysAscendAtEveryLevelOneMemberPerLine) {
    QList<StudySession> sessions = sampleSessions();
    sessions << sessions.first();
    const QByteArray bytes = DataFileCodec::encode(everyOptionalPresent(), sessions);
    EXPECT_FALSE(bytes.endsWith('\n'));
    QStringList lastKey{QString()}; // one per open object or array
    int keys = 0;
    for (const QByteArray& line : bytes.split('\n')) {
        const QByteArray text = line.trimmed();
        EXPECT_LE(line.count("\" : "), 1) << line.toStdString();
        if (text.startsWith('}') || text.startsWith(']'))
            lastKey.removeLast();
        if (const qsizetype colon = text.indexOf("\" : "); text.startsWith('"') && colon > 0) {
            const QString key = QString::fromUtf8(text.mid(1, colon - 1));
            EXPECT_LT(lastKey.last(), key) << "in " << line.toStdString();
            lastKey.last() = key;
            ++keys;
        }
        if (text.endsWith('{') || text.endsWith('['))
            lastKey << QString();
    }
    EXPECT_EQ(lastKey, QStringList{QString()});
    EXPECT_GT(keys, 70);
}

TEST(DataFileEncoding, EveryOptionalKeyIsWrittenWhenPresentAndOmittedWhenAbsent) {
    const QByteArray full = DataFileCodec::encode(everyOptionalPresent(), sampleSessions());
    const QByteArray stripped = DataFileCodec::encode(test::withoutOptionals(AppSettings{}), {});
    for (const char* key : test::kOptionalSettingKeys) {
        const QByteArray quoted = QByteArray("\"") + key + "\" : ";
        EXPECT_TRUE(full.contains(quoted)) << key;
        EXPECT_FALSE(stripped.contains(quoted)) << key;
    }
    EXPECT_TRUE(full.contains("\"musicService\" : \"网易云音乐\""));
}

// ---------------------------------------------------------------- values

TEST(DataFileEncoding, DoublesUseTheShortestRoundTripForm) {
    AppSettings s;
    s.ambientVolumes = std::map<QString, double>{{QStringLiteral("a"), 0.1 + 0.2},
                                                 {QStringLiteral("b"), 1.0},
                                                 {QStringLiteral("c"), 0.0},
                                                 {QStringLiteral("d"), 1e-7},
                                                 {QStringLiteral("e"), 0.49}};
    const QByteArray bytes = DataFileCodec::encode(s, {});
    EXPECT_TRUE(bytes.contains("\"a\" : 0.30000000000000004,"));
    EXPECT_TRUE(bytes.contains("\"b\" : 1,"));
    EXPECT_TRUE(bytes.contains("\"c\" : 0,"));
    EXPECT_TRUE(bytes.contains("\"d\" : 1e-07,"));
    EXPECT_TRUE(bytes.contains("\"e\" : 0.49\n"));
}

TEST(DataFileEncoding, NumbersJsonCannotHoldAreLeftOutSoTheFileStaysReadable) {
    AppSettings s;
    s.ambientMasterVolume = std::numeric_limits<double>::quiet_NaN();
    s.ambientVolumes =
        std::map<QString, double>{{QStringLiteral("rain"), std::numeric_limits<double>::infinity()},
                                  {QStringLiteral("wind"), 0.5}};
    const auto decoded = DataFileCodec::decode(DataFileCodec::encode(s, {}));
    ASSERT_TRUE(decoded.has_value());
    EXPECT_EQ(decoded->settings.ambientMasterVolume, std::nullopt);
    EXPECT_EQ(decoded->settings.ambientVolumes,
              (std::map<QString, double>{{QStringLiteral("wind"), 0.5}}));
}

TEST(DataFileDates, AreUtcWholeSecondsWithZAndFourDigitYears) {
    const QTimeZone shanghai(QByteArrayLiteral("Asia/Shanghai"));
    const std::pair<QDateTime, const char*> cases[] = {
        {utc(2026, 3, 5, 8, 30, 59, 999), "2026-03-05T08:30:59Z"},
        {QDateTime(QDate(2026, 1, 1), QTime(7, 5, 9), shanghai), "2025-12-31T23:05:09Z"},
        {QDateTime(QDate(2026, 1, 1), QTime(0, 0), Qt::LocalTime), "2025-12-31T16:00:00Z"},
        {utc(1969, 12, 31, 23, 59, 59, 500), "1969-12-31T23:59:59Z"},
        {utc(1, 1, 1, 0, 0), "0001-01-01T00:00:00Z"},
        {utc(9999, 12, 31, 23, 59, 59), "9999-12-31T23:59:59Z"},
        {utc(2000, 2, 29, 12, 0), "2000-02-29T12:00:00Z"}};
    for (const auto& [date, text] : cases)
        EXPECT_EQ(DataFileCodec::formatDate(date), text);
}

TEST(DataFileDates, AnUnsetDateStillWritesAReadableFile) {
    // One bad date must not make the whole history unreadable at the next start.
    StudySession s = plainSession("00000000-0000-0000-0000-000000000001", QDateTime());
    s.events = {
        eventAt("00000000-0000-0000-0000-000000000002", QDateTime(), 0, FocusEventKind::pause)};
    const auto decoded = DataFileCodec::decode(DataFileCodec::encode(AppSettings{}, {s}));
    ASSERT_TRUE(decoded.has_value());
    EXPECT_EQ(decoded->sessions.first().startedAt, QDateTime::fromSecsSinceEpoch(0, Qt::UTC));
    EXPECT_EQ(decoded->sessions.first().events.first().date,
              QDateTime::fromSecsSinceEpoch(0, Qt::UTC));
}

TEST(DataFileStrings, NonAsciiIsWrittenAsUtf8AndControlsAreEscaped) {
    AppSettings s;
    s.playlistName = QStringLiteral("夜 😀 é\t\u0001\u001f\r\b\f\u007f\u2028");
    const QByteArray bytes = DataFileCodec::encode(s, {});
    EXPECT_TRUE(bytes.contains(
        QStringLiteral("\"playlistName\" : \"夜 😀 é\\t\\u0001\\u001f\\r\\b\\f\u007f\u2028\",")
            .toUtf8()))
        << bytes.toStdString();
}

} // namespace
} // namespace quill
