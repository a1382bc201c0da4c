#include "storage/DataFileCodec.h"

#include "storage/DataFileSchema.h"
#include "storage/JsonWriter.h"

#include <algorithm>
#include <cmath>

namespace quill::DataFileCodec {

// ---------------------------------------------------------------- dates and UUIDs

namespace {
constexpr qint64 floorDiv(qint64 a, qint64 b) {
    return a / b - ((a % b != 0) && ((a < 0) != (b < 0)));
}
} // namespace

QLatin1StringView formatDateInto(const QDateTime& date, char (&out)[kDateLength]) {
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

QByteArray formatDate(const QDateTime& date) {
    char buf[kDateLength];
    const QLatin1StringView text = formatDateInto(date, buf);
    return QByteArray(text.data(), text.size());
}

// ---------------------------------------------------------------- encoding

QByteArray encode(const AppSettings& settings, const QList<StudySession>& sessions,
                  const SyncLedger& ledger) {
    // About 2 KB per session with its events; one allocation covers a typical history.
    JsonWriter w(1024 + sessions.size() * 2048 + ledger.deletedSessions.size() * 128);
    w.beginObject();
    if (!ledger.deletedSessions.isEmpty()) {
        w.key("deletedSessions");
        DataFileSchema::write(w, ledger.deletedSessions);
    }
    if (!ledger.revision.isNull()) {
        w.key("fileRevision");
        DataFileSchema::write(w, ledger.revision);
    }
    w.key("sessions");
    w.beginArray();
    for (const StudySession& s : sessions)
        DataFileSchema::write(w, s);
    w.endArray();
    w.key("settings");
    DataFileSchema::write(w, settings);
    if (ledger.settingsChangedAt) {
        w.key("settingsChangedAt");
        DataFileSchema::write(w, *ledger.settingsChangedAt);
    }
    w.endObject();
    return w.take();
}

} // namespace quill::DataFileCodec
