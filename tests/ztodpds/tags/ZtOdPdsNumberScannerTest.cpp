#include "tags/ZtOdPdsNumberScanner.h"

#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cstdint>
#include <cwchar>
#include <limits>
#include <string>

namespace {

TEST(ZtOdPdsNumberScanner, IntegersSaturateAtTheirFieldsLimits) {
    using Limits64 = std::numeric_limits<std::int64_t>;
    const struct {
        const wchar_t* text;
        std::int64_t int64;
        std::int32_t int32;
    } cases[] = {
        {L" 42", 42, 42},
        {L"-7x", -7, -7},
        {L"+000000000000000000000000009", 9, 9},
        {L"2147483647", 2147483647, 2147483647},
        {L"2147483648", 2147483648, 2147483647},
        {L"-2147483648", -2147483648LL, -2147483647 - 1},
        {L"-2147483649", -2147483649LL, -2147483647 - 1},
        {L"999999999999999999", 999999999999999999, 2147483647},
        {L"9223372036854775807", Limits64::max(), 2147483647},
        {L"9223372036854775808", Limits64::max(), 2147483647},
        {L"-9223372036854775808", Limits64::min(), -2147483647 - 1},
        {L"-99999999999999999999999", Limits64::min(), -2147483647 - 1},
    };
    for (const auto& c : cases) {
        std::int64_t wide = 0;
        std::int32_t narrow = 0;
        ZtOdPdsNumberScanner scan64(c.text);
        ZtOdPdsNumberScanner scan32(c.text);
        EXPECT_TRUE(scan64.Int64(&wide));
        EXPECT_TRUE(scan32.Int32(&narrow));
        EXPECT_EQ(wide, c.int64) << c.text;
        EXPECT_EQ(narrow, c.int32) << c.text;
    }
}

// Every form of a floating-point number reads as wcstod reads it, to the bit, and the
// scanner stands where wcstod stops.
TEST(ZtOdPdsNumberScanner, DoublesReadAsTheCLibraryReadsThem) {
    ASSERT_NE(std::setlocale(LC_NUMERIC, "C"), nullptr);
    const wchar_t* const texts[] = {
        L"0.000000 1",
        L"  -0.0",
        L"+3.25",
        L".5",
        L"5.",
        L"7",
        L"0.1",
        L"123456.789012345",
        L"9007199254740993",
        L"9007199254740991.5",
        L"0.30000000000000004441",
        // 2^64 + 1, whose digits would wrap 64 bits to 1.
        L"18446744073709551617",
        L"1e3",
        L"1.5E-2",
        L"0x1p4",
        L"inf",
        L"-nan",
        L"1.2.3",
    };
    for (const wchar_t* text : texts) {
        wchar_t* end = nullptr;
        const double expected = std::wcstod(text, &end);
        double read = -1.0;
        ZtOdPdsNumberScanner scan(text);
        ASSERT_TRUE(scan.Double(&read)) << text;
        EXPECT_EQ(std::bit_cast<std::uint64_t>(read), std::bit_cast<std::uint64_t>(expected))
            << text;
        // Where the scanner stands shows in what the next number reads.
        std::int64_t next = -1;
        ZtOdPdsNumberScanner rest(end);
        std::int64_t expectedNext = -1;
        const bool expectedMore = rest.Int64(&expectedNext);
        EXPECT_EQ(scan.Int64(&next), expectedMore) << text;
        EXPECT_EQ(next, expectedNext) << text;
    }
    for (const wchar_t* text : {L"", L"-", L".", L" x1"}) {
        double read = 2.0;
        ZtOdPdsNumberScanner scan(text);
        EXPECT_FALSE(scan.Double(&read)) << text;
        EXPECT_EQ(read, 2.0);
    }
}

} // namespace
