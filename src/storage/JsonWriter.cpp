#include "storage/JsonWriter.h"

#include <charconv>
#include <cmath>

namespace quill {

void JsonWriter::newline() {
    m_out.append('\n');
    for (int i = 0; i < m_depth; ++i)
        m_out.append("  ", 2);
}

void JsonWriter::beforeValue() {
    if (m_afterKey) {
        m_afterKey = false;
        return;
    }
    if (m_depth > 0) {
        if (!m_firstInContainer)
            m_out.append(',');
        newline();
    }
    m_firstInContainer = false;
}

void JsonWriter::beginObject() {
    beforeValue();
    m_out.append('{');
    ++m_depth;
    m_firstInContainer = true;
}

void JsonWriter::endObject() {
    --m_depth;
    if (!m_firstInContainer)
        newline();
    m_out.append('}');
    m_firstInContainer = false;
}

void JsonWriter::beginArray() {
    beforeValue();
    m_out.append('[');
    ++m_depth;
    m_firstInContainer = true;
}

void JsonWriter::endArray() {
    --m_depth;
    if (!m_firstInContainer)
        newline();
    m_out.append(']');
    m_firstInContainer = false;
}

void JsonWriter::key(const char* latin1Key) {
    if (!m_firstInContainer)
        m_out.append(',');
    newline();
    m_firstInContainer = false;
    m_out.append('"');
    m_out.append(latin1Key);
    m_out.append("\" : ", 4);
    m_afterKey = true;
}

void JsonWriter::key(const QString& k) {
    if (!m_firstInContainer)
        m_out.append(',');
    newline();
    m_firstInContainer = false;
    writeString(k);
    m_out.append(" : ", 3);
    m_afterKey = true;
}

void JsonWriter::value(qint64 v) {
    beforeValue();
    char buf[24];
    auto res = std::to_chars(buf, buf + sizeof buf, v);
    m_out.append(buf, res.ptr - buf);
}

void JsonWriter::value(double v) {
    beforeValue();
    if (!std::isfinite(v)) { // JSON has no such numbers; callers filter them out first
        m_out.append('0');
        return;
    }
    char buf[32];
    auto res = std::to_chars(buf, buf + sizeof buf, v); // shortest round-trip form
    m_out.append(buf, res.ptr - buf);
}

void JsonWriter::value(bool v) {
    beforeValue();
    m_out.append(v ? "true" : "false");
}

void JsonWriter::value(const QString& v) {
    beforeValue();
    writeString(v);
}

void JsonWriter::asciiValue(const char* text, qsizetype length) {
    beforeValue();
    m_out.append('"');
    m_out.append(text, length);
    m_out.append('"');
}

void JsonWriter::writeString(const QString& s) {
    static constexpr char kHex[] = "0123456789abcdef";
    m_out.append('"');
    const QByteArray utf8 = s.toUtf8();
    const char* p = utf8.constData();
    const qsizetype n = utf8.size();
    qsizetype runStart = 0;
    auto flush = [&](qsizetype end) {
        if (end > runStart)
            m_out.append(p + runStart, end - runStart);
    };
    for (qsizetype i = 0; i < n; ++i) {
        const auto c = static_cast<unsigned char>(p[i]);
        const char* esc = nullptr;
        switch (c) {
        case '"':
            esc = "\\\"";
            break;
        case '\\':
            esc = "\\\\";
            break;
        case '/':
            esc = "\\/";
            break;
        case '\n':
            esc = "\\n";
            break;
        case '\r':
            esc = "\\r";
            break;
        case '\t':
            esc = "\\t";
            break;
        case '\b':
            esc = "\\b";
            break;
        case '\f':
            esc = "\\f";
            break;
        default:
            break;
        }
        if (esc) {
            flush(i);
            m_out.append(esc);
            runStart = i + 1;
        } else if (c < 0x20) {
            flush(i);
            const char u[] = {'\\', 'u', '0', '0', kHex[c >> 4], kHex[c & 0xF]};
            m_out.append(u, 6);
            runStart = i + 1;
        }
    }
    flush(n);
    m_out.append('"');
}

} // namespace quill
