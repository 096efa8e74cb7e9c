// Data values, names, option sets, components.
#include "ztutil/ZtUComponent.h"
#include "ztutil/ZtUData.h"
#include "ztutil/ZtUName.h"
#include "ztutil/ZtUOptionSet.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

TEST(ZtUData, ConvertsBetweenNumericKindsAndSaturates) {
    ZtUData d;
    EXPECT_TRUE(d.IsEmpty());
    d.SetDouble(2.9);
    EXPECT_EQ(d.GetInt64(), 2);
    d.SetDouble(1e300);
    EXPECT_EQ(d.GetInt64(), INT64_MAX);
    d.SetDouble(-1e300);
    EXPECT_EQ(d.GetInt64(), INT64_MIN);
    d.SetDouble(std::nan(""));
    EXPECT_EQ(d.GetInt64(), 0);
    d.SetBool(true);
    EXPECT_EQ(d.GetInt32(), 1);
    d.SetUInt64(18446744073709551615ull);
    EXPECT_EQ(d.GetUInt64(), 18446744073709551615ull);
    d.SetWideString(L"x");
    EXPECT_EQ(d.GetInt64(), 0);
    EXPECT_STREQ(d.GetWideString(), L"x");
    d.SetInt32(4);
    EXPECT_STREQ(d.GetWideString(), L"");
}

TEST(ZtUData, HoldsACountOnItsName) {
    auto* name = new ZtUName("enum#2", nullptr);
    {
        ZtUData a;
        a.SetName(name);
        EXPECT_EQ(name->GetRefCount(), 1);
        ZtUData b = a;
        EXPECT_EQ(name->GetRefCount(), 2);
        EXPECT_TRUE(a == b);
        const ZtUData& self = b;
        b = self; // self-assignment keeps the count
        EXPECT_EQ(name->GetRefCount(), 2);
        b.SetInt32(1);
        EXPECT_EQ(name->GetRefCount(), 1);
        EXPECT_EQ(a.GetName(), name);
    }
    // The last holder deleted it: the sanitizer run would report a leak otherwise.
}

// Find queries repeat one value text many times over; each copy must not cost a text.
TEST(ZtUData, CopiesShareATextAndStayIndependent) {
    ZtUData a;
    a.SetWideString(L"a value longer than any short-string buffer");
    ZtUData b = a;
    EXPECT_EQ(b.GetWideString(), a.GetWideString());
    EXPECT_TRUE(a == b);
    ZtUData c;
    c.SetWideString(a.GetWideString());
    EXPECT_TRUE(a == c) << "equal texts compare equal whether shared or not";
    b.SetWideString(L"other");
    EXPECT_STREQ(a.GetWideString(), L"a value longer than any short-string buffer");
    EXPECT_FALSE(a == b);
    a.Clear();
    EXPECT_STREQ(a.GetWideString(), L"");
    EXPECT_STREQ(c.GetWideString(), L"a value longer than any short-string buffer");
}

TEST(ZtUName, EnumNamesRoundTrip) {
    ZtUStringBuffer text;
    ZtUName::MakeEnumName("ztodpds_dri_input_files_enum", 2, &text);
    int value = -1;
    ZtUStringBuffer enumName;
    ASSERT_EQ(ZtUName::DecodeEnumName(ZtUString(text.Str()), &value, &enumName), 1);
    EXPECT_EQ(value, 2);
    EXPECT_EQ(enumName.Str(), "ztodpds_dri_input_files_enum");
    for (const char* bad : {"", "plain", "e#", "e#x", "e#1x", "e#99999999999"}) {
        value = -1;
        EXPECT_EQ(ZtUName::DecodeEnumName(ZtUString(bad), &value, &enumName), 0) << bad;
        EXPECT_EQ(value, -1);
    }
}

TEST(ZtUOptionSet, KeepsKindsAndDefaults) {
    ZtUOptionSet options;
    ZtUData yes;
    yes.SetBool(true);
    options.Define(10, L"Level symbology", yes);
    ZtUData value;
    ASSERT_EQ(options.GetValue(10, &value), 1);
    EXPECT_TRUE(value.GetBool());
    ZtUData no;
    no.SetBool(false);
    ZtUWideStringBuffer error;
    EXPECT_EQ(options.SetValue(10, no, &error), 1);
    options.GetValue(10, &value);
    EXPECT_FALSE(value.GetBool());
    ZtUData number;
    number.SetInt32(0);
    EXPECT_EQ(options.SetValue(10, number, &error), 0);
    EXPECT_FALSE(error.IsEmpty());
    EXPECT_EQ(options.SetValue(11, no, nullptr), 0);
    EXPECT_EQ(options.GetValue(11, &value), 0);
    options.Reset();
    options.GetValue(10, &value);
    EXPECT_TRUE(value.GetBool());
}

TEST(ZtUComponent, NestsStartsAndEnds) {
    ZtUComponent component;
    EXPECT_EQ(component.Terminate(), 0);
    EXPECT_EQ(component.Initialise("ZtOdPdsCriterion"), 1);
    EXPECT_EQ(component.Initialise("ZtOdPdsCriterion"), 1);
    EXPECT_TRUE(component.IsLive());
    EXPECT_EQ(component.Terminate(), 1);
    EXPECT_EQ(component.Terminate(), 1);
    EXPECT_FALSE(component.IsLive());
    EXPECT_EQ(component.Terminate(), 0);
}

} // namespace
