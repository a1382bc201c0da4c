#include "storage/JsonReader.h"

#include <QStringDecoder>
#include <charconv>
#include <cmath>

namespace quill {

namespace {
// Deeper nesting than any data file has; bounds the recursion of skipValue.
constexpr int kMaxDepth = 512;

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

void appendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += char(cp);
    } else if (cp < 0x800) {
        out += char(0xC0 | (cp >> 6));
        out += char(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += char(0xE0 | (cp >> 12));
        out += char(0x80 | ((cp >> 6) & 0x3F));
        out += char(0x80 | (cp & 0x3F));
    } else {
        out += char(0xF0 | (cp >> 18));
        out += char(0x80 | ((cp >> 12) & 0x3F));
        out += char(0x80 | ((cp >> 6) & 0x3F));
        out += char(0x80 | (cp & 0x3F));
    }
}

// Length of the well-formed UTF-8 sequence at p (lead byte >= 0x80), or 0.
int utf8SequenceLength(const unsigned char* p, const unsigned char* end) {
    const unsigned char c = p[0];
    int length;
    unsigned char low = 0x80, high = 0xBF; // allowed range of the second byte
    if (c >= 0xC2 && c <= 0xDF) {
        length = 2;
    } else if (c >= 0xE0 && c <= 0xEF) {
        length = 3;
        if (c == 0xE0)
            low = 0xA0; // no overlong forms
        else if (c == 0xED)
            high = 0x9F; // no surrogates
    } else if (c >= 0xF0 && c <= 0xF4) {
        length = 4;
        if (c == 0xF0)
            low = 0x90;
        else if (c == 0xF4)
            high = 0x8F; // nothing above U+10FFFF
    } else {
        return 0;
    }
    if (end - p < length || p[1] < low || p[1] > high)
        return 0;
    for (int i = 2; i < length; ++i)
        if ((p[i] & 0xC0) != 0x80)
            return 0;
    return length;
}
} // namespace

int JsonReader::hexValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

JsonReader::JsonReader(QByteArrayView text) : m_p(text.data()), m_end(text.data() + text.size()) {
    // A byte-order mark some editors put in front of UTF-8 text.
    if (text.startsWith("\xEF\xBB\xBF"))
        m_p += 3;
}

void JsonReader::fail() {
    throw Malformed{};
}

void JsonReader::skipSpace() {
    while (m_p < m_end && (*m_p == ' ' || *m_p == '\n' || *m_p == '\r' || *m_p == '\t'))
        ++m_p;
}

char JsonReader::next() {
    skipSpace();
    if (m_p == m_end)
        fail();
    return *m_p;
}

void JsonReader::expect(char c) {
    if (next() != c)
        fail();
    ++m_p;
}

void JsonReader::expectWord(const char* word, qsizetype length) {
    if (m_end - m_p < length || QByteArrayView(m_p, length) != QByteArrayView(word, length))
        fail();
    m_p += length;
}

JsonReader::Kind JsonReader::peek() {
    switch (next()) {
    case 'n':
        return Kind::null;
    case 't':
    case 'f':
        return Kind::boolean;
    case '"':
        return Kind::string;
    case '[':
        return Kind::array;
    case '{':
        return Kind::object;
    default:
        if (*m_p == '-' || isDigit(*m_p))
            return Kind::number;
        fail();
    }
}

bool JsonReader::readNull() {
    if (next() != 'n')
        return false;
    expectWord("null", 4);
    return true;
}

bool JsonReader::readBool() {
    const char c = next();
    if (c == 't') {
        expectWord("true", 4);
        return true;
    }
    if (c == 'f') {
        expectWord("false", 5);
        return false;
    }
    fail();
}

QByteArrayView JsonReader::numberToken(bool& integral) {
    if (peek() != Kind::number)
        fail();
    const char* start = m_p;
    if (*m_p == '-')
        ++m_p;
    if (m_p == m_end || !isDigit(*m_p))
        fail();
    if (*m_p == '0')
        ++m_p; // no leading zeros
    else
        while (m_p < m_end && isDigit(*m_p))
            ++m_p;
    integral = true;
    if (m_p < m_end && *m_p == '.') {
        integral = false;
        ++m_p;
        if (m_p == m_end || !isDigit(*m_p))
            fail();
        while (m_p < m_end && isDigit(*m_p))
            ++m_p;
    }
    if (m_p < m_end && (*m_p == 'e' || *m_p == 'E')) {
        integral = false;
        ++m_p;
        if (m_p < m_end && (*m_p == '+' || *m_p == '-'))
            ++m_p;
        if (m_p == m_end || !isDigit(*m_p))
            fail();
        while (m_p < m_end && isDigit(*m_p))
            ++m_p;
    }
    return QByteArrayView(start, m_p - start);
}

qint64 JsonReader::readInteger() {
    bool integral;
    const QByteArrayView token = numberToken(integral);
    if (integral) {
        qint64 value;
        const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), value);
        if (error != std::errc() || end != token.data() + token.size())
            fail(); // out of range
        return value;
    }
    // 1.0 or 1e3 name whole numbers too, as long as a double holds them exactly.
    double value;
    const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), value);
    constexpr double kExact = 9007199254740992.0; // 2^53
    if (error != std::errc() || std::trunc(value) != value || !(std::abs(value) < kExact))
        fail();
    return static_cast<qint64>(value);
}

