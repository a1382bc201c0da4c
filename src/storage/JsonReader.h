#pragma once

#include <QByteArrayView>
#include <QString>
#include <string>

namespace quill {

/// A strict pull reader over UTF-8 JSON text (RFC 8259): the caller asks for the value it
/// expects and any mismatch, syntax error, invalid UTF-8 or lone surrogate throws
/// JsonReader::Malformed. Decoding a history straight into records this way is several times
/// faster than building a QJsonDocument first, and it sees the literal text of every number,
/// so an overflowing integer cannot pass as a rounded double.
class JsonReader {
public:
    struct Malformed {};
    enum class Kind { null, boolean, number, string, array, object };

    /// Iteration state of one object or array.
    struct Cursor {
        bool first = true;
    };

    explicit JsonReader(QByteArrayView text);

    /// The kind of the next value, without consuming it.
    Kind peek();
    /// Consumes a `null` and returns true, or leaves anything else and returns false.
    bool readNull();
    bool readBool();
    /// A number whose value is a whole number that fits in 64 bits.
    qint64 readInteger();
    double readDouble();
    QString readString();
    /// UTF-8 as text, keeping a leading byte order mark (it is part of the text).
    static QString decodeUtf8(QByteArrayView bytes);
    /// The value of one hexadecimal digit in either case, or -1 for any other character.
    static int hexValue(char c);
    /// The string's UTF-8 bytes, valid until the next read.
    QByteArrayView readUtf8();
    /// Skips one value of any kind, checking its syntax.
    void skipValue();

    void beginObject(Cursor& cursor);
    /// Steps to the next member; false at the end of the object. The key's UTF-8 bytes stay
    /// valid until the member's value is read.
    bool nextMember(Cursor& cursor, QByteArrayView& key);
    void beginArray(Cursor& cursor);
    /// Steps to the next element; false at the end of the array.
    bool nextElement(Cursor& cursor);

    /// Only white space may follow the top-level value.
    void finish();

private:
    /// Steps past the separator before the next item, or past `close` when there is none.
    bool nextItem(Cursor& cursor, char close);
    [[noreturn]] static void fail();
    void skipSpace();
    char next(); ///< the next significant character, not consumed
    void expect(char c);
    void expectWord(const char* word, qsizetype length);
    QByteArrayView stringBytes(std::string& scratch);
    /// Validates the token and returns it; sets whether it has a fraction or an exponent.
    QByteArrayView numberToken(bool& integral);
    void enter();

    const char* m_p;
    const char* m_end;
    int m_depth = 0;
    std::string m_valueScratch;
    std::string m_keyScratch;
};

} // namespace quill
