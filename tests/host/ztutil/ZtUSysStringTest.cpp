#include "ztutil/ZtUSysString.h"

#include <gtest/gtest.h>

namespace {

TEST(ZtUSysString, WideToUtf8JoinsPairsAndReplacesLoneSurrogates) {
    const std::wstring pair{wchar_t(0xD83D), wchar_t(0xDE00)};
    EXPECT_EQ(ZtUSysString::WideToUtf8(pair), "\xf0\x9f\x98\x80");
    EXPECT_EQ(ZtUSysString::WideToUtf8(std::wstring{wchar_t(0xD800), L'a'}), "\xef\xbf\xbd"
                                                                             "a");
    EXPECT_EQ(ZtUSysString::WideToUtf8(std::wstring{wchar_t(0xDC00)}), "\xef\xbf\xbd");
    EXPECT_EQ(ZtUSysString::WideToUtf8(L"\uffff"), "\xef\xbf\xbf");
}

TEST(ZtUSysString, CompareByCodeUnit) {
    EXPECT_EQ(ZtUSysString::WideStrlen(nullptr), 0u);
    EXPECT_EQ(ZtUSysString::WideStrlen(L"abc"), 3u);
    EXPECT_EQ(ZtUSysString::WideStrncmp(L"abc", L"abd", 2), 0);
    EXPECT_LT(ZtUSysString::WideStrncmp(L"abc", L"abd", 3), 0);
    EXPECT_GT(ZtUSysString::WideStrncmp(L"\u00e9", L"z", 1), 0);
    EXPECT_EQ(ZtUSysString::WideStrncmp(L"ab", L"ab", 10), 0);
}

// File names keep every byte: what is no UTF-8 travels as a lone surrogate and back.
TEST(ZtUSysString, PathsRoundTripWhateverTheirBytes) {
    struct Case {
        const char* what;
        std::string bytes;
        std::wstring wide;
    };
    const Case cases[] = {
        {"ascii", "a/b.tag", L"a/b.tag"},
        {"utf-8", "caf\xc3\xa9.tag", L"caf\u00e9.tag"},
        {"latin-1 byte", "caf\xe9.tag", std::wstring{L'c', L'a', L'f', wchar_t(0xDCE9)} + L".tag"},
        {"cut sequence", "\xe2\x82", {wchar_t(0xDCE2), wchar_t(0xDC82)}},
        {"overlong", "\xc0\xaf", {wchar_t(0xDCC0), wchar_t(0xDCAF)}},
        {"encoded surrogate", "\xed\xb3\xa9", {wchar_t(0xDCED), wchar_t(0xDCB3), wchar_t(0xDCA9)}},
        {"astral", "\xf0\x9f\x98\x80", {wchar_t(0xD83D), wchar_t(0xDE00)}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(ZtUSysString::PathToWide(c.bytes), c.wide) << c.what;
        EXPECT_EQ(ZtUSysString::WideToPath(c.wide), c.bytes) << c.what;
    }
    // Lone surrogates that stand for no byte are no file name's; they become U+FFFD.
    EXPECT_EQ(ZtUSysString::WideToPath(std::wstring{wchar_t(0xDC41), wchar_t(0xD800)}),
              "\xef\xbf\xbd\xef\xbf\xbd");
}

} // namespace
