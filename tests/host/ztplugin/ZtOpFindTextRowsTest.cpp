#include "ztplugin/ZtOpFindTextRows.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

ZtUData Text(const std::wstring& text) {
    ZtUData value;
    value.SetWideString(text.c_str());
    return value;
}

TEST(ZtOpFindTextRows, NumbersTextsInTheOrderFirstMet) {
    ZtOpFindTextRows rows;
    EXPECT_EQ(rows.RowOf(L"Level 3"), 0u);
    EXPECT_EQ(rows.RowOf(Text(L"Colour 2")), 1u);
    EXPECT_EQ(rows.RowOf(Text(L"Level 3")), 0u); // another value of a text met before
    EXPECT_EQ(rows.RowOf(L""), 2u);
    EXPECT_EQ(rows.RowOf(ZtUData()), 2u); // no text value at all reads as the empty text
    EXPECT_EQ(rows.RowOf(std::wstring(ZtOpFindTextRows::kMaxLength + 1, L'x')),
              ZtOpFindTextRows::kNoRow);
    EXPECT_EQ(rows.GetNumRows(), 3u);
}

// A text is known by its address only while a copy of its value keeps it there: a value
// freed and another made in its place must not take its row.
TEST(ZtOpFindTextRows, ValuesMadeWhereOthersDiedAreReadAgain) {
    ZtOpFindTextRows rows;
    for (int i = 0; i < 100; ++i) {
        auto value = std::make_unique<ZtUData>(Text(L"text " + std::to_wstring(i)));
        EXPECT_EQ(rows.RowOf(*value), static_cast<std::uint32_t>(i));
    }
}

TEST(ZtOpFindTextRows, StopsNumberingAtItsBound) {
    ZtOpFindTextRows rows;
    for (std::uint32_t i = 0; i < ZtOpFindTextRows::kMaxRows; ++i)
        ASSERT_EQ(rows.RowOf(std::to_wstring(i)), i);
    EXPECT_EQ(rows.RowOf(L"one more"), ZtOpFindTextRows::kNoRow);
    EXPECT_EQ(rows.RowOf(L"17"), 17u);
    EXPECT_EQ(rows.RowOf(Text(L"one more")), ZtOpFindTextRows::kNoRow);
}

} // namespace
