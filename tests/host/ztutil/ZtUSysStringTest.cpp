#include "ztutil/ZtUSysString.h"

#include <gtest/gtest.h>

namespace {

TEST(ZtUSysString, Utf8ToWideKeepsInvalidBytesAsLatin1) {
    struct Case {
        std::string utf8;
        std::wstring wide;
    };
    const Case cases[] = {
        {"abc", L"abc"},
        {"\xc3\xa9", L"\u00e9"},
        {"\xe2\x82\xac", L"\u20ac"},
        {"\xf0\x9f\x98\x80", std::wstring{wchar_t(0xD83D), wchar_t(0xDE00)}},
        {"\xe9t\xe9", L"\u00e9t\u00e9"},                   // Latin-1 bytes
        {"\xc0\xaf", L"\u00c0\u00af"},                     // overlong
        {"\xed\xa0\x80", L"\u00ed\u00a0\u0080"},           // encoded surrogate
        {"\xf4\x90\x80\x80", L"\u00f4\u0090\u0080\u0080"}, // beyond U+10FFFF
        {"\xe2\x82", L"\u00e2\u0082"},                     // cut short
    };
    for (const Case& c : cases)
        EXPECT_EQ(ZtUSysString::Utf8ToWide(c.utf8), c.wide) << c.utf8;
}

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

} // namespace
