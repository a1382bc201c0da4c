#include "insights/NumberText.h"

#include <algorithm>
#include <cstdio>

namespace quill::numbertext {

namespace {
QString printed(const char* format, double value) {
    char buffer[64];
    const int n = std::snprintf(buffer, sizeof buffer, format, value);
    // Only a value beyond ±1e60 overruns the buffer; it shows cut rather than not at all.
    return QString::fromLatin1(buffer, n < 0 ? 0 : std::min<int>(n, sizeof buffer - 1));
}
} // namespace

QString oneDecimal(double value) {
    return printed("%.1f", value);
}

QString signedOneDecimal(double value) {
    return printed("%+.1f", value);
}

} // namespace quill::numbertext
