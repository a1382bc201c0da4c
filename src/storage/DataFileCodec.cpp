#include "storage/DataFileCodec.h"

#include "storage/JsonWriter.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimeZone>
#include <cmath>

namespace quill::DataFileCodec {

// ---------------------------------------------------------------- dates and UUIDs

QByteArray formatDate(const QDateTime& date) {
    const QDateTime utc = date.toUTC();
    const QDate d = utc.date();
    const QTime t = utc.time();
    char buf[32];
    const int n = std::snprintf(buf, sizeof buf, "%04d-%02d-%02dT%02d:%02d:%02dZ", d.year(),
                                d.month(), d.day(), t.hour(), t.minute(), t.second());
    return QByteArray(buf, n);
}

namespace {
bool digits(const QString& s, qsizetype from, qsizetype count, int& out) {
    out = 0;
    for (qsizetype i = from; i < from + count; ++i) {
        const QChar c = s.at(i);
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return false;
        out = out * 10 + (c.unicode() - '0');
    }
    return true;
}

bool isHex(QChar c) {
    return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) ||
           (c >= QLatin1Char('a') && c <= QLatin1Char('f')) ||
           (c >= QLatin1Char('A') && c <= QLatin1Char('F'));
}
} // namespace

std::optional<QDateTime> parseDate(const QString& s) {
    // yyyy-MM-ddTHH:mm:ss then Z or ±HH:MM
    if (s.size() != 20 && s.size() != 25)
        return std::nullopt;
    int year, month, day, hour, minute, second;
    if (!digits(s, 0, 4, year) || s.at(4) != QLatin1Char('-') || !digits(s, 5, 2, month) ||
        s.at(7) != QLatin1Char('-') || !digits(s, 8, 2, day) ||
        (s.at(10) != QLatin1Char('T') && s.at(10) != QLatin1Char('t')) || !digits(s, 11, 2, hour) ||
        s.at(13) != QLatin1Char(':') || !digits(s, 14, 2, minute) || s.at(16) != QLatin1Char(':') ||
        !digits(s, 17, 2, second))
        return std::nullopt;
    int offsetSeconds = 0;
    if (s.size() == 20) {
        if (s.at(19) != QLatin1Char('Z') && s.at(19) != QLatin1Char('z'))
            return std::nullopt;
    } else {
        const QChar sign = s.at(19);
        int oh, om;
        if ((sign != QLatin1Char('+') && sign != QLatin1Char('-')) || !digits(s, 20, 2, oh) ||
            s.at(22) != QLatin1Char(':') || !digits(s, 23, 2, om) || oh > 23 || om > 59)
            return std::nullopt;
        offsetSeconds = (oh * 3600 + om * 60) * (sign == QLatin1Char('-') ? -1 : 1);
    }
    const QDate date(year, month, day);
    const QTime time(hour, minute, second);
    if (!date.isValid() || !time.isValid())
        return std::nullopt;
    return QDateTime(date, time, Qt::UTC).addSecs(-offsetSeconds);
}

std::optional<QUuid> parseUuid(const QString& s) {
    if (s.size() != 36)
        return std::nullopt;
    for (qsizetype i = 0; i < 36; ++i) {
        const bool dash = (i == 8 || i == 13 || i == 18 || i == 23);
        if (dash ? s.at(i) != QLatin1Char('-') : !isHex(s.at(i)))
            return std::nullopt;
    }
    return QUuid::fromString(s);
}

// ---------------------------------------------------------------- encoding

