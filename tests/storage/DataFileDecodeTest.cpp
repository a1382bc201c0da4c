#include "StorageSamples.h"
#include "storage/DataFileCodec.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QVariant>
#include <gtest/gtest.h>
#include <limits>

namespace quill {
namespace {

using test::eventAt;
using test::plainSession;
using test::utc;

AppSettings fullSettings() {
    AppSettings s;
    s.selectedDurationMinutes = 40;
    s.musicService = MusicService::netEase;
    s.musicSource = MusicSource::playlist;
    s.playlistName = QStringLiteral("晚/自习");
    s.appearanceMode = AppearanceMode::light;
    s.floatingTimerOnMinimize = false;
    s.floatingSignalButtons = true;
    s.taskNames = QList<QString>{QStringLiteral("写作"), QStringLiteral("Math")};
    s.selectedTaskName = QStringLiteral("写作");
    s.ambientSounds = QList<QString>{QStringLiteral("rain"), QStringLiteral("unknown")};
    s.ambientVolumes = std::map<QString, double>{{QStringLiteral("rain"), 0.35}};
    s.ambientMasterVolume = 0.9;
    s.ambientFollowsFocus = false;
    s.pauseNotificationsWhileFocusing = true;
    s.pauseRoundOnScreenLock = false;
    return s;
}

QList<StudySession> fullSessions() {
    StudySession a = plainSession("0A1B2C3D-4E5F-4A6B-8C7D-9E0F1A2B3C4D", utc(2026, 3, 5, 8, 30));
    a.taskName = QStringLiteral("写作");
    a.events = {eventAt("11111111-2222-3333-4444-555555555555", utc(2026, 3, 5, 8, 33), 180,
                        FocusEventKind::reminder),
                eventAt("22222222-2222-3333-4444-555555555555", utc(2026, 3, 5, 8, 40), 540,
                        FocusEventKind::mindWander),
                eventAt("33333333-2222-3333-4444-555555555555", utc(2026, 3, 5, 8, 41), 600,
                        FocusEventKind::fatigue),
                eventAt("44444444-2222-3333-4444-555555555555", utc(2026, 3, 5, 8, 42), 660,
                        FocusEventKind::pause),
                eventAt("55555555-2222-3333-4444-555555555555", utc(2026, 3, 5, 8, 50), 660,
                        FocusEventKind::resume)};
    a.note = QStringLiteral("a/b");
    StudySession b = plainSession("F0E1D2C3-B4A5-9687-7869-5A4B3C2D1E0F", utc(2026, 3, 4, 21, 0));
    b.completed = false;
    return {a, b};
}

QByteArray fullFile() {
    return DataFileCodec::encode(fullSettings(), fullSessions());
}

TEST(DataFileDecoding, ReadsCompactAndOtherIndentationWithPlainSlashes) {
    const QJsonDocument doc = QJsonDocument::fromJson(fullFile());
    ASSERT_TRUE(doc.isObject());
    for (auto format : {QJsonDocument::Compact, QJsonDocument::Indented}) {
        const QByteArray other = doc.toJson(format);
        ASSERT_TRUE(other.contains("晚/自习"));
        const auto decoded = DataFileCodec::decode(other);
        ASSERT_TRUE(decoded.has_value()) << other.toStdString();
        EXPECT_EQ(decoded->settings, fullSettings());
        EXPECT_EQ(decoded->sessions, fullSessions());
    }
    QByteArray tabsAndCrLf = doc.toJson(QJsonDocument::Indented);
    tabsAndCrLf.replace("    ", "\t").replace("\n", "\r\n").replace("\": ", "\"   :\t");
    EXPECT_TRUE(DataFileCodec::decode(tabsAndCrLf).has_value());
}

TEST(DataFileDecoding, AcceptsAnyKeyOrderNullOptionalsAndUnknownKeys) {
    const QByteArray text = R"({"version":3,"settings":{"unknownFlag":[1,{"a":null}],
        "playlistName":"a/b","showNextReminder":false,"autoPlayMusic":true,"musicSource":"整个资料库",
        "reminderSound":"Ping","completionSound":"Glass","microBreakSeconds":8,
        "reminderMaximumMinutes":4,"reminderMinimumMinutes":2,"selectedDurationMinutes":25,
        "musicService":null,"appearanceMode":null,"floatingTimerOnMinimize":null,
        "floatingSignalButtons":null,"taskNames":null,"selectedTaskName":null,"ambientSounds":null,
        "ambientVolumes":null,"ambientMasterVolume":null,"ambientFollowsFocus":null},
      "sessions":[{"note":"n\/a","mood":"good","taskName":null,"completed":false,"focusRating":2,
        "endEnergy":1,"startEnergy":5,"events":[{"kind":"fatigue","extra":true,
        "elapsedSeconds":60,"date":"2026-03-05T08:31:00Z","id":"aaaaaaaa-bbbb-cccc-dddd-eeeeeeeeeeee"}],
        "microBreakSeconds":5,"reminderMaximumMinutes":9,"reminderMinimumMinutes":1,
        "focusedSeconds":61,"plannedMinutes":20,"endedAt":"2026-03-05T08:40:00Z",
        "startedAt":"2026-03-05T08:30:00Z","id":"0a1b2c3d-4e5f-4a6b-8c7d-9e0f1a2b3c4d"}]})";
    const auto decoded = DataFileCodec::decode(text);
    ASSERT_TRUE(decoded.has_value());
    AppSettings expected = test::withoutOptionals(AppSettings{});
    expected.playlistName = QStringLiteral("a/b");
    expected.selectedDurationMinutes = 25;
    expected.reminderMinimumMinutes = 2;
    expected.reminderMaximumMinutes = 4;
    expected.microBreakSeconds = 8;
    expected.reminderSound = QStringLiteral("Ping");
    expected.completionSound = QStringLiteral("Glass");
    expected.autoPlayMusic = true;
    EXPECT_EQ(decoded->settings, expected);
    ASSERT_EQ(decoded->sessions.size(), 1);
    const StudySession& session = decoded->sessions.first();
    EXPECT_EQ(session.id,
              QUuid::fromString(QStringLiteral("0A1B2C3D-4E5F-4A6B-8C7D-9E0F1A2B3C4D")));
    EXPECT_EQ(session.taskName, std::nullopt);
    EXPECT_EQ(session.displayTaskName(), QStringLiteral("未分类"));
    EXPECT_EQ(session.note, QStringLiteral("n/a"));
    EXPECT_EQ(session.startedAt, utc(2026, 3, 5, 8, 30));
    ASSERT_EQ(session.events.size(), 1);
    EXPECT_EQ(session.events.first().kind, FocusEventKind::fatigue);
    EXPECT_EQ(session.events.first().elapsedSeconds, 60);
}

