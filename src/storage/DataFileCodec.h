#pragma once

#include "storage/PersistedData.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QLatin1StringView>
#include <optional>

namespace quill::DataFileCodec {

/// Pretty-printed UTF-8 JSON with sorted keys; the same data always gives the same bytes. The
/// ledger adds "deletedSessions" and "settingsChangedAt" only when it holds something.
QByteArray encode(const AppSettings& settings, const QList<StudySession>& sessions,
                  const SyncLedger& ledger = {});
inline QByteArray encode(const PersistedData& data) {
    return encode(data.settings, data.sessions, data.ledger);
}
/// Strict decoding: any missing required key, wrong type, unknown enumeration string or
/// malformed date or UUID anywhere gives no value.
std::optional<PersistedData> decode(const QByteArray& bytes);

/// "2026-03-05T08:30:00Z": UTC, whole seconds.
QByteArray formatDate(const QDateTime& date);
constexpr qsizetype kDateLength = 20;
/// The same text into `out`, without going through the calendar classes: saving writes three
/// dates per session and two per event.
QLatin1StringView formatDateInto(const QDateTime& date, char (&out)[kDateLength]);
/// Internet date-time with "Z" or a numeric offset; fractional seconds are refused.
std::optional<QDateTime> parseDate(QByteArrayView utf8);
std::optional<QDateTime> parseDate(const QString& text);
/// 36 characters, 8-4-4-4-12 hexadecimal groups, either case.
std::optional<QUuid> parseUuid(QByteArrayView utf8);
std::optional<QUuid> parseUuid(const QString& text);

} // namespace quill::DataFileCodec
