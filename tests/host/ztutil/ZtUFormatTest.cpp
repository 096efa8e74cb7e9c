#include "ztutil/ZtUFormat.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

namespace {

std::wstring Format(const wchar_t* format, ...) {
    std::wstring out = L"left over";
    std::va_list args;
    va_start(args, format);
    ZtUFormatV(out, format, args);
    va_end(args);
    return out;
}

// Plain conversions are written without the C library, the others with it; both must
// give what the C library gives, at the edges of every integer type too.
TEST(ZtUFormat, WritesWhatTheCLibraryWrites) {
    const wchar_t* none = nullptr;
    const struct {
        std::wstring got;
        std::wstring want;
    } cases[] = {
        {Format(L"plain text"), L"plain text"},
        {Format(L""), L""},
        {Format(L"%d|%i|%u", INT_MIN, INT_MAX, UINT_MAX), L"-2147483648|2147483647|4294967295"},
        {Format(L"%lld %llu", LLONG_MIN, ULLONG_MAX), L"-9223372036854775808 18446744073709551615"},
        {Format(L"%ld/%lu", -7L, 0UL), L"-7/0"},
        {Format(L"x{%s}%c%%", L"caf\u00e9", L'!'), L"x{caf\u00e9}!%"},
        {Format(L"[%s]", none), L"[(null)]"},
        {Format(L"text{%d\n%s}}\n", 3, L"a\nb"), L"text{3\na\nb}}\n"},
        // Flags, widths, precisions and floating point go the C library's way.
        {Format(L"%5d|%-3d|%03d|%.2f|%f", 42, 7, 5, 1.005, 0.0), L"   42|7  |005|1.00|0.000000"},
        {Format(L"%x %lx", 255u, 4096ul), L"ff 1000"},
        {Format(L"%5s|%ls", L"ab", L"cd"), L"   ab|cd"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(c.got, c.want);
    EXPECT_EQ(Format(nullptr), L"");
}

} // namespace
