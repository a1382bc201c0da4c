#pragma once

#include <QString>

// One-decimal numbers as C's printf writes them. Qt's own formatting rounds an exact half
// away from zero; printf rounds the binary value to even (0.25 → "0.2", 3.25 → "3.2").
namespace quill::numbertext {

/// "%.1f".
QString oneDecimal(double value);
/// "%+.1f": always signed, ASCII sign.
QString signedOneDecimal(double value);

} // namespace quill::numbertext
