#pragma once

#include <QByteArray>
#include <QString>

namespace quill {

/// Streams pretty-printed JSON in the data file's layout: two-space indent, " : " between
/// key and value, "\/" for the slash, UTF-8 text unescaped. Callers emit keys in sorted order.
class JsonWriter {
public:
    explicit JsonWriter(QByteArray& out) : m_out(out) {}

    void beginObject();
    void endObject();
    void beginArray();
    void endArray();
    void key(const char* latin1Key);
    void key(const QString& key);
    void value(qint64 v);
    void value(double v);
    void value(bool v);
    void value(const QString& v);
    /// Plain ASCII text that needs no escaping (dates, UUIDs).
    void asciiValue(const char* text, qsizetype length);

private:
    void beforeValue();
    void newline();
    void writeString(const QString& s);

    QByteArray& m_out;
    int m_depth = 0;
    bool m_firstInContainer = true;
    bool m_afterKey = false;
};

} // namespace quill
