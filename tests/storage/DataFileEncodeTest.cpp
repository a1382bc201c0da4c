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

TEST(DataFileEncoding, SameDataGivesByteIdenticalFiles) {
    const QByteArray first = DataFileCodec::encode(sampleSettings(), sampleSessions());
    const QByteArray second = DataFileCodec::encode(sampleSettings(), sampleSessions());
    EXPECT_EQ(first, second);
    // Equal maps built in another insertion order write the same bytes too.
    AppSettings reordered = sampleSettings();
    reordered.ambientVolumes = std::map<QString, double>{{QStringLiteral("brownNoise"), 0.25},
                                                         {QStringLiteral("rain"), 0.7}};
    EXPECT_EQ(DataFileCodec::encode(reordered, sampleSessions()), first);
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

// ---------------------------------------------------------------- key order, scanned

// Walks JSON text and reports every object whose keys are not strictly ascending.
class KeyOrderScanner {
public:
    explicit KeyOrderScanner(QByteArray text) : m_text(std::move(text)) {}

    QStringList problems() {
        value();
        return m_problems;
    }
    int objectsSeen() const { return m_objects; }

private:
    void skipSpace() {
        while (m_pos < m_text.size() && QByteArrayView(" \n\r\t").contains(m_text[m_pos]))
            ++m_pos;
    }
    QString string() {
        const qsizetype start = ++m_pos; // opening quote
        while (m_text[m_pos] != '"')
            m_pos += m_text[m_pos] == '\\' ? 2 : 1;
        return QString::fromUtf8(m_text.mid(start, m_pos++ - start));
    }
    void value() {
        skipSpace();
        const char c = m_text[m_pos];
        if (c == '{') {
            ++m_objects;
            ++m_pos;
            QString previous;
            bool first = true;
            for (skipSpace(); m_text[m_pos] != '}'; skipSpace()) {
                if (m_text[m_pos] == ',') {
                    ++m_pos;
                    skipSpace();
                }
                const QString key = string();
                if (!first && !(previous < key))
                    m_problems << previous + QStringLiteral(" before ") + key;
                previous = key;
                first = false;
                skipSpace();
                ++m_pos; // colon
                value();
            }
            ++m_pos;
        } else if (c == '[') {
            ++m_pos;
            for (skipSpace(); m_text[m_pos] != ']'; skipSpace()) {
                if (m_text[m_pos] == ',')
                    ++m_pos;
                value();
            }
            ++m_pos;
        } else if (c == '"') {
            string();
        } else {
            while (m_pos < m_text.size() && !QByteArrayView(",]}\n ").contains(m_text[m_pos]))
                ++m_pos;
        }
    }

    const QByteArray m_text;
    qsizetype m_pos = 0;
    QStringList m_problems;
    int m_objects = 0;
};

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

TEST(DataFileEncoding, KeysAscendAtEveryLevel) {
    QList<StudySession> sessions = sampleSessions();
    for (int i = 0; i < 5; ++i)
        sessions << sessions.first();
    KeyOrderScanner scanner(DataFileCodec::encode(everyOptionalPresent(), sessions));
    EXPECT_EQ(scanner.problems(), QStringList{});
    // root, seven sessions, their events, settings and the volume map
    EXPECT_EQ(scanner.objectsSeen(), 1 + 7 + 6 * 2 + 1 + 1);
}

TEST(DataFileEncoding, OneMemberPerLine) {
    const QByteArray bytes = DataFileCodec::encode(everyOptionalPresent(), sampleSessions());
    for (const QByteArray& line : bytes.split('\n'))
        EXPECT_LE(line.count("\" : "), 1) << line.toStdString();
    EXPECT_FALSE(bytes.endsWith('\n'));
}

TEST(DataFileEncoding, EveryOptionalKeyIsWrittenWhenPresentAndOmittedWhenAbsent) {
    const QByteArray full = DataFileCodec::encode(everyOptionalPresent(), sampleSessions());
    AppSettings bare = everyOptionalPresent();
    bare.musicService.reset();
    bare.appearanceMode.reset();
    bare.floatingTimerOnMinimize.reset();
    bare.floatingSignalButtons.reset();
    bare.taskNames.reset();
    bare.selectedTaskName.reset();
    bare.ambientSounds.reset();
    bare.ambientVolumes.reset();
    bare.ambientMasterVolume.reset();
    bare.ambientFollowsFocus.reset();
    bare.pauseNotificationsWhileFocusing.reset();
    bare.pauseRoundOnScreenLock.reset();
    const QByteArray stripped = DataFileCodec::encode(bare, {});
    for (const char* key :
         {"musicService", "appearanceMode", "floatingTimerOnMinimize", "floatingSignalButtons",
          "taskNames", "selectedTaskName", "ambientSounds", "ambientVolumes", "ambientMasterVolume",
          "ambientFollowsFocus", "pauseNotificationsWhileFocusing", "pauseRoundOnScreenLock"}) {
        const QByteArray quoted = QByteArray("\"") + key + "\" : ";
        EXPECT_TRUE(full.contains(quoted)) << key;
        EXPECT_FALSE(stripped.contains(quoted)) << key;
    }
    EXPECT_TRUE(full.contains("\"musicService\" : \"网易云音乐\""));
}

// ---------------------------------------------------------------- values

TEST(DataFileEncoding, IntegersStayIntegersAtTheirExtremes) {
    StudySession s = plainSession("00000000-0000-0000-0000-000000000001", utc(2026, 1, 1, 0, 0));
    s.plannedMinutes = std::numeric_limits<qint64>::max();
    s.focusedSeconds = std::numeric_limits<qint64>::min();
    s.startEnergy = -3;
    s.endEnergy = 9007199254740993; // above 2^53: a double would lose the last digit
    const QByteArray bytes = DataFileCodec::encode(AppSettings{}, {s});
    EXPECT_TRUE(bytes.contains("\"plannedMinutes\" : 9223372036854775807,"));
    EXPECT_TRUE(bytes.contains("\"focusedSeconds\" : -9223372036854775808,"));
    EXPECT_TRUE(bytes.contains("\"startEnergy\" : -3,"));
    EXPECT_TRUE(bytes.contains("\"endEnergy\" : 9007199254740993,"));
}

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

TEST(DataFileDates, AreUtcWholeSecondsWithZ) {
    EXPECT_EQ(DataFileCodec::formatDate(utc(2026, 3, 5, 8, 30)), "2026-03-05T08:30:00Z");
    EXPECT_EQ(DataFileCodec::formatDate(utc(2026, 3, 5, 8, 30, 59, 999)), "2026-03-05T08:30:59Z");
    const QTimeZone shanghai(QByteArrayLiteral("Asia/Shanghai"));
    EXPECT_EQ(DataFileCodec::formatDate(QDateTime(QDate(2026, 1, 1), QTime(7, 5, 9), shanghai)),
              "2025-12-31T23:05:09Z");
    EXPECT_EQ(DataFileCodec::formatDate(QDateTime(QDate(2026, 1, 1), QTime(0, 0), Qt::LocalTime)),
              "2025-12-31T16:00:00Z");
    EXPECT_EQ(DataFileCodec::formatDate(utc(1969, 12, 31, 23, 59, 59, 500)),
              "1969-12-31T23:59:59Z");
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

TEST(DataFileDates, FarDatesKeepFourDigitYears) {
    EXPECT_EQ(DataFileCodec::formatDate(utc(1, 1, 1, 0, 0)), "0001-01-01T00:00:00Z");
    EXPECT_EQ(DataFileCodec::formatDate(utc(9999, 12, 31, 23, 59, 59)), "9999-12-31T23:59:59Z");
    EXPECT_EQ(DataFileCodec::formatDate(utc(2000, 2, 29, 12, 0)), "2000-02-29T12:00:00Z");
    EXPECT_EQ(DataFileCodec::formatDate(utc(2100, 3, 1, 0, 0)), "2100-03-01T00:00:00Z");
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
