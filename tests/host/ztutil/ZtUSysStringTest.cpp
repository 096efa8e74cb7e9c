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

} // namespace
