#pragma once
#include "ztutil/ZtUData.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Texts numbered in the order they are first met, so that what was worked out for a text
// can be kept in a row of that number. Bounded, so that objects with a text of their own
// each cost no memory out of proportion: past kMaxRows rows, and for texts longer than
// kMaxLength, it gives kNoRow.
class ZtOpFindTextRows {
public:
    static constexpr std::uint32_t kNoRow = ~std::uint32_t{0};
    static constexpr std::uint32_t kMaxRows = 4096;
    static constexpr std::size_t kMaxLength = 128;

    // The row of `text`, numbered on first meeting; kNoRow past the bounds.
    std::uint32_t RowOf(std::wstring_view text);
    // The row of the text of `value`, a text value. Copies of a text value share its text,
    // which is never changed in place: while a copy is held here, the text's address stands
    // for the text, and a value met again costs a look-up by address, not a reading.
    std::uint32_t RowOf(const ZtUData& value);
    std::uint32_t GetNumRows() const { return rows_; }

private:
    struct Entry {
        std::uint64_t hash = 0;
        std::uint32_t row = kNoRow; // kNoRow: the slot is free
        std::wstring text;
    };

    struct Held {
        const wchar_t* text = nullptr; // null: the slot is free
        std::uint32_t row = kNoRow;
        ZtUData copy; // keeps `text` where it is
    };
    static constexpr std::uint32_t kMaxHeld = 4 * kMaxRows;

    // Open addressing over power-of-two tables kept at most half full.
    std::vector<Entry> table_;
    std::uint32_t rows_ = 0;
    std::vector<Held> held_;
    std::uint32_t numHeld_ = 0;
};