TEST(DataFileDecoding, MissingOptionalKeysReadAsAbsentAndTakeTheirDocumentedValues) {
    QJsonObject root = QJsonDocument::fromJson(fullFile()).object();
    QJsonObject settings = root.value(QStringLiteral("settings")).toObject();
    for (const char* key : test::kOptionalSettingKeys)
        settings.remove(QLatin1String(key));
    root.insert(QStringLiteral("settings"), settings);
    const auto decoded = DataFileCodec::decode(QJsonDocument(root).toJson());
    ASSERT_TRUE(decoded.has_value());
    EXPECT_EQ(decoded->settings, test::withoutOptionals(fullSettings()));
    const AppSettings& s = decoded->settings;
    EXPECT_EQ(s.effectiveMusicService(), MusicService::appleMusic);
    EXPECT_EQ(s.effectiveAppearance(), AppearanceMode::dark);
    EXPECT_TRUE(s.effectiveFloatingTimerOnMinimize());
    EXPECT_FALSE(s.effectiveFloatingSignalButtons());
    EXPECT_TRUE(s.effectiveTaskNames().isEmpty());
    EXPECT_TRUE(s.selectedAmbientSounds().isEmpty());
    EXPECT_EQ(s.ambientVolume(AmbientSound::rain), 0.7);
    EXPECT_EQ(s.effectiveMasterVolume(), 0.7);
    EXPECT_TRUE(s.effectiveAmbientFollowsFocus());
    EXPECT_FALSE(s.effectivePauseNotifications());
    EXPECT_TRUE(s.effectivePauseOnScreenLock());
    EXPECT_EQ(s.ambientLevels().master, 0.49f);
    EXPECT_EQ(decoded->sessions, fullSessions());
}

