#pragma once

#include <QByteArray>
#include <QLatin1StringView>
#include <QString>

namespace quill {

/// Streams pretty-printed JSON in the data file's layout: two-space indent, " : " between
/// key and value, "\/" for the slash, UTF-8 text unescaped. Callers emit keys in sorted order.
/// Writes straight into one growing buffer: a long history is megabytes of small tokens.
class JsonWriter {
public:
    explicit JsonWriter(qsizetype expectedSize = 0);

    void beginObject();
    void endObject();
    void beginArray();
    void endArray();
    /// A key of plain ASCII that needs no escaping.
    void key(QLatin1StringView asciiKey);
    void key(const char* asciiKey) { key(QLatin1StringView(asciiKey)); }
    void key(const QString& key);
    void value(qint64 v);
    void value(double v);
    void value(bool v);
    void value(QStringView v);
    /// Plain ASCII text that needs no escaping (dates, UUIDs, raw values).
    void asciiValue(QLatin1StringView text);

    /// The finished text; the writer is empty afterwards.
    QByteArray take();

private:
    /// Room for at least `n` more bytes; returns where they go.
    char* room(qsizetype n);
    void advanceTo(const char* end) { m_size = end - m_out.constData(); }
    void append(const char* text, qsizetype n);
    void beforeMember();
    void beforeValue();
    void newline();
    void writeString(QStringView s);

    QByteArray m_out;
    qsizetype m_size = 0;
    int m_depth = 0;
    bool m_firstInContainer = true;
    bool m_afterKey = false;
};

} // namespace quill
