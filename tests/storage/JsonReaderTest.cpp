#include "storage/JsonReader.h"
#include "storage/DataFileCodec.h"

#include <gtest/gtest.h>

namespace quill {
namespace {

// Reads any one document, checking its syntax only.
bool readsAsJson(const QByteArray& text) {
    try {
        JsonReader r(text);
        r.skipValue();
        r.finish();
        return true;
    } catch (const JsonReader::Malformed&) {
        return false;
    }
}

class ValidJson : public ::testing::TestWithParam<const char*> {};

TEST_P(ValidJson, IsRead) {
    EXPECT_TRUE(readsAsJson(QByteArray(GetParam()))) << GetParam();
}

INSTANTIATE_TEST_SUITE_P(
    Corpus, ValidJson,
    ::testing::Values("{}", "[]",
                      " \t\r\n{ \"a\" : [ 1 , -2 , 3.5 , -0 , 0.5e-3 , 1E2 , 2e+1 ] } \n",
                      "[true,false,null]", "{\"a\":{\"b\":{\"c\":[[],{}]}}}",
                      "[\"\\\"\\\\\\/\\b\\f\\n\\r\\t\\u0041\\u00e9\\u4e2d\"]",
                      "[\"\\ud83d\\ude00\"]", "[\"中文 😀\"]", "{\"a\":1,\"a\":2}", "\"text\"", "42",
                      "null", "\xEF\xBB\xBF{}"));

// Some of these pass Qt's own parser; the data file is read by the letter of RFC 8259.
class InvalidJson : public ::testing::TestWithParam<const char*> {};

TEST_P(InvalidJson, IsRefused) {
    EXPECT_FALSE(readsAsJson(QByteArray(GetParam()))) << GetParam();
}

INSTANTIATE_TEST_SUITE_P(
    Corpus, InvalidJson,
    ::testing::Values("", " ", "[1,]", "{\"a\":1,}", "[,1]", "{,}", "['a']", "{a:1}", "[01]",
                      "[+1]", "[.5]", "[1.]", "[1e]", "[1e+]", "[-]", "[--1]", "[NaN]",
                      "[Infinity]", "[1 2]", "{\"a\" 1}", "{\"a\":}", "{\"a\"}", "[1", "{\"a\":1",
                      "]", "[]]", "{}{}", "[] x", "[tru]", "[nul]", "[True]", "[\"a\nb\"]",
                      "[\"a\tb\"]", "[\"\\x41\"]", "[\"\\u12\"]", "[\"\\u12G4\"]", "[\"abc]",
                      "/* c */ {}", "{} // c", "[\"\\\"]", "[\xff]", "[\"\xff\"]", "[\"\xc0\x80\"]",
                      "[\"\xe2\x82\"]", "[\"\xf5\x80\x80\x80\"]", "{\"\xc3\":1}", "{1:2}",
                      // lone surrogates, escaped or in UTF-8, and overlong forms
                      "[\"\\ud800\"]", "[\"\\udc00\"]", "[\"\\ud800\\u0041\"]", "[\"\\ud800x\"]",
                      "[\"\\ud83d\\ud83d\"]", "[\"\xed\xa0\x80\"]", "[\"\xe0\x80\xaf\"]",
                      "[\"\xf0\x80\x80\xaf\"]", "[\"\xf4\x90\x80\x80\"]", "[\"\x80\"]"));

TEST(JsonReader, DeepNestingIsRefusedWithoutExhaustingTheStack) {
    EXPECT_FALSE(readsAsJson(QByteArray(200000, '[')));
    EXPECT_FALSE(readsAsJson(QByteArray(100000, '[') + QByteArray(100000, ']')));
    EXPECT_TRUE(readsAsJson(QByteArray(100, '[') + QByteArray(100, ']')));
}

TEST(JsonReader, DecodesEscapesToTheSameText) {
    JsonReader r(R"(["a\/b \"q\" \\ \u00e9\u4e2d \ud83d\ude00 \t\n\r\b\f \u0000!"])");
    JsonReader::Cursor c;
    r.beginArray(c);
    ASSERT_TRUE(r.nextElement(c));
    EXPECT_EQ(r.readString(),
              QStringLiteral("a/b \"q\" \\ é中 😀 \t\n\r\b\f ") + QChar(0) + QLatin1Char('!'));
    EXPECT_FALSE(r.nextElement(c));
    r.finish();
}

// Fractions and overflows are refused through the data file (DataFileIntegers).
TEST(JsonReader, TellsIntegersFromOtherNumbers) {
    auto integer = [](const char* text) -> std::optional<qint64> {
        try {
            JsonReader r(text);
            const qint64 v = r.readInteger();
            r.finish();
            return v;
        } catch (const JsonReader::Malformed&) {
            return std::nullopt;
        }
    };
    EXPECT_EQ(integer("0"), 0);
    EXPECT_EQ(integer("-0"), 0);
    EXPECT_EQ(integer("30.0"), 30);
    EXPECT_EQ(integer("3e1"), 30);
    EXPECT_EQ(integer("-9223372036854775808"), std::numeric_limits<qint64>::min());
    EXPECT_EQ(integer("9223372036854775807"), std::numeric_limits<qint64>::max());
    for (const char* bad : {"1e-1", "\"1\"", "true", "null", "[1]"})
        EXPECT_EQ(integer(bad), std::nullopt) << bad;
}

TEST(JsonReader, KeysWithEscapesMatchTheirPlainSpelling) {
    // "id" spelt with an escape is still the session's identity key.
    QByteArray text = DataFileCodec::encode(AppSettings{}, {});
    text.replace("\"sessions\" : []", "\"sessio\\u006es\" : []");
    text.replace("\"playlistName\"", "\"playlist\\u004eame\"");
    EXPECT_TRUE(DataFileCodec::decode(text).has_value());
}

} // namespace
} // namespace quill