TEST(DataFileDecoding, DatesWithAnOffsetAndUuidsInEitherCaseMeanTheSame) {
    EXPECT_EQ(DataFileCodec::parseDate(QStringLiteral("2026-03-05T16:30:00+08:00")),
              utc(2026, 3, 5, 8, 30));
    EXPECT_EQ(DataFileCodec::parseDate(QStringLiteral("2026-03-05T03:00:00-05:30")),
              utc(2026, 3, 5, 8, 30));
    EXPECT_EQ(DataFileCodec::parseDate(QStringLiteral("2024-02-29T23:59:59Z")),
              utc(2024, 2, 29, 23, 59, 59));
    EXPECT_EQ(DataFileCodec::parseUuid(QStringLiteral("aaaaaaaa-bbbb-cccc-dddd-eeeeeeeeeeee")),
              DataFileCodec::parseUuid(QStringLiteral("AAAAAAAA-BBBB-CCCC-DDDD-EEEEEEEEEEEE")));
}

// ---------------------------------------------------------------- integers

QByteArray withPlannedMinutes(const QByteArray& literal) {
    QByteArray text = fullFile();
    const QByteArray from = "\"plannedMinutes\" : 30,";
    const qsizetype at = text.indexOf(from);
    EXPECT_GE(at, 0);
    return text.replace(at, from.size(), "\"plannedMinutes\" : " + literal + ",");
}

// Written as plain integers and read back exactly, however large: above 2^53 a double would
// lose the last digit.
TEST(DataFileIntegers, NegativeAndHugeValuesAreWrittenAndReadExactly) {
    const std::pair<const char*, qint64> cases[] = {
        {"-5", -5},
        {"0", 0},
        {"9007199254740993", 9007199254740993LL},
        {"9223372036854775807", std::numeric_limits<qint64>::max()},
        {"-9223372036854775808", std::numeric_limits<qint64>::min()}};
    for (const auto& [literal, value] : cases) {
        QList<StudySession> sessions = fullSessions();
        sessions[0].plannedMinutes = value;
        EXPECT_EQ(DataFileCodec::encode(fullSettings(), sessions), withPlannedMinutes(literal))
            << literal;
        const auto decoded = DataFileCodec::decode(withPlannedMinutes(literal));
        ASSERT_TRUE(decoded.has_value()) << literal;
        EXPECT_EQ(decoded->sessions.first().plannedMinutes, value) << literal;
    }
}

TEST(DataFileIntegers, FractionsAndOverflowsRejectTheFile) {
    for (const char* literal :
         {"1.5", "0.25", "-0.5", "1e-3", "9223372036854775808", "-9223372036854775809",
          "-9223372036854775808.0", "9007199254740993.0", "18446744073709551616", "1e30", "-1e30"})
        EXPECT_FALSE(DataFileCodec::decode(withPlannedMinutes(literal)).has_value()) << literal;
}

// ---------------------------------------------------------------- malformed files

using PathStep = QVariant; // a key (QString) or an index (int)

QJsonValue changedAt(const QJsonValue& node, QList<PathStep> path,
                     const std::optional<QJsonValue>& replacement) {
    const PathStep step = path.takeFirst();
    if (node.isArray()) {
        QJsonArray array = node.toArray();
        const int index = step.toInt();
        if (path.isEmpty())
            replacement ? void(array[index] = *replacement) : array.removeAt(index);
        else
            array[index] = changedAt(array[index], path, replacement);
        return array;
    }
    QJsonObject object = node.toObject();
    const QString key = step.toString();
    if (path.isEmpty())
        replacement ? void(object.insert(key, *replacement)) : object.remove(key);
    else
        object.insert(key, changedAt(object.value(key), path, replacement));
    return object;
}

struct Malformed {
    std::string name;
    QList<PathStep> path;
    std::optional<QJsonValue> replacement; ///< none: the key is removed
};

class MalformedFile : public ::testing::TestWithParam<Malformed> {};

TEST_P(MalformedFile, FallsBackAsAWhole) {
    const QJsonValue root = QJsonDocument::fromJson(fullFile()).object();
    const QJsonValue broken = changedAt(root, GetParam().path, GetParam().replacement);
    ASSERT_NE(broken, root) << "the change must reach the file";
    for (auto format : {QJsonDocument::Compact, QJsonDocument::Indented})
        EXPECT_FALSE(DataFileCodec::decode(QJsonDocument(broken.toObject()).toJson(format)));
}

