#include "DataFileProperties.h"

#include "storage/DataFileCodec.h"

namespace quill::test {

std::string dataFilePropertyFailure(const QByteArray& bytes) {
    const auto decoded = DataFileCodec::decode(bytes);
    if (!decoded)
        return {};
    const QByteArray written = DataFileCodec::encode(*decoded);
    const auto reread = DataFileCodec::decode(written);
    if (!reread)
        return "accepted data was written back unreadable:\n" + written.toStdString();
    if (!(reread->settings == decoded->settings))
        return "settings changed on the way through the writer:\n" + written.toStdString();
    if (reread->sessions != decoded->sessions)
        return "sessions changed on the way through the writer:\n" + written.toStdString();
    if (!(reread->ledger == decoded->ledger) || reread->ledger.revision != decoded->ledger.revision)
        return "deletions or the settings date changed on the way through the writer:\n" +
               written.toStdString();
    if (DataFileCodec::encode(*reread) != written)
        return "a second write gave other bytes";

    const AppSettings repaired = normalizedSettings(decoded->settings);
    if (!(normalizedSettings(repaired) == repaired))
        return "repairing repaired settings changed them";
    return {};
}

} // namespace quill::test
