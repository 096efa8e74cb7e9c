#include "loader/ZtOdPdsDriValues.h"
#include "ztutil/ZtUWideString.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cwchar>

namespace {

ZtLMatrix3f Rows(double a, double b, double c, double d, double e, double f, double g, double h,
                 double i) {
    ZtLMatrix3f m;
    m.SetValue(a, b, c, d, e, f, g, h, i);
    return m;
}

TEST(ZtOdPdsScanTransform, NineNumbersInAnyLayoutSetTheRows) {
    struct Case {
        const wchar_t* text;
        ZtLMatrix3f expected;
    };
    const Case cases[] = {
        {L"1 2 3 4 5 6 7 8 9", Rows(1, 2, 3, 4, 5, 6, 7, 8, 9)},
        {L"\n  1 2 3\n4 5 6\r\n7 8 9\n", Rows(1, 2, 3, 4, 5, 6, 7, 8, 9)},
        {L"\t-1\t+2.5 3e2 4E-1 .5 6. -7.25e+1 0 0", Rows(-1, 2.5, 300, 0.4, 0.5, 6, -72.5, 0, 0)},
        // A tenth number and text behind the ninth are not read.
        {L"1 0 0 0 1 0 0 0 1 99", Rows(1, 0, 0, 0, 1, 0, 0, 0, 1)},
        {L"1 0 0 0 1 0 0 0 1 trailing text", Rows(1, 0, 0, 0, 1, 0, 0, 0, 1)},
        {L"1 0 0 0 1 0 0 0 1x", Rows(1, 0, 0, 0, 1, 0, 0, 0, 1)},
        // Whatever forms the conversion takes.
        {L"0x10 0 0 0 1 0 0 0 1", Rows(16, 0, 0, 0, 1, 0, 0, 0, 1)},
    };
    for (const Case& c : cases) {
        ZtLMatrix3f m = Rows(9, 9, 9, 9, 9, 9, 9, 9, 9);
        EXPECT_TRUE(ZtOdPdsScanTransform(ZtUWideStringBuffer(c.text), &m)) << c.text;
        EXPECT_EQ(m, c.expected) << c.text;
    }
}

TEST(ZtOdPdsScanTransform, FewerThanNineNumbersLeaveTheMatrix) {
    const wchar_t* cases[] = {
        L"",
        L"   ",
        L"1 2 3 4 5 6 7 8",
        L"1 2 3 4 x 6 7 8 9",
        L"a b c d e f g h i",
        L"1,2,3,4,5,6,7,8,9",
        L"1 2 3 4 5 6 7 8 -",
    };
    for (const wchar_t* text : cases) {
        ZtLMatrix3f m = Rows(9, 8, 7, 6, 5, 4, 3, 2, 1);
        EXPECT_FALSE(ZtOdPdsScanTransform(ZtUWideStringBuffer(text), &m)) << text;
        EXPECT_EQ(m, Rows(9, 8, 7, 6, 5, 4, 3, 2, 1)) << text;
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
    struct Case {
        const wchar_t* text;
        ZtOaUnit::Linear unit;
    };
    const Case cases[] = {
        {L"m", ZtOaUnit::kMetres},
        {L"cm", ZtOaUnit::kCentimetres},
        {L"mm", ZtOaUnit::kMillimetres},
        {L"ft", ZtOaUnit::kFeet},
        {L"'", ZtOaUnit::kFeet},
        {L"in", ZtOaUnit::kInches},
        {L"\"", ZtOaUnit::kInches},
        {L"yd", ZtOaUnit::kYards},
        {L"km", ZtOaUnit::kKilometres},
        {L"mi", ZtOaUnit::kMiles},
        {L"um", ZtOaUnit::kMicrometres},
        {L"mil", ZtOaUnit::kMils},
        {L"ui", ZtOaUnit::kMicroinches},
        {L" FT ", ZtOaUnit::kFeet},
        {L"\n\tIn\r\n", ZtOaUnit::kInches},
        {L"MIL", ZtOaUnit::kMils},
        // Anything else is metres.
        {L"foot", ZtOaUnit::kMetres},
        {L"", ZtOaUnit::kMetres},
        {L"f t", ZtOaUnit::kMetres},
        {L"ft.", ZtOaUnit::kMetres},
        {L"''", ZtOaUnit::kMetres},
        {L"\u00b5m", ZtOaUnit::kMetres},
    };
    for (const Case& c : cases)
        EXPECT_EQ(ZtOdPdsFindMasterUnit(ZtUWideStringBuffer(c.text)), c.unit) << c.text;
}

} // namespace
