#pragma once

#include <QByteArray>
#include <string>

namespace quill::test {

/// What must hold for any bytes handed to the data file's reader: decoding never crashes;
/// whatever it accepts is written back in a form it accepts again, as the same records and
/// as the same bytes on a second write; and the settings repair changes nothing the second
/// time. Returns the first property that fails, or an empty string.
std::string dataFilePropertyFailure(const QByteArray& bytes);

} // namespace quill::test