std::vector<Malformed> missingRequiredKeys() {
    std::vector<Malformed> cases;
    for (const char* key : {"settings", "sessions"})
        cases.push_back({std::string("missingRoot_") + key, {QString::fromLatin1(key)}, {}});
    for (const char* key :
         {"selectedDurationMinutes", "reminderMinimumMinutes", "reminderMaximumMinutes",
          "microBreakSeconds", "reminderSound", "completionSound", "showNextReminder",
          "autoPlayMusic", "musicSource", "playlistName"}) {
        cases.push_back({std::string("missingSettings_") + key,
                         {QStringLiteral("settings"), QString::fromLatin1(key)},
                         {}});
        cases.push_back({std::string("nullSettings_") + key,
                         {QStringLiteral("settings"), QString::fromLatin1(key)},
                         QJsonValue(QJsonValue::Null)});
    }
    for (const char* key :
         {"id", "startedAt", "endedAt", "plannedMinutes", "focusedSeconds",
          "reminderMinimumMinutes", "reminderMaximumMinutes", "microBreakSeconds", "events",
          "startEnergy", "endEnergy", "focusRating", "completed", "note"}) {
        // The second session: a bad record anywhere in the list rejects the file.
        cases.push_back({std::string("missingSession_") + key,
                         {QStringLiteral("sessions"), 1, QString::fromLatin1(key)},
                         {}});
        cases.push_back({std::string("nullSession_") + key,
                         {QStringLiteral("sessions"), 0, QString::fromLatin1(key)},
                         QJsonValue(QJsonValue::Null)});
    }
    for (const char* key : {"id", "date", "elapsedSeconds", "kind"})
        cases.push_back(
            {std::string("missingEvent_") + key,
             {QStringLiteral("sessions"), 0, QStringLiteral("events"), 4, QString::fromLatin1(key)},
             {}});
    return cases;
}

INSTANTIATE_TEST_SUITE_P(MissingKeys, MalformedFile, ::testing::ValuesIn(missingRequiredKeys()),
                         [](const auto& info) { return info.param.name; });

Malformed setting(std::string name, const char* key, QJsonValue v) {
    return {std::move(name), {QStringLiteral("settings"), QString::fromLatin1(key)}, v};
}
Malformed session(std::string name, const char* key, QJsonValue v) {
    return {std::move(name), {QStringLiteral("sessions"), 0, QString::fromLatin1(key)}, v};
}
Malformed event(std::string name, const char* key, QJsonValue v) {
    return {std::move(name),
            {QStringLiteral("sessions"), 0, QStringLiteral("events"), 1, QString::fromLatin1(key)},
            v};
}

