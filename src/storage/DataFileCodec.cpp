#include "storage/DataFileCodec.h"

#include "storage/JsonWriter.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimeZone>
#include <cmath>
#include <cstdio>

namespace quill::DataFileCodec {

// ---------------------------------------------------------------- dates and UUIDs

namespace {
constexpr qint64 floorDiv(qint64 a, qint64 b) {
    return a / b - ((a % b != 0) && ((a < 0) != (b < 0)));
}

// "yyyy-MM-ddTHH:mm:ssZ" into `out` (20 bytes) without going through the calendar classes:
// saving writes three dates per session and two per event.
QLatin1StringView formatDateInto(const QDateTime& date, char* out) {
    // An unset date would make the whole file unreadable; the epoch keeps it loadable.
    const qint64 secs = date.isValid() ? floorDiv(date.toMSecsSinceEpoch(), 1000) : 0;
    const qint64 days = floorDiv(secs, 86400);
    const qint64 second = secs - days * 86400;
    // Civil date from days since 1970-01-01 (Howard Hinnant's algorithm).
    const qint64 z = days + 719468;
    const qint64 era = floorDiv(z, 146097);
    const qint64 doe = z - era * 146097;
    const qint64 yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const qint64 doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const qint64 mp = (5 * doy + 2) / 153;
    const qint64 day = doy - (153 * mp + 2) / 5 + 1;
    const qint64 month = mp < 10 ? mp + 3 : mp - 9;
    const qint64 year = yoe + era * 400 + (month <= 2);
    if (year < 0 || year > 9999) {
        const int n = std::snprintf(
            out, 32, "%04lld-%02lld-%02lldT%02lld:%02lld:%02lldZ", static_cast<long long>(year),
            static_cast<long long>(month), static_cast<long long>(day),
            static_cast<long long>(second / 3600), static_cast<long long>(second / 60 % 60),
            static_cast<long long>(second % 60));
        return QLatin1StringView(out, n);
    }
    auto two = [](char* p, qint64 v) {
        p[0] = char('0' + v / 10);
        p[1] = char('0' + v % 10);
    };
    two(out, year / 100);
    two(out + 2, year % 100);
    out[4] = '-';
    two(out + 5, month);
    out[7] = '-';
    two(out + 8, day);
    out[10] = 'T';
    two(out + 11, second / 3600);
    out[13] = ':';
    two(out + 14, second / 60 % 60);
    out[16] = ':';
    two(out + 17, second % 60);
    out[19] = 'Z';
    return QLatin1StringView(out, 20);
}
} // namespace

QByteArray formatDate(const QDateTime& date) {
    char buf[32];
    const QLatin1StringView text = formatDateInto(date, buf);
    return QByteArray(text.data(), text.size());
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
    static constexpr char kHex[] = "0123456789ABCDEF";
    char text[36];
    char* p = text;
    auto hex = [&p](quint64 v, int digits) {
        for (int shift = (digits - 1) * 4; shift >= 0; shift -= 4)
            *p++ = kHex[(v >> shift) & 0xF];
    };
    hex(id.data1, 8);
    *p++ = '-';
    hex(id.data2, 4);
    *p++ = '-';
    hex(id.data3, 4);
    *p++ = '-';
    hex(id.data4[0], 2);
    hex(id.data4[1], 2);
    *p++ = '-';
    for (int i = 2; i < 8; ++i)
        hex(id.data4[i], 2);
    w.asciiValue(QLatin1StringView(text, 36));
}

void writeDate(JsonWriter& w, const QDateTime& date) {
    char buf[32];
    w.asciiValue(formatDateInto(date, buf));
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
    // About 2 KB per session with its events; one allocation covers a typical history.
    JsonWriter w(1024 + sessions.size() * 2048);
    w.beginObject();
    w.key("sessions");
    w.beginArray();
    for (const StudySession& s : sessions)
        writeSession(w, s);
    w.endArray();
    w.key("settings");
    writeSettings(w, settings);
    w.endObject();
    return w.take();
}

} // namespace quill::DataFileCodec
