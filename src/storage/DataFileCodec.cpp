#include "storage/DataFileCodec.h"

#include "storage/JsonWriter.h"

#include <algorithm>
#include <cmath>

namespace quill::DataFileCodec {

// ---------------------------------------------------------------- dates and UUIDs

namespace {
constexpr qint64 floorDiv(qint64 a, qint64 b) {
    return a / b - ((a % b != 0) && ((a < 0) != (b < 0)));
}

// "yyyy-MM-ddTHH:mm:ssZ" into `out` (20 bytes) without going through the calendar classes:
// saving writes three dates per session and two per event.
QLatin1StringView formatDateInto(const QDateTime& date, char* out) {
    // An unset date would make the whole file unreadable; the epoch keeps it loadable. A
    // date beyond what the reader takes (years 1-9999 in UTC) is held at that range's edge.
    constexpr qint64 kFirst = -62135596800; // 0001-01-01T00:00:00Z
    constexpr qint64 kLast = 253402300799;  // 9999-12-31T23:59:59Z
    const qint64 secs =
        date.isValid() ? std::clamp(floorDiv(date.toMSecsSinceEpoch(), 1000), kFirst, kLast) : 0;
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

QByteArray encode(const AppSettings& settings, const QList<StudySession>& sessions,
                  const SyncLedger& ledger) {
    // About 2 KB per session with its events; one allocation covers a typical history.
    JsonWriter w(1024 + sessions.size() * 2048 + ledger.deletedSessions.size() * 128);
    w.beginObject();
    if (!ledger.deletedSessions.isEmpty()) {
        w.key("deletedSessions");
        w.beginArray();
        for (auto it = ledger.deletedSessions.cbegin(); it != ledger.deletedSessions.cend(); ++it) {
            w.beginObject();
            w.key("deletedAt");
            writeDate(w, it.value());
            w.key("id");
            writeUuid(w, it.key());
            w.endObject();
        }
        w.endArray();
    }
    w.key("sessions");
    w.beginArray();
    for (const StudySession& s : sessions)
        writeSession(w, s);
    w.endArray();
    w.key("settings");
    writeSettings(w, settings);
    if (ledger.settingsChangedAt) {
        w.key("settingsChangedAt");
        writeDate(w, *ledger.settingsChangedAt);
    }
    w.endObject();
    return w.take();
}

} // namespace quill::DataFileCodec
