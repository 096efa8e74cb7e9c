#include "ztplugin/ZtOpFindSpec.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace {

ZtOpFindCondition Level(const wchar_t* text) {
    ZtUData value;
    value.SetWideString(text);
    return ZtOpFindCondition(nullptr, nullptr, ZtOpFindConditionFlags::kNone,
                             ZtOpFindConditionOp::kEqual, value);
}

void Add(ZtOpFindSpec& spec, std::initializer_list<const wchar_t*> texts) {
    for (const wchar_t* text : texts)
        spec.AddCondition(Level(text));
}

void ExpectTexts(const ZtOpFindSpec& spec, std::initializer_list<const wchar_t*> texts) {
    ASSERT_EQ(spec.GetNumConditions(), texts.size());
    std::size_t i = 0;
    for (const wchar_t* text : texts)
        EXPECT_STREQ(spec.GetCondition(i++).GetValue().GetWideString(), text) << i;
}

// A spec that follows another shares the conditions it repeats, and whatever either spec
// adds afterwards leaves the other's conditions as they were.
TEST(FindSpec, AFollowerSharesWhatItRepeatsAndChangesNothingOfTheOther) {
    ZtOpFindSpec first;
    Add(first, {L"1", L"2", L"3"});

    ZtOpFindSpec longer;
    longer.Follow(first);
    Add(longer, {L"1", L"2", L"3", L"4"});
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(&longer.GetCondition(i), &first.GetCondition(i)) << i;

    ZtOpFindSpec other;
    other.Follow(first);
    Add(other, {L"1", L"2", L"3", L"5", L"6"});
    ZtOpFindSpec diverging;
    diverging.Follow(longer);
    Add(diverging, {L"1", L"7", L"3"});
    const ZtOpFindSpec copy = longer;

    ExpectTexts(first, {L"1", L"2", L"3"});
    ExpectTexts(longer, {L"1", L"2", L"3", L"4"});
    ExpectTexts(other, {L"1", L"2", L"3", L"5", L"6"});
    ExpectTexts(diverging, {L"1", L"7", L"3"});
    ExpectTexts(copy, {L"1", L"2", L"3", L"4"});
}

} // namespace