namespace {
void writeUuid(JsonWriter& w, const QUuid& id) {
    const QByteArray text = id.toByteArray(QUuid::WithoutBraces).toUpper();
    w.asciiValue(text.constData(), text.size());
}

void writeDate(JsonWriter& w, const QDateTime& date) {
    const QByteArray text = formatDate(date);
    w.asciiValue(text.constData(), text.size());
}

void writeStrings(JsonWriter& w, const QList<QString>& list) {
    w.beginArray();
    for (const QString& s : list)
        w.value(s);
    w.endArray();
}

void writeEvent(JsonWriter& w, const FocusEvent& e) {
    w.beginObject();
    w.key("date");
    writeDate(w, e.date);
    w.key("elapsedSeconds");
    w.value(e.elapsedSeconds);
    w.key("id");
    writeUuid(w, e.id);
    w.key("kind");
    w.value(rawValue(e.kind));
    w.endObject();
}

void writeSession(JsonWriter& w, const StudySession& s) {
    w.beginObject();
    w.key("completed");
    w.value(s.completed);
    w.key("endEnergy");
    w.value(s.endEnergy);
    w.key("endedAt");
    writeDate(w, s.endedAt);
    w.key("events");
    w.beginArray();
    for (const FocusEvent& e : s.events)
        writeEvent(w, e);
    w.endArray();
    w.key("focusRating");
    w.value(s.focusRating);
    w.key("focusedSeconds");
    w.value(s.focusedSeconds);
    w.key("id");
    writeUuid(w, s.id);
    w.key("microBreakSeconds");
    w.value(s.microBreakSeconds);
    w.key("note");
    w.value(s.note);
    w.key("plannedMinutes");
    w.value(s.plannedMinutes);
    w.key("reminderMaximumMinutes");
    w.value(s.reminderMaximumMinutes);
    w.key("reminderMinimumMinutes");
    w.value(s.reminderMinimumMinutes);
    w.key("startEnergy");
    w.value(s.startEnergy);
    w.key("startedAt");
    writeDate(w, s.startedAt);
    if (s.taskName) {
        w.key("taskName");
        w.value(*s.taskName);
    }
    w.endObject();
}

void writeSettings(JsonWriter& w, const AppSettings& s) {
    w.beginObject();
    if (s.ambientFollowsFocus) {
        w.key("ambientFollowsFocus");
        w.value(*s.ambientFollowsFocus);
    }
    // A number JSON cannot hold is left out, so the field reads back as its default.
    if (s.ambientMasterVolume && std::isfinite(*s.ambientMasterVolume)) {
        w.key("ambientMasterVolume");
        w.value(*s.ambientMasterVolume);
    }
    if (s.ambientSounds) {
        w.key("ambientSounds");
        writeStrings(w, *s.ambientSounds);
    }
    if (s.ambientVolumes) {
        w.key("ambientVolumes");
        w.beginObject();
        for (const auto& [name, volume] : *s.ambientVolumes) {
            if (!std::isfinite(volume))
                continue;
            w.key(name);
            w.value(volume);
        }
        w.endObject();
    }
    if (s.appearanceMode) {
        w.key("appearanceMode");
        w.value(rawValue(*s.appearanceMode));
    }
    w.key("autoPlayMusic");
    w.value(s.autoPlayMusic);
    w.key("completionSound");
    w.value(s.completionSound);
    if (s.floatingSignalButtons) {
        w.key("floatingSignalButtons");
        w.value(*s.floatingSignalButtons);
    }
    if (s.floatingTimerOnMinimize) {
        w.key("floatingTimerOnMinimize");
        w.value(*s.floatingTimerOnMinimize);
    }
    w.key("microBreakSeconds");
    w.value(s.microBreakSeconds);
    if (s.musicService) {
        w.key("musicService");
        w.value(rawValue(*s.musicService));
    }
    w.key("musicSource");
    w.value(rawValue(s.musicSource));
    w.key("playlistName");
    w.value(s.playlistName);
    w.key("reminderMaximumMinutes");
    w.value(s.reminderMaximumMinutes);
    w.key("reminderMinimumMinutes");
    w.value(s.reminderMinimumMinutes);
    w.key("reminderSound");
    w.value(s.reminderSound);
    w.key("selectedDurationMinutes");
    w.value(s.selectedDurationMinutes);
    if (s.selectedTaskName) {
        w.key("selectedTaskName");
        w.value(*s.selectedTaskName);
    }
    w.key("showNextReminder");
    w.value(s.showNextReminder);
    if (s.taskNames) {
        w.key("taskNames");
        writeStrings(w, *s.taskNames);
    }
    w.endObject();
}
} // namespace

QByteArray encode(const AppSettings& settings, const QList<StudySession>& sessions) {
    QByteArray out;
    out.reserve(512 + sessions.size() * 1400);
    JsonWriter w(out);
    w.beginObject();
    w.key("sessions");
    w.beginArray();
    for (const StudySession& s : sessions)
        writeSession(w, s);
    w.endArray();
    w.key("settings");
    writeSettings(w, settings);
    w.endObject();
    return out;
}

} // namespace quill::DataFileCodec
