#include "storage/JsonWriter.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace quill {

JsonWriter::JsonWriter(qsizetype expectedSize) {
    m_out.resize(std::max<qsizetype>(expectedSize, 256));
}

QByteArray JsonWriter::take() {
    m_out.truncate(m_size);
    m_size = 0;
    return std::move(m_out);
}

char* JsonWriter::room(qsizetype n) {
    if (m_size + n > m_out.size())
        m_out.resize(std::max(m_out.size() * 2, m_size + n));
    return m_out.data() + m_size;
}

void JsonWriter::append(const char* text, qsizetype n) {
    std::memcpy(room(n), text, n);
    m_size += n;
}

void JsonWriter::newline() {
    const qsizetype n = 1 + 2 * qsizetype(m_depth);
    char* p = room(n);
    p[0] = '\n';
    std::memset(p + 1, ' ', n - 1);
    m_size += n;
}

void JsonWriter::beforeMember() {
    if (!m_firstInContainer)
        append(",", 1);
    newline();
    m_firstInContainer = false;
}

void JsonWriter::beforeValue() {
    if (m_afterKey) {
        m_afterKey = false;
        return;
    }
    if (m_depth > 0)
        beforeMember();
    m_firstInContainer = false;
}

void JsonWriter::beginObject() {
    beforeValue();
    append("{", 1);
    ++m_depth;
    m_firstInContainer = true;
}

void JsonWriter::endObject() {
    --m_depth;
    if (!m_firstInContainer)
        newline();
    append("}", 1);
    m_firstInContainer = false;
}

void JsonWriter::beginArray() {
    beforeValue();
    append("[", 1);
    ++m_depth;
    m_firstInContainer = true;
}

void JsonWriter::endArray() {
    --m_depth;
    if (!m_firstInContainer)
        newline();
    append("]", 1);
    m_firstInContainer = false;
}

void JsonWriter::key(QLatin1StringView asciiKey) {
    beforeMember();
    char* p = room(asciiKey.size() + 5);
    *p++ = '"';
    std::memcpy(p, asciiKey.data(), asciiKey.size());
    p += asciiKey.size();
    std::memcpy(p, "\" : ", 4);
    advanceTo(p + 4);
    m_afterKey = true;
}

void JsonWriter::key(const QString& k) {
    beforeMember();
    writeString(k);
    append(" : ", 3);
    m_afterKey = true;
}

void JsonWriter::value(qint64 v) {
    beforeValue();
    char* p = room(24);
    advanceTo(std::to_chars(p, p + 24, v).ptr);
}

void JsonWriter::value(double v) {
    beforeValue();
    if (!std::isfinite(v)) { // JSON has no such numbers; callers filter them out first
        append("0", 1);
        return;
    }
    char* p = room(32);
    advanceTo(std::to_chars(p, p + 32, v).ptr); // shortest round-trip form
}

void JsonWriter::value(bool v) {
    beforeValue();
    v ? append("true", 4) : append("false", 5);
}

void JsonWriter::value(QStringView v) {
    beforeValue();
    writeString(v);
}

void JsonWriter::asciiValue(QLatin1StringView text) {
    beforeValue();
    char* p = room(text.size() + 2);
    *p++ = '"';
    std::memcpy(p, text.data(), text.size());
    p += text.size();
    *p++ = '"';
    advanceTo(p);
}

// UTF-16 to escaped UTF-8 in one pass. A lone surrogate becomes U+FFFD, as QString::toUtf8
// would make it.
void JsonWriter::writeString(QStringView s) {
    static constexpr char kHex[] = "0123456789abcdef";
    // Worst case per UTF-16 unit: six bytes for a \u00XX escape.
    char* p = room(s.size() * 6 + 2);
    *p++ = '"';
    const char16_t* u = s.utf16();
    const char16_t* const end = u + s.size();
    while (u < end) {
        const char16_t c = *u++;
        if (c < 0x80) {
            switch (c) {
            case '"':
                *p++ = '\\', *p++ = '"';
                break;
            case '\\':
                *p++ = '\\', *p++ = '\\';
                break;
            case '/':
                *p++ = '\\', *p++ = '/';
                break;
            case '\n':
                *p++ = '\\', *p++ = 'n';
                break;
            case '\r':
                *p++ = '\\', *p++ = 'r';
                break;
            case '\t':
                *p++ = '\\', *p++ = 't';
                break;
            case '\b':
                *p++ = '\\', *p++ = 'b';
                break;
            case '\f':
                *p++ = '\\', *p++ = 'f';
                break;
            default:
                if (c < 0x20) {
                    std::memcpy(p, "\\u00", 4);
                    p[4] = kHex[c >> 4];
                    p[5] = kHex[c & 0xF];
                    p += 6;
                } else {
                    *p++ = char(c);
                }
            }
        } else if (c < 0x800) {
            *p++ = char(0xC0 | (c >> 6));
            *p++ = char(0x80 | (c & 0x3F));
        } else if (QChar::isHighSurrogate(c) && u < end && QChar::isLowSurrogate(*u)) {
            const char32_t cp = QChar::surrogateToUcs4(c, *u++);
            *p++ = char(0xF0 | (cp >> 18));
            *p++ = char(0x80 | ((cp >> 12) & 0x3F));
            *p++ = char(0x80 | ((cp >> 6) & 0x3F));
            *p++ = char(0x80 | (cp & 0x3F));
        } else {
            const char16_t cp = QChar::isSurrogate(c) ? char16_t(0xFFFD) : c;
            *p++ = char(0xE0 | (cp >> 12));
            *p++ = char(0x80 | ((cp >> 6) & 0x3F));
            *p++ = char(0x80 | (cp & 0x3F));
        }
    }
    *p++ = '"';
    advanceTo(p);
}

} // namespace quill
