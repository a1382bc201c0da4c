// Strict reading of the data file: one bad value anywhere rejects the whole file.
#include "storage/DataFileCodec.h"
#include "storage/DataFileSchema.h"
#include "storage/JsonReader.h"

namespace quill::DataFileCodec {

namespace {
using Malformed = JsonReader::Malformed;
using Cursor = JsonReader::Cursor;
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
                data.settings = DataFileSchema::readSettings(r);
                haveSettings = true;
            } else if (key == "sessions") {
                data.sessions.clear();
                Cursor sc;
                r.beginArray(sc);
                while (r.nextElement(sc))
                    data.sessions.append(DataFileSchema::readSession(r));
                haveSessions = true;
            } else if (key == "deletedSessions") {
                data.ledger.deletedSessions.clear();
                DataFileSchema::readDeletions(r, data.ledger);
            } else if (key == "fileRevision") {
                data.ledger.revision = DataFileSchema::readUuid(r);
            } else if (key == "settingsChangedAt") {
                data.ledger.settingsChangedAt = SyncLedger::stamp(DataFileSchema::readDate(r));
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
