#pragma once

#include "model/AppSettings.h"
#include "model/StudySession.h"
#include "storage/SyncLedger.h"

namespace quill {
class JsonReader;
class JsonWriter;
} // namespace quill

namespace quill::DataFileSchema {

/// Each record's fields, written in sorted key order and read back strictly: a missing
/// required key, a wrong type or an unknown raw value throws JsonReader::Malformed.
void write(JsonWriter& w, const StudySession& session);
void write(JsonWriter& w, const AppSettings& settings);
StudySession readSession(JsonReader& r);
AppSettings readSettings(JsonReader& r);
/// The ledger's deleted sessions, an array of {"deletedAt", "id"} records; an id listed twice
/// keeps its later date.
void write(JsonWriter& w, const QMap<QUuid, QDateTime>& deletedSessions);
void readDeletions(JsonReader& r, SyncLedger& ledger);
void write(JsonWriter& w, const QDateTime& date);
QDateTime readDate(JsonReader& r);
void write(JsonWriter& w, const QUuid& id);
QUuid readUuid(JsonReader& r);

} // namespace quill::DataFileSchema