double JsonReader::readDouble() {
    bool integral;
    const QByteArrayView token = numberToken(integral);
    double value;
    const auto [end, error] = std::from_chars(token.data(), token.data() + token.size(), value);
    if (error != std::errc() || end != token.data() + token.size())
        fail(); // beyond the range of a double
    return value;
}

QByteArrayView JsonReader::stringBytes(std::string& scratch) {
    expect('"');
    const char* start = m_p;
    // Fast path: plain text up to the closing quote is returned in place.
    while (m_p < m_end) {
        const auto c = static_cast<unsigned char>(*m_p);
        if (c == '"') {
            const QByteArrayView view(start, m_p - start);
            ++m_p;
            return view;
        }
        if (c == '\\' || c < 0x20)
            break;
        if (c >= 0x80) {
            const int n = utf8SequenceLength(reinterpret_cast<const unsigned char*>(m_p),
                                             reinterpret_cast<const unsigned char*>(m_end));
            if (n == 0)
                fail();
            m_p += n;
        } else {
            ++m_p;
        }
    }
    // Escapes: decode into the scratch buffer.
    scratch.assign(start, m_p - start);
    while (true) {
        if (m_p == m_end)
            fail();
        const auto c = static_cast<unsigned char>(*m_p);
        if (c == '"') {
            ++m_p;
            return QByteArrayView(scratch.data(), qsizetype(scratch.size()));
        }
        if (c < 0x20)
            fail(); // control characters must be escaped
        if (c >= 0x80) {
            const int n = utf8SequenceLength(reinterpret_cast<const unsigned char*>(m_p),
                                             reinterpret_cast<const unsigned char*>(m_end));
            if (n == 0)
                fail();
            scratch.append(m_p, n);
            m_p += n;
            continue;
        }
        if (c != '\\') {
            scratch += char(c);
            ++m_p;
            continue;
        }
        if (++m_p == m_end)
            fail();
        const char e = *m_p++;
        switch (e) {
        case '"':
            scratch += '"';
            break;
        case '\\':
            scratch += '\\';
            break;
        case '/':
            scratch += '/';
            break;
        case 'b':
            scratch += '\b';
            break;
        case 'f':
            scratch += '\f';
            break;
        case 'n':
            scratch += '\n';
            break;
        case 'r':
            scratch += '\r';
            break;
        case 't':
            scratch += '\t';
            break;
        case 'u': {
            auto hex4 = [this]() -> char32_t {
                if (m_end - m_p < 4)
                    fail();
                char32_t v = 0;
                for (int i = 0; i < 4; ++i) {
                    const int h = hexValue(m_p[i]);
                    if (h < 0)
                        fail();
                    v = v * 16 + char32_t(h);
                }
                m_p += 4;
                return v;
            };
            char32_t cp = hex4();
            if (cp >= 0xDC00 && cp <= 0xDFFF)
                fail(); // a low surrogate without its high half
            if (cp >= 0xD800 && cp <= 0xDBFF) {
                if (m_end - m_p < 2 || m_p[0] != '\\' || m_p[1] != 'u')
                    fail();
                m_p += 2;
                const char32_t low = hex4();
                if (low < 0xDC00 || low > 0xDFFF)
                    fail();
                cp = 0x10000 + ((cp - 0xD800) << 10) + (low - 0xDC00);
            }
            appendUtf8(scratch, cp);
            break;
        }
        default:
            fail();
        }
    }
}

QByteArrayView JsonReader::readUtf8() {
    return stringBytes(m_valueScratch);
}

QString JsonReader::readString() {
    return decodeUtf8(readUtf8());
}

QString JsonReader::decodeUtf8(QByteArrayView bytes) {
    if (!bytes.startsWith("\xEF\xBB\xBF"))
        return QString::fromUtf8(bytes);
    // fromUtf8 drops a leading byte order mark, which inside a string is the user's text.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom |
                                                     QStringDecoder::Flag::Stateless);
    return decoder.decode(bytes);
}

void JsonReader::enter() {
    if (++m_depth > kMaxDepth)
        fail();
}

void JsonReader::beginObject(Cursor& cursor) {
    expect('{');
    enter();
    cursor.first = true;
}

bool JsonReader::nextMember(Cursor& cursor, QByteArrayView& key) {
    if (!nextItem(cursor, '}'))
        return false;
    key = stringBytes(m_keyScratch);
    expect(':');
    return true;
}

void JsonReader::beginArray(Cursor& cursor) {
    expect('[');
    enter();
    cursor.first = true;
}

bool JsonReader::nextElement(Cursor& cursor) {
    return nextItem(cursor, ']');
}

bool JsonReader::nextItem(Cursor& cursor, char close) {
    const char c = next();
    if (c == close) {
        ++m_p;
        --m_depth;
        return false;
    }
    if (!cursor.first) {
        if (c != ',')
            fail();
        ++m_p;
    }
    cursor.first = false;
    return true;
}

void JsonReader::skipValue() {
    Cursor cursor;
    switch (peek()) {
    case Kind::null:
        readNull();
        break;
    case Kind::boolean:
        readBool();
        break;
    case Kind::number: {
        bool integral;
        numberToken(integral);
        break;
    }
    case Kind::string:
        readUtf8();
        break;
    case Kind::array:
        beginArray(cursor);
        while (nextElement(cursor))
            skipValue();
        break;
    case Kind::object: {
        beginObject(cursor);
        QByteArrayView key;
        while (nextMember(cursor, key))
            skipValue();
        break;
    }
    }
}

void JsonReader::finish() {
    skipSpace();
    if (m_p != m_end)
        fail();
}

} // namespace quill
