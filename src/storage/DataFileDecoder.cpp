// Strict reading of the data file: one bad value anywhere rejects the whole file.
#include "storage/DataFileCodec.h"
#include "storage/JsonReader.h"

#include <QLatin1StringView>

namespace quill::DataFileCodec {

namespace {
using Malformed = JsonReader::Malformed;
using Cursor = JsonReader::Cursor;

[[noreturn]] void reject() {
    throw Malformed{};
}

/// Which required keys of one object have been read.
class RequiredKeys {
public:
    void saw(int index) { m_seen |= 1u << index; }
    void requireAll(int count) const {
        if (m_seen != (1u << count) - 1)
            reject();
    }

private:
    unsigned m_seen = 0;
};

template <typename T> T orReject(std::optional<T> value) {
    if (!value)
        reject();
    return *value;
}

QDateTime readDate(JsonReader& r) {
    return orReject(parseDate(r.readUtf8()));
}
QUuid readUuid(JsonReader& r) {
    return orReject(parseUuid(r.readUtf8()));
}

FocusEventKind readKind(JsonReader& r) {
    static constexpr QLatin1StringView kRaw[] = {
        QLatin1StringView("reminder"), QLatin1StringView("mindWander"),
        QLatin1StringView("fatigue"), QLatin1StringView("pause"), QLatin1StringView("resume")};
    static constexpr FocusEventKind kKinds[] = {FocusEventKind::reminder,
                                                FocusEventKind::mindWander, FocusEventKind::fatigue,
                                                FocusEventKind::pause, FocusEventKind::resume};
    const QByteArrayView raw = r.readUtf8();
    for (int i = 0; i < 5; ++i)
        if (raw == QByteArrayView(kRaw[i].data(), kRaw[i].size()))
            return kKinds[i];
    reject();
}

QList<QString> readStrings(JsonReader& r) {
    QList<QString> out;
    Cursor c;
    r.beginArray(c);
    while (r.nextElement(c))
        out.append(r.readString());
    return out;
}

FocusEvent readEvent(JsonReader& r) {
    FocusEvent e;
    RequiredKeys required;
    Cursor c;
    QByteArrayView key;
    r.beginObject(c);
    while (r.nextMember(c, key)) {
        if (key == "id") {
            e.id = readUuid(r);
            required.saw(0);
        } else if (key == "date") {
            e.date = readDate(r);
            required.saw(1);
        } else if (key == "elapsedSeconds") {
            e.elapsedSeconds = r.readInteger();
            required.saw(2);
        } else if (key == "kind") {
            e.kind = readKind(r);
            required.saw(3);
        } else {
            r.skipValue();
        }
    }
    required.requireAll(4);
    return e;
}

StudySession readSession(JsonReader& r) {
    StudySession s;
    RequiredKeys required;
    Cursor c;
    QByteArrayView key;
    r.beginObject(c);
    while (r.nextMember(c, key)) {
        if (key == "id") {
            s.id = readUuid(r);
            required.saw(0);
        } else if (key == "startedAt") {
            s.startedAt = readDate(r);
            required.saw(1);
        } else if (key == "endedAt") {
            s.endedAt = readDate(r);
            required.saw(2);
        } else if (key == "taskName") {
            if (r.readNull())
                s.taskName.reset();
            else
                s.taskName = r.readString();
        } else if (key == "plannedMinutes") {
            s.plannedMinutes = r.readInteger();
            required.saw(3);
        } else if (key == "focusedSeconds") {
            s.focusedSeconds = r.readInteger();
            required.saw(4);
        } else if (key == "reminderMinimumMinutes") {
            s.reminderMinimumMinutes = r.readInteger();
            required.saw(5);
        } else if (key == "reminderMaximumMinutes") {
            s.reminderMaximumMinutes = r.readInteger();
            required.saw(6);
        } else if (key == "microBreakSeconds") {
            s.microBreakSeconds = r.readInteger();
            required.saw(7);
        } else if (key == "events") {
            s.events.clear();
            Cursor ec;
            r.beginArray(ec);
            while (r.nextElement(ec))
                s.events.append(readEvent(r));
            required.saw(8);
        } else if (key == "startEnergy") {
            s.startEnergy = r.readInteger();
            required.saw(9);
        } else if (key == "endEnergy") {
            s.endEnergy = r.readInteger();
            required.saw(10);
        } else if (key == "focusRating") {
            s.focusRating = r.readInteger();
            required.saw(11);
        } else if (key == "completed") {
            s.completed = r.readBool();
            required.saw(12);
        } else if (key == "note") {
            s.note = r.readString();
            required.saw(13);
        } else {
            r.skipValue();
        }
    }
    required.requireAll(14);
    return s;
}

// An optional field: null and a missing key both leave it absent.
template <typename T, typename Read>
void readOptional(JsonReader& r, std::optional<T>& field, Read read) {
    if (r.readNull())
        field.reset();
    else
        field = read();
}

AppSettings readSettings(JsonReader& r) {
    AppSettings s;
    // Absent unless the file holds them.
    s.musicService.reset();
    s.appearanceMode.reset();
    s.floatingTimerOnMinimize.reset();
    s.floatingSignalButtons.reset();
    s.taskNames.reset();
    s.selectedTaskName.reset();
    s.ambientSounds.reset();
    s.ambientVolumes.reset();
    s.ambientMasterVolume.reset();
    s.ambientFollowsFocus.reset();

    RequiredKeys required;
    Cursor c;
    QByteArrayView key;
    r.beginObject(c);
    while (r.nextMember(c, key)) {
        if (key == "selectedDurationMinutes") {
            s.selectedDurationMinutes = r.readInteger();
            required.saw(0);
        } else if (key == "reminderMinimumMinutes") {
            s.reminderMinimumMinutes = r.readInteger();
            required.saw(1);
        } else if (key == "reminderMaximumMinutes") {
            s.reminderMaximumMinutes = r.readInteger();
            required.saw(2);
        } else if (key == "microBreakSeconds") {
            s.microBreakSeconds = r.readInteger();
            required.saw(3);
        } else if (key == "reminderSound") {
            s.reminderSound = r.readString();
            required.saw(4);
        } else if (key == "completionSound") {
            s.completionSound = r.readString();
            required.saw(5);
        } else if (key == "showNextReminder") {
            s.showNextReminder = r.readBool();
            required.saw(6);
        } else if (key == "autoPlayMusic") {
            s.autoPlayMusic = r.readBool();
            required.saw(7);
        } else if (key == "musicSource") {
            s.musicSource = orReject(musicSourceFromRaw(r.readString()));
            required.saw(8);
        } else if (key == "playlistName") {
            s.playlistName = r.readString();
            required.saw(9);
        } else if (key == "musicService") {
            readOptional(r, s.musicService,
                         [&] { return orReject(musicServiceFromRaw(r.readString())); });
        } else if (key == "appearanceMode") {
            readOptional(r, s.appearanceMode,
                         [&] { return orReject(appearanceModeFromRaw(r.readString())); });
        } else if (key == "floatingTimerOnMinimize") {
            readOptional(r, s.floatingTimerOnMinimize, [&] { return r.readBool(); });
        } else if (key == "floatingSignalButtons") {
            readOptional(r, s.floatingSignalButtons, [&] { return r.readBool(); });
        } else if (key == "taskNames") {
            readOptional(r, s.taskNames, [&] { return readStrings(r); });
        } else if (key == "selectedTaskName") {
            readOptional(r, s.selectedTaskName, [&] { return r.readString(); });
        } else if (key == "ambientSounds") {
            readOptional(r, s.ambientSounds, [&] { return readStrings(r); });
        } else if (key == "ambientVolumes") {
            readOptional(r, s.ambientVolumes, [&] {
                std::map<QString, double> volumes;
                Cursor vc;
                QByteArrayView name;
                r.beginObject(vc);
                while (r.nextMember(vc, name)) {
                    const QString sound = QString::fromUtf8(name);
                    volumes[sound] = r.readDouble();
                }
                return volumes;
            });
        } else if (key == "ambientMasterVolume") {
            readOptional(r, s.ambientMasterVolume, [&] { return r.readDouble(); });
        } else if (key == "ambientFollowsFocus") {
            readOptional(r, s.ambientFollowsFocus, [&] { return r.readBool(); });
        } else {
            r.skipValue();
        }
    }
    required.requireAll(10);
    return s;
}
// Deleted sessions as {"deletedAt", "id"} objects; an id listed twice keeps its later date.
void readDeletions(JsonReader& r, SyncLedger& ledger) {
    Cursor c;
    r.beginArray(c);
    while (r.nextElement(c)) {
        std::optional<QUuid> id;
        std::optional<QDateTime> date;
        Cursor ec;
        QByteArrayView key;
        r.beginObject(ec);
        while (r.nextMember(ec, key)) {
            if (key == "id")
                id = readUuid(r);
            else if (key == "deletedAt")
                date = readDate(r);
            else
                r.skipValue();
        }
        ledger.recordDeletion(orReject(id), orReject(date));
    }
}
} // namespace

std::optional<PersistedData> decode(const QByteArray& bytes) {
    try {
        JsonReader r(bytes);
        PersistedData data;
        bool haveSettings = false;
        bool haveSessions = false;
        Cursor c;
        QByteArrayView key;
        r.beginObject(c);
        while (r.nextMember(c, key)) {
            if (key == "settings") {
                data.settings = readSettings(r);
                haveSettings = true;
            } else if (key == "sessions") {
                data.sessions.clear();
                Cursor sc;
                r.beginArray(sc);
                while (r.nextElement(sc))
                    data.sessions.append(readSession(r));
                haveSessions = true;
            } else if (key == "deletedSessions") {
                data.ledger.deletedSessions.clear();
                readDeletions(r, data.ledger);
            } else if (key == "settingsChangedAt") {
                data.ledger.settingsChangedAt = SyncLedger::stamp(readDate(r));
            } else {
                r.skipValue();
            }
        }
        r.finish();
        if (!haveSettings || !haveSessions)
            return std::nullopt;
        return data;
    } catch (const Malformed&) {
        return std::nullopt;
    }
}

} // namespace quill::DataFileCodec
