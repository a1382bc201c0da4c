// Strict reading of the data file: one bad value anywhere rejects the whole file.
#include "storage/DataFileCodec.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <limits>

namespace quill::DataFileCodec {

namespace {
struct Rejected {};

[[noreturn]] void reject() {
    throw Rejected{};
}

QJsonValue required(const QJsonObject& o, QLatin1StringView key) {
    const QJsonValue v = o.value(key);
    if (v.isUndefined() || v.isNull())
        reject();
    return v;
}

// Missing and null both read as absent.
std::optional<QJsonValue> optional(const QJsonObject& o, QLatin1StringView key) {
    const QJsonValue v = o.value(key);
    if (v.isUndefined() || v.isNull())
        return std::nullopt;
    return v;
}

qint64 toInt(const QJsonValue& v) {
    if (!v.isDouble())
        reject();
    // Two different fallbacks tell an integer in range from a fraction or an overflow.
    const qint64 a = v.toInteger(std::numeric_limits<qint64>::min());
    const qint64 b = v.toInteger(std::numeric_limits<qint64>::max());
    if (a != b)
        reject();
    return a;
}

double toNumber(const QJsonValue& v) {
    if (!v.isDouble())
        reject();
    return v.toDouble();
}

bool toBool(const QJsonValue& v) {
    if (!v.isBool())
        reject();
    return v.toBool();
}

QString toString(const QJsonValue& v) {
    if (!v.isString())
        reject();
    return v.toString();
}

QJsonObject toObject(const QJsonValue& v) {
    if (!v.isObject())
        reject();
    return v.toObject();
}

QJsonArray toArray(const QJsonValue& v) {
    if (!v.isArray())
        reject();
    return v.toArray();
}

QDateTime toDate(const QJsonValue& v) {
    auto d = parseDate(toString(v));
    if (!d)
        reject();
    return *d;
}

QUuid toUuid(const QJsonValue& v) {
    auto id = parseUuid(toString(v));
    if (!id)
        reject();
    return *id;
}

template <typename T> T orReject(std::optional<T> value) {
    if (!value)
        reject();
    return *value;
}

QList<QString> toStrings(const QJsonValue& v) {
    QList<QString> out;
    for (const QJsonValue& item : toArray(v))
        out.append(toString(item));
    return out;
}

FocusEvent readEvent(const QJsonObject& o) {
    FocusEvent e;
    e.id = toUuid(required(o, QLatin1StringView("id")));
    e.date = toDate(required(o, QLatin1StringView("date")));
    e.elapsedSeconds = toInt(required(o, QLatin1StringView("elapsedSeconds")));
    e.kind = orReject(focusEventKindFromRaw(toString(required(o, QLatin1StringView("kind")))));
    return e;
}

StudySession readSession(const QJsonObject& o) {
    using L = QLatin1StringView;
    StudySession s;
    s.id = toUuid(required(o, L("id")));
    s.startedAt = toDate(required(o, L("startedAt")));
    s.endedAt = toDate(required(o, L("endedAt")));
    if (auto t = optional(o, L("taskName")))
        s.taskName = toString(*t);
    s.plannedMinutes = toInt(required(o, L("plannedMinutes")));
    s.focusedSeconds = toInt(required(o, L("focusedSeconds")));
    s.reminderMinimumMinutes = toInt(required(o, L("reminderMinimumMinutes")));
    s.reminderMaximumMinutes = toInt(required(o, L("reminderMaximumMinutes")));
    s.microBreakSeconds = toInt(required(o, L("microBreakSeconds")));
    const QJsonArray events = toArray(required(o, L("events")));
    s.events.reserve(events.size());
    for (const QJsonValue& e : events)
        s.events.append(readEvent(toObject(e)));
    s.startEnergy = toInt(required(o, L("startEnergy")));
    s.endEnergy = toInt(required(o, L("endEnergy")));
    s.focusRating = toInt(required(o, L("focusRating")));
    s.completed = toBool(required(o, L("completed")));
    s.note = toString(required(o, L("note")));
    return s;
}

AppSettings readSettings(const QJsonObject& o) {
    using L = QLatin1StringView;
    AppSettings s;
    s.selectedDurationMinutes = toInt(required(o, L("selectedDurationMinutes")));
    s.reminderMinimumMinutes = toInt(required(o, L("reminderMinimumMinutes")));
    s.reminderMaximumMinutes = toInt(required(o, L("reminderMaximumMinutes")));
    s.microBreakSeconds = toInt(required(o, L("microBreakSeconds")));
    s.reminderSound = toString(required(o, L("reminderSound")));
    s.completionSound = toString(required(o, L("completionSound")));
    s.showNextReminder = toBool(required(o, L("showNextReminder")));
    s.autoPlayMusic = toBool(required(o, L("autoPlayMusic")));
    s.musicService.reset();
    if (auto v = optional(o, L("musicService")))
        s.musicService = orReject(musicServiceFromRaw(toString(*v)));
    s.musicSource = orReject(musicSourceFromRaw(toString(required(o, L("musicSource")))));
    s.playlistName = toString(required(o, L("playlistName")));
    s.appearanceMode.reset();
    if (auto v = optional(o, L("appearanceMode")))
        s.appearanceMode = orReject(appearanceModeFromRaw(toString(*v)));
    s.floatingTimerOnMinimize.reset();
    if (auto v = optional(o, L("floatingTimerOnMinimize")))
        s.floatingTimerOnMinimize = toBool(*v);
    s.floatingSignalButtons.reset();
    if (auto v = optional(o, L("floatingSignalButtons")))
        s.floatingSignalButtons = toBool(*v);
    s.taskNames.reset();
    if (auto v = optional(o, L("taskNames")))
        s.taskNames = toStrings(*v);
    s.selectedTaskName.reset();
    if (auto v = optional(o, L("selectedTaskName")))
        s.selectedTaskName = toString(*v);
    s.ambientSounds.reset();
    if (auto v = optional(o, L("ambientSounds")))
        s.ambientSounds = toStrings(*v);
    s.ambientVolumes.reset();
    if (auto v = optional(o, L("ambientVolumes"))) {
        std::map<QString, double> volumes;
        const QJsonObject map = toObject(*v);
        for (auto it = map.begin(); it != map.end(); ++it)
            volumes[it.key()] = toNumber(it.value());
        s.ambientVolumes = volumes;
    }
    s.ambientMasterVolume.reset();
    if (auto v = optional(o, L("ambientMasterVolume")))
        s.ambientMasterVolume = toNumber(*v);
    s.ambientFollowsFocus.reset();
    if (auto v = optional(o, L("ambientFollowsFocus")))
        s.ambientFollowsFocus = toBool(*v);
    return s;
}
} // namespace

std::optional<PersistedData> decode(const QByteArray& bytes) {
    QJsonParseError error;
    const QJsonDocument doc = QJsonDocument::fromJson(bytes, &error);
    if (error.error != QJsonParseError::NoError || !doc.isObject())
        return std::nullopt;
    try {
        const QJsonObject root = doc.object();
        PersistedData data;
        data.settings = readSettings(toObject(required(root, QLatin1StringView("settings"))));
        const QJsonArray sessions = toArray(required(root, QLatin1StringView("sessions")));
        data.sessions.reserve(sessions.size());
        for (const QJsonValue& s : sessions)
            data.sessions.append(readSession(toObject(s)));
        return data;
    } catch (const Rejected&) {
        return std::nullopt;
    }
}

} // namespace quill::DataFileCodec
