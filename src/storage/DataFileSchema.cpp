// The data file's records, one table each: a row names a field's key and its member, and
// both the writer and the strict reader follow the table.
#include "storage/DataFileSchema.h"

#include "storage/DataFileCodec.h"
#include "storage/JsonReader.h"
#include "storage/JsonWriter.h"

#include <array>
#include <cmath>
#include <string_view>
#include <type_traits>

namespace quill::DataFileSchema {

namespace {
using Cursor = JsonReader::Cursor;

[[noreturn]] void reject() {
    throw JsonReader::Malformed{};
}

template <typename T> T orReject(std::optional<T> value) {
    if (!value)
        reject();
    return *value;
}

// ---------------------------------------------------------------- values

void writeValue(JsonWriter& w, qint64 v) {
    w.value(v);
}
void writeValue(JsonWriter& w, double v) {
    w.value(v);
}
void writeValue(JsonWriter& w, bool v) {
    w.value(v);
}
void writeValue(JsonWriter& w, const QString& v) {
    w.value(v);
}
void writeValue(JsonWriter& w, const QDateTime& date) {
    char buf[DataFileCodec::kDateLength];
    w.asciiValue(DataFileCodec::formatDateInto(date, buf));
}
void writeValue(JsonWriter& w, const QUuid& id) {
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
template <typename E>
requires std::is_enum_v<E>
void writeValue(JsonWriter& w, E v) {
    w.value(rawValue(v));
}
void writeValue(JsonWriter& w, const QList<QString>& list) {
    w.beginArray();
    for (const QString& s : list)
        w.value(s);
    w.endArray();
}
// A number JSON cannot hold is left out, so it reads back as its default.
void writeValue(JsonWriter& w, const std::map<QString, double>& volumes) {
    w.beginObject();
    for (const auto& [name, volume] : volumes) {
        if (!std::isfinite(volume))
            continue;
        w.key(name);
        w.value(volume);
    }
    w.endObject();
}
void writeValue(JsonWriter& w, const QList<FocusEvent>& events);

// Whether an optional field that holds this value is written at all.
template <typename T> bool writable(const T&) {
    return true;
}
bool writable(double v) {
    return std::isfinite(v);
}

void readValue(JsonReader& r, qint64& v) {
    v = r.readInteger();
}
void readValue(JsonReader& r, double& v) {
    v = r.readDouble();
}
void readValue(JsonReader& r, bool& v) {
    v = r.readBool();
}
void readValue(JsonReader& r, QString& v) {
    v = r.readString();
}
void readValue(JsonReader& r, QDateTime& v) {
    v = orReject(DataFileCodec::parseDate(r.readUtf8()));
}
void readValue(JsonReader& r, QUuid& v) {
    v = orReject(DataFileCodec::parseUuid(r.readUtf8()));
}
void readValue(JsonReader& r, FocusEventKind& v) {
    const QByteArrayView raw = r.readUtf8();
    v = orReject(focusEventKindFromRaw(QUtf8StringView(raw.data(), raw.size())));
}
void readValue(JsonReader& r, MusicSource& v) {
    v = orReject(musicSourceFromRaw(r.readString()));
}
void readValue(JsonReader& r, MusicService& v) {
    v = orReject(musicServiceFromRaw(r.readString()));
}
void readValue(JsonReader& r, AppearanceMode& v) {
    v = orReject(appearanceModeFromRaw(r.readString()));
}
void readValue(JsonReader& r, QList<QString>& list) {
    list.clear();
    Cursor c;
    r.beginArray(c);
    while (r.nextElement(c))
        list.append(r.readString());
}
void readValue(JsonReader& r, std::map<QString, double>& volumes) {
    volumes.clear();
    Cursor c;
    QByteArrayView name;
    r.beginObject(c);
    while (r.nextMember(c, name)) {
        const QString sound = JsonReader::decodeUtf8(name);
        volumes[sound] = r.readDouble();
    }
}
void readValue(JsonReader& r, QList<FocusEvent>& events);

// ---------------------------------------------------------------- fields

template <typename T> struct Optional : std::false_type { using Value = T; };
template <typename T> struct Optional<std::optional<T>> : std::true_type { using Value = T; };

template <typename M> struct MemberOf;
template <typename R, typename V> struct MemberOf<V R::*> {
    using Record = R;
    using Type = V;
};

/// One field of a record: an optional member is written only when it holds a value, reads
/// null as absent and starts out absent; every other member is required.
template <typename Record> struct Field {
    std::string_view key;
    bool required;
    bool (*present)(const Record&);
    void (*write)(JsonWriter&, const Record&);
    void (*read)(JsonReader&, Record&);
    void (*clear)(Record&);
};

template <auto Member> constexpr auto field(std::string_view key) {
    using Record = typename MemberOf<decltype(Member)>::Record;
    using Type = typename MemberOf<decltype(Member)>::Type;
    if constexpr (Optional<Type>::value) {
        return Field<Record>{
            key,
            false,
            [](const Record& rec) { return (rec.*Member) && writable(*(rec.*Member)); },
            [](JsonWriter& w, const Record& rec) { writeValue(w, *(rec.*Member)); },
            [](JsonReader& r, Record& rec) {
                if (r.readNull()) {
                    (rec.*Member).reset();
                    return;
                }
                typename Optional<Type>::Value value{};
                readValue(r, value);
                rec.*Member = std::move(value);
            },
            [](Record& rec) { (rec.*Member).reset(); }};
    } else {
        return Field<Record>{key,
                             true,
                             [](const Record&) { return true; },
                             [](JsonWriter& w, const Record& rec) { writeValue(w, rec.*Member); },
                             [](JsonReader& r, Record& rec) { readValue(r, rec.*Member); },
                             [](Record&) {}};
    }
}

// The writer emits fields in table order, and the file's keys are sorted.
template <typename Record, std::size_t N>
constexpr bool sortedByKey(const std::array<Field<Record>, N>& fields) {
    for (std::size_t i = 1; i < N; ++i)
        if (!(fields[i - 1].key < fields[i].key))
            return false;
    return true;
}

template <typename Record, std::size_t N>
void writeRecord(JsonWriter& w, const Record& record, const std::array<Field<Record>, N>& fields) {
    w.beginObject();
    for (const Field<Record>& f : fields) {
        if (!f.present(record))
            continue;
        w.key(QLatin1StringView(f.key.data(), qsizetype(f.key.size())));
        f.write(w, record);
    }
    w.endObject();
}

template <typename Record, std::size_t N>
Record readRecord(JsonReader& r, const std::array<Field<Record>, N>& fields) {
    static_assert(N <= 32, "required keys are tracked in one 32-bit mask");
    Record record;
    unsigned requiredMask = 0;
    for (std::size_t i = 0; i < N; ++i) {
        fields[i].clear(record);
        if (fields[i].required)
            requiredMask |= 1u << i;
    }
    unsigned seen = 0;
    Cursor c;
    QByteArrayView key;
    r.beginObject(c);
    while (r.nextMember(c, key)) {
        const std::string_view name(key.data(), std::size_t(key.size()));
        std::size_t i = 0;
        while (i < N && fields[i].key != name)
            ++i;
        if (i == N) {
            r.skipValue();
            continue;
        }
        fields[i].read(r, record);
        seen |= 1u << i;
    }
    if ((seen & requiredMask) != requiredMask)
        reject();
    return record;
}

// ---------------------------------------------------------------- records

constexpr std::array kEventFields{
    field<&FocusEvent::date>("date"),
    field<&FocusEvent::elapsedSeconds>("elapsedSeconds"),
    field<&FocusEvent::id>("id"),
    field<&FocusEvent::kind>("kind"),
};
static_assert(sortedByKey(kEventFields));

void writeValue(JsonWriter& w, const QList<FocusEvent>& events) {
    w.beginArray();
    for (const FocusEvent& e : events)
        writeRecord(w, e, kEventFields);
    w.endArray();
}
void readValue(JsonReader& r, QList<FocusEvent>& events) {
    events.clear();
    Cursor c;
    r.beginArray(c);
    while (r.nextElement(c))
        events.append(readRecord(r, kEventFields));
}

constexpr std::array kSessionFields{
    field<&StudySession::completed>("completed"),
    field<&StudySession::endEnergy>("endEnergy"),
    field<&StudySession::endedAt>("endedAt"),
    field<&StudySession::events>("events"),
    field<&StudySession::focusRating>("focusRating"),
    field<&StudySession::focusedSeconds>("focusedSeconds"),
    field<&StudySession::id>("id"),
    field<&StudySession::microBreakSeconds>("microBreakSeconds"),
    field<&StudySession::note>("note"),
    field<&StudySession::plannedMinutes>("plannedMinutes"),
    field<&StudySession::reminderMaximumMinutes>("reminderMaximumMinutes"),
    field<&StudySession::reminderMinimumMinutes>("reminderMinimumMinutes"),
    field<&StudySession::startEnergy>("startEnergy"),
    field<&StudySession::startedAt>("startedAt"),
    field<&StudySession::taskName>("taskName"),
};
static_assert(sortedByKey(kSessionFields));

constexpr std::array kSettingsFields{
    field<&AppSettings::ambientFollowsFocus>("ambientFollowsFocus"),
    field<&AppSettings::ambientMasterVolume>("ambientMasterVolume"),
    field<&AppSettings::ambientSounds>("ambientSounds"),
    field<&AppSettings::ambientVolumes>("ambientVolumes"),
    field<&AppSettings::appearanceMode>("appearanceMode"),
    field<&AppSettings::autoPlayMusic>("autoPlayMusic"),
    field<&AppSettings::completionSound>("completionSound"),
    field<&AppSettings::floatingSignalButtons>("floatingSignalButtons"),
    field<&AppSettings::floatingTimerOnMinimize>("floatingTimerOnMinimize"),
    field<&AppSettings::microBreakSeconds>("microBreakSeconds"),
    field<&AppSettings::musicService>("musicService"),
    field<&AppSettings::musicSource>("musicSource"),
    field<&AppSettings::pauseNotificationsWhileFocusing>("pauseNotificationsWhileFocusing"),
    field<&AppSettings::pauseRoundOnScreenLock>("pauseRoundOnScreenLock"),
    field<&AppSettings::playlistName>("playlistName"),
    field<&AppSettings::reminderMaximumMinutes>("reminderMaximumMinutes"),
    field<&AppSettings::reminderMinimumMinutes>("reminderMinimumMinutes"),
    field<&AppSettings::reminderSound>("reminderSound"),
    field<&AppSettings::selectedDurationMinutes>("selectedDurationMinutes"),
    field<&AppSettings::selectedTaskName>("selectedTaskName"),
    field<&AppSettings::showNextReminder>("showNextReminder"),
    field<&AppSettings::taskNames>("taskNames"),
};
static_assert(sortedByKey(kSettingsFields));

struct Deletion {
    QDateTime deletedAt;
    QUuid id;
};
constexpr std::array kDeletionFields{
    field<&Deletion::deletedAt>("deletedAt"),
    field<&Deletion::id>("id"),
};
static_assert(sortedByKey(kDeletionFields));
} // namespace

void write(JsonWriter& w, const StudySession& session) {
    writeRecord(w, session, kSessionFields);
}
void write(JsonWriter& w, const AppSettings& settings) {
    writeRecord(w, settings, kSettingsFields);
}
StudySession readSession(JsonReader& r) {
    return readRecord(r, kSessionFields);
}
AppSettings readSettings(JsonReader& r) {
    return readRecord(r, kSettingsFields);
}
void write(JsonWriter& w, const QMap<QUuid, QDateTime>& deletedSessions) {
    w.beginArray();
    for (auto it = deletedSessions.cbegin(); it != deletedSessions.cend(); ++it)
        writeRecord(w, Deletion{it.value(), it.key()}, kDeletionFields);
    w.endArray();
}
void readDeletions(JsonReader& r, SyncLedger& ledger) {
    Cursor c;
    r.beginArray(c);
    while (r.nextElement(c)) {
        const Deletion d = readRecord(r, kDeletionFields);
        ledger.recordDeletion(d.id, d.deletedAt);
    }
}
void write(JsonWriter& w, const QDateTime& date) {
    writeValue(w, date);
}
QDateTime readDate(JsonReader& r) {
    QDateTime date;
    readValue(r, date);
    return date;
}
void write(JsonWriter& w, const QUuid& id) {
    writeValue(w, id);
}
QUuid readUuid(JsonReader& r) {
    QUuid id;
    readValue(r, id);
    return id;
}

} // namespace quill::DataFileSchema