INSTANTIATE_TEST_SUITE_P(
    WrongTypes, MalformedFile,
    ::testing::Values(
        setting("durationAsString", "selectedDurationMinutes", QStringLiteral("50")),
        setting("showNextReminderAsNumber", "showNextReminder", 1),
        setting("reminderSoundAsNumber", "reminderSound", 5),
        setting("taskNamesAsString", "taskNames", QStringLiteral("写作")),
        setting("taskNamesWithNumber", "taskNames", QJsonArray{QStringLiteral("写作"), 1}),
        setting("taskNamesWithNull", "taskNames", QJsonArray{QJsonValue::Null}),
        setting("selectedTaskNameAsNumber", "selectedTaskName", 3),
        setting("ambientVolumesAsArray", "ambientVolumes", QJsonArray{0.5}),
        setting("ambientVolumeAsString", "ambientVolumes",
                QJsonObject{{QStringLiteral("rain"), QStringLiteral("loud")}}),
        setting("ambientVolumeAsNull", "ambientVolumes",
                QJsonObject{{QStringLiteral("rain"), QJsonValue::Null}}),
        setting("masterVolumeAsString", "ambientMasterVolume", QStringLiteral("0.7")),
        setting("followsFocusAsString", "ambientFollowsFocus", QStringLiteral("true")),
        Malformed{"settingsAsArray", {QStringLiteral("settings")}, QJsonArray{}},
        Malformed{"sessionsAsObject", {QStringLiteral("sessions")}, QJsonObject{}},
        Malformed{"sessionAsArray", {QStringLiteral("sessions"), 0}, QJsonArray{}},
        Malformed{"sessionAsNull", {QStringLiteral("sessions"), 1}, QJsonValue::Null},
        session("eventsAsObject", "events", QJsonObject{}),
        Malformed{"eventAsString",
                  {QStringLiteral("sessions"), 0, QStringLiteral("events"), 0},
                  QStringLiteral("reminder")},
        session("idAsNumber", "id", 5), session("startedAtAsNumber", "startedAt", 1741163400),
        session("plannedMinutesAsFraction", "plannedMinutes", 1.5)),
    [](const auto& info) { return info.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Enumerations, MalformedFile,
    ::testing::Values(event("kindWithCapital", "kind", QStringLiteral("Reminder")),
                      setting("musicServiceUnknown", "musicService", QStringLiteral("Spotify")),
                      setting("musicServiceCaseName", "musicService", QStringLiteral("appleMusic")),
                      setting("musicSourceCaseName", "musicSource", QStringLiteral("library")),
                      setting("appearanceCapital", "appearanceMode", QStringLiteral("Dark"))),
    [](const auto& info) { return info.param.name; });

INSTANTIATE_TEST_SUITE_P(
    DatesAndUuids, MalformedFile,
    ::testing::Values(
        session("fractionalSeconds", "startedAt", QStringLiteral("2026-03-05T08:30:00.000Z")),
        session("halfSecond", "endedAt", QStringLiteral("2026-03-05T08:30:00.5Z")),
        event("fractionalEventDate", "date", QStringLiteral("2026-03-05T08:33:00.123Z")),
        session("spaceSeparator", "startedAt", QStringLiteral("2026-03-05 08:30:00Z")),
        session("noZone", "startedAt", QStringLiteral("2026-03-05T08:30:00")),
        session("dateOnly", "startedAt", QStringLiteral("2026-03-05")),
        session("noSeconds", "startedAt", QStringLiteral("2026-03-05T08:30Z")),
        session("february30", "startedAt", QStringLiteral("2026-02-30T08:30:00Z")),
        session("hour24", "startedAt", QStringLiteral("2026-03-05T24:00:00Z")),
        session("compactOffset", "startedAt", QStringLiteral("2026-03-05T16:30:00+0800")),
        session("emptyDate", "endedAt", QString()),
        session("fullWidthDigits", "startedAt", QStringLiteral("２０26-03-05T08:30:00Z")),
        // Offsets that carry the moment out of years 1-9999 in UTC, where it is stored.
        session("beforeYearOneInUtc", "startedAt", QStringLiteral("0001-01-01T00:30:00+01:00")),
        session("afterYear9999InUtc", "endedAt", QStringLiteral("9999-12-31T23:30:00-01:00")),
        session("yearZero", "startedAt", QStringLiteral("0000-12-31T23:59:59Z")),
        session("uuidWord", "id", QStringLiteral("not-a-uuid")),
        session("uuidBraces", "id", QStringLiteral("{0A1B2C3D-4E5F-4A6B-8C7D-9E0F1A2B3C4D}")),
        session("uuidNoDashes", "id", QStringLiteral("0A1B2C3D4E5F4A6B8C7D9E0F1A2B3C4D")),
        session("uuidShort", "id", QStringLiteral("0A1B2C3D-4E5F-4A6B-8C7D-9E0F1A2B3C4")),
        session("uuidNonHex", "id", QStringLiteral("0A1B2C3D-4E5F-4A6B-8C7D-9E0F1A2B3C4G")),
        session("uuidDashesMoved", "id", QStringLiteral("0A1B2C3D4-E5F-4A6B-8C7D-9E0F1A2B3C4D")),
        event("eventUuidEmpty", "id", QString())),
    [](const auto& info) { return info.param.name; });

TEST(DataFileDecoding, TextThatIsNotADataFileIsRejected) {
    const QByteArray valid = fullFile();
    QList<QByteArray> texts = {"",
                               "   \n",
                               "not json",
                               "[]",
                               "[" + valid + "]",
                               "null",
                               "42",
                               "\"focus-data\"",
                               "{}",
                               valid + " trailing",
                               valid + "}",
                               QByteArray(64, '\0'),
                               "\xff\xfe{"};
    // A torn write: every prefix cut inside the document.
    for (qsizetype cut : {qsizetype(1), valid.size() / 7, valid.size() / 3, valid.size() / 2,
                          valid.size() - 2, valid.size() - 1})
        texts << valid.left(cut);
    for (const QByteArray& text : texts)
        EXPECT_FALSE(DataFileCodec::decode(text)) << text.toStdString();
}

} // namespace
} // namespace quill
