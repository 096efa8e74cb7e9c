#include "DriTestSupport.h"

#include "loader/ZtOdPdsDriValues.h"
#include "ztutil/ZtUWideString.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cwchar>

namespace {

// Nine numbers in any layout set the rows; fewer leave the matrix as it was.
TEST(ZtOdPdsScanTransform, NineNumbersSetTheRows) {
    const ZtLMatrix3f before = Rows(9, 8, 7, 6, 5, 4, 3, 2, 1);
    const ZtLMatrix3f identity;
    struct Case {
        const wchar_t* text;
        bool read;
        ZtLMatrix3f expected;
    };
    const Case cases[] = {
        {L"1 2 3 4 5 6 7 8 9", true, Rows(1, 2, 3, 4, 5, 6, 7, 8, 9)},
        {L"\n  1 2 3\n4 5 6\r\n7 8 9\n", true, Rows(1, 2, 3, 4, 5, 6, 7, 8, 9)},
        {L"\t-1\t+2.5 3e2 4E-1 .5 6. -7.25e+1 0 0", true,
         Rows(-1, 2.5, 300, 0.4, 0.5, 6, -72.5, 0, 0)},
        // A tenth number and text behind the ninth are not read.
        {L"1 0 0 0 1 0 0 0 1 99", true, identity},
        {L"1 0 0 0 1 0 0 0 1 trailing text", true, identity},
        {L"1 0 0 0 1 0 0 0 1x", true, identity},
        // Whatever forms the conversion takes.
        {L"0x10 0 0 0 1 0 0 0 1", true, Rows(16, 0, 0, 0, 1, 0, 0, 0, 1)},
        {L"", false, before},
        {L"   ", false, before},
        {L"1 2 3 4 5 6 7 8", false, before},
        {L"1 2 3 4 x 6 7 8 9", false, before},
        {L"a b c d e f g h i", false, before},
        {L"1,2,3,4,5,6,7,8,9", false, before},
        {L"1 2 3 4 5 6 7 8 -", false, before},
    };
    for (const Case& c : cases) {
        ZtLMatrix3f m = before;
        EXPECT_EQ(ZtOdPdsScanTransform(ZtUWideStringBuffer(c.text), &m), c.read) << c.text;
        EXPECT_EQ(m, c.expected) << c.text;
    }
}

TEST(ZtOdPdsScanTransform, NumbersBeyondADoubleAreWhatTheConversionGives) {
    ZtLMatrix3f m;
    ASSERT_TRUE(ZtOdPdsScanTransform(ZtUWideStringBuffer(L"1e999 -1e999 1e-999 0 1 0 0 0 1"), &m));
    EXPECT_EQ(m.Get(0, 0), std::wcstod(L"1e999", nullptr));
    EXPECT_EQ(m.Get(0, 1), std::wcstod(L"-1e999", nullptr));
    EXPECT_EQ(m.Get(0, 2), std::wcstod(L"1e-999", nullptr));
    EXPECT_TRUE(std::isinf(m.Get(0, 0)));
}

TEST(ZtOdPdsScanPoint, ThreeNumbersSetThePoint) {
    struct Case {
        const wchar_t* text;
        bool read;
        ZtLPos3f expected;
    };
    const Case cases[] = {
        {L"10 20 30", true, {10, 20, 30}}, {L"\n -1.5\n2e3 \t 0 rest", true, {-1.5, 2000, 0}},
        {L"1 2 3 4", true, {1, 2, 3}},     {L"1 2", false, {7, 7, 7}},
        {L"", false, {7, 7, 7}},           {L"1 two 3", false, {7, 7, 7}},
    };
    for (const Case& c : cases) {
        ZtLPos3f p(7, 7, 7);
        EXPECT_EQ(ZtOdPdsScanPoint(ZtUWideStringBuffer(c.text), &p), c.read) << c.text;
        EXPECT_EQ(p, c.expected) << c.text;
    }
}

TEST(ZtOdPdsFindMasterUnit, AbbreviationsAreTrimmedAndComparedInLowerCase) {
    using U = ZtOaUnit;
    const std::pair<const wchar_t*, U::Linear> cases[] = {
        {L"m", U::kMetres},         {L"cm", U::kCentimetres}, {L"mm", U::kMillimetres},
        {L"ft", U::kFeet},          {L"'", U::kFeet},         {L"in", U::kInches},
        {L"\"", U::kInches},        {L"yd", U::kYards},       {L"km", U::kKilometres},
        {L"mi", U::kMiles},         {L"um", U::kMicrometres}, {L"mil", U::kMils},
        {L"ui", U::kMicroinches},   {L" FT ", U::kFeet},      {L"MIL", U::kMils},
        {L"\n\tIn\r\n", U::kInches}};
    for (const auto& [text, unit] : cases)
        EXPECT_EQ(ZtOdPdsFindMasterUnit(ZtUWideStringBuffer(text)), unit) << text;
    // Anything else is metres.
    for (const wchar_t* text : {L"foot", L"", L"f t", L"ft.", L"''", L"\u00b5m"})
        EXPECT_EQ(ZtOdPdsFindMasterUnit(ZtUWideStringBuffer(text)), U::kMetres) << text;
}

} // namespace
