// Reading the text forms of dates and UUIDs in the data file.
#include "storage/DataFileCodec.h"
#include "storage/JsonReader.h"

namespace quill::DataFileCodec {

namespace {
bool digits(QByteArrayView s, qsizetype from, qsizetype count, int& out) {
    out = 0;
    for (qsizetype i = from; i < from + count; ++i) {
        const char c = s[i];
        if (c < '0' || c > '9')
            return false;
        out = out * 10 + (c - '0');
    }
    return true;
}

bool isLeapYear(int y) {
    return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
}

int daysInMonth(int y, int m) {
    static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return m == 2 && isLeapYear(y) ? 29 : kDays[m - 1];
}

// Days since 1970-01-01 of a proleptic Gregorian date (Howard Hinnant's algorithm).
qint64 daysFromCivil(qint64 y, qint64 m, qint64 d) {
    y -= m <= 2;
    const qint64 era = (y >= 0 ? y : y - 399) / 400;
    const qint64 yoe = y - era * 400;
    const qint64 doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const qint64 doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + doe - 719468;
}
const qint64 kFirstWritableSecond = daysFromCivil(1, 1, 1) * 86400;
const qint64 kLastWritableSecond = daysFromCivil(9999, 12, 31) * 86400 + 86399;
} // namespace

std::optional<QDateTime> parseDate(QByteArrayView s) {
    // yyyy-MM-ddTHH:mm:ss then Z or ±HH:MM
    if (s.size() != 20 && s.size() != 25)
        return std::nullopt;
    int year, month, day, hour, minute, second;
    if (!digits(s, 0, 4, year) || s[4] != '-' || !digits(s, 5, 2, month) || s[7] != '-' ||
        !digits(s, 8, 2, day) || (s[10] != 'T' && s[10] != 't') || !digits(s, 11, 2, hour) ||
        s[13] != ':' || !digits(s, 14, 2, minute) || s[16] != ':' || !digits(s, 17, 2, second))
        return std::nullopt;
    int offsetSeconds = 0;
    if (s.size() == 20) {
        if (s[19] != 'Z' && s[19] != 'z')
            return std::nullopt;
    } else {
        const char sign = s[19];
        int oh, om;
        if ((sign != '+' && sign != '-') || !digits(s, 20, 2, oh) || s[22] != ':' ||
            !digits(s, 23, 2, om) || oh > 23 || om > 59)
            return std::nullopt;
        offsetSeconds = (oh * 3600 + om * 60) * (sign == '-' ? -1 : 1);
    }
    if (year < 1 || month < 1 || month > 12 || day < 1 || day > daysInMonth(year, month) ||
        hour > 23 || minute > 59 || second > 59)
        return std::nullopt;
    const qint64 secs = daysFromCivil(year, month, day) * 86400 + hour * 3600 + minute * 60 +
                        second - offsetSeconds;
    // The writer stores UTC; an offset that carries the moment outside years 1-9999 there
    // could not be written back in a form this reader takes.
    if (secs < kFirstWritableSecond || secs > kLastWritableSecond)
        return std::nullopt;
    return QDateTime::fromSecsSinceEpoch(secs, Qt::UTC);
}

std::optional<QDateTime> parseDate(const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    return parseDate(QByteArrayView(utf8));
}

std::optional<QUuid> parseUuid(QByteArrayView s) {
    if (s.size() != 36)
        return std::nullopt;
    quint8 bytes[16];
    int nibbles = 0;
    for (qsizetype i = 0; i < 36; ++i) {
        if (i == 8 || i == 13 || i == 18 || i == 23) {
            if (s[i] != '-')
                return std::nullopt;
            continue;
        }
        const int h = JsonReader::hexValue(s[i]);
        if (h < 0)
            return std::nullopt;
        if (nibbles % 2 == 0)
            bytes[nibbles / 2] = quint8(h << 4);
        else
            bytes[nibbles / 2] |= quint8(h);
        ++nibbles;
    }
    return QUuid::fromRfc4122(QByteArrayView(reinterpret_cast<const char*>(bytes), 16));
}

std::optional<QUuid> parseUuid(const QString& text) {
    const QByteArray utf8 = text.toUtf8();
    return parseUuid(QByteArrayView(utf8));
}

} // namespace quill::DataFileCodec
