#include "ztutil/ZtUWideString.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<std::wstring> Tokens(const wchar_t* text, const wchar_t* delimiters) {
    std::vector<std::wstring> tokens;
    ZtUWideStringTokeniser tokeniser(text, delimiters);
    ZtUWideStringBuffer token;
    while (tokeniser.MoreTokens() && tokeniser.NextToken(&token))
        tokens.push_back(token.Str());
    return tokens;
}

TEST(ZtUWideStringTokeniser, HandsOutNonEmptyPiecesOnly) {
    struct Case {
        const wchar_t* text;
        std::vector<std::wstring> tokens;
    };
    const Case cases[] = {
        {L"a,b,c", {L"a", L"b", L"c"}}, {L",a,,b,", {L"a", L"b"}},        {L"", {}}, {L",,,", {}},
        {L" , x", {L" ", L" x"}},       {L"3, 7,9", {L"3", L" 7", L"9"}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(Tokens(c.text, L","), c.tokens) << c.text;
}

TEST(ZtUWideStringBuffer, TrimsHostWhiteSpaceOnly) {
    ZtUWideStringBuffer b(L"\t\n\v\f\r a b \u00a0 \r\n");
    b.Trim();
    EXPECT_EQ(b.Str(), L"a b \u00a0");
}

TEST(ZtUWideStringBuffer, ReadsClampAtTheEnd) {
    ZtUWideStringBuffer b(L"FIND Level"), out(L"old");
    EXPECT_EQ(b.CharAtPos(9), L'l');
    EXPECT_EQ(b.CharAtPos(10), 0);
    b.ExtractSubString(0, 4, &out);
    EXPECT_EQ(out.Str(), L"FIND");
    b.ExtractSubString(5, 100, &out);
    EXPECT_EQ(out.Str(), L"Level");
    b.ExtractSubString(50, 2, &out);
    EXPECT_TRUE(out.IsEmpty());
}

TEST(ZtUWideStringBuffer, FindReplaceAndCase) {
    ZtUWideStringBuffer b(L"a\r\nb\r\nc");
    EXPECT_EQ(b.Find(L"\r\n", 0), b.GetString() + 1);
    EXPECT_EQ(b.Find(L"\r\n", 3), b.GetString() + 4);
    EXPECT_EQ(b.Find(L"x", 0), nullptr);
    EXPECT_EQ(b.Replace(L"\r\n", L"\n", 1), 2);
    EXPECT_EQ(b.Str(), L"a\nb\nc");
    EXPECT_EQ(b.Replace(L"\n", L"--", 0), 1);
    EXPECT_EQ(b.Str(), L"a--b\nc");
    ZtUWideStringBuffer u(L"FT \u00c4");
    u.LowerCase();
    EXPECT_EQ(u.Str(), L"ft \u00c4");
}

TEST(ZtUWideStringBuffer, FormatTakesWideStringsAndPortableIntegers) {
    ZtUWideStringBuffer b;
    b.Format(L"Tag View %llu", 18446744073709551615ull);
    EXPECT_EQ(b.Str(), L"Tag View 18446744073709551615");
    b.Format(L"%s=%d [%-4s] %c%%", L"Level", -3, L"ab", L'\u00e9');
    EXPECT_EQ(b.Str(), L"Level=-3 [ab  ] \u00e9%");
    b.Format(L"%ls %lld", L"x", -9223372036854775807LL - 1);
    EXPECT_EQ(b.Str(), L"x -9223372036854775808");
    const std::wstring big(5000, L'z');
    b.Format(L"<%s>", big.c_str());
    EXPECT_EQ(b.GetLength(), 5002u);
}

} // namespace
