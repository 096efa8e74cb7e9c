#include "report/JsonWriter.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

std::string Value(void (*write)(JsonWriter&)) {
    std::string out;
    JsonWriter json(out);
    json.BeginArray(true);
    write(json);
    json.EndArray();
    return out;
}

TEST(JsonWriter, DoublesAreShortestExactAndNonFiniteIsNull) {
    EXPECT_EQ(Value([](JsonWriter& j) {
                  j.Doubles({0.1, 1000, -2.5, 1e-300, -0.0});
              }),
              "[[0.1, 1000, -2.5, 1e-300, 0]]\n");
    EXPECT_EQ(Value([](JsonWriter& j) {
                  j.Double(std::numeric_limits<double>::infinity());
                  j.Double(std::nan(""));
              }),
              "[null, null]\n");
}

// Every string is UTF-8: a lone surrogate of wide text, which UTF-8 can't hold, is
// U+FFFD; a byte of narrow text that begins no UTF-8 sequence (a file name's) is \xNN.
TEST(JsonWriter, EveryStringIsUtf8) {
    EXPECT_EQ(Value([](JsonWriter& j) { j.WideString(L"a\"\\\n\t\x01\u00e9"); }),
              "[\"a\\\"\\\\\\n\\t\\u0001\xc3\xa9\"]\n");
    // U+1F600 as a pair, then a lone high and a lone low surrogate.
    const wchar_t text[] = {L'x', 0xD83D, 0xDE00, 0xD800, L'y', 0xDC00, 0};
    std::string out;
    JsonWriter json(out);
    json.WideString(text);
    EXPECT_EQ(out, "\"x\xf0\x9f\x98\x80\xef\xbf\xbdy\xef\xbf\xbd\"");
    EXPECT_EQ(Value([](JsonWriter& j) {
                  j.String("caf\xe9 \xc3\xa9 \xed\xa0\x80 \xf0\x9f\x98");
                  j.String("\x1b]0;title\x07");
              }),
              "[\"caf\\\\xe9 \xc3\xa9 \\\\xed\\\\xa0\\\\x80 \\\\xf0\\\\x9f\\\\x98\", "
              "\"\\u001b]0;title\\u0007\"]\n");
}

} // namespace
