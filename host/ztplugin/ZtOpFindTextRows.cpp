#include "ztplugin/ZtOpFindTextRows.h"

namespace {

// FNV-1a over the code units.
std::uint64_t HashOf(std::wstring_view text) {
    std::uint64_t hash = 14695981039346656037ull;
    for (const wchar_t c : text)
        hash = (hash ^ static_cast<std::uint64_t>(c)) * 1099511628211ull;
    return hash;
}

std::size_t SlotOf(const wchar_t* text, std::size_t mask) {
    return static_cast<std::size_t>(
               (reinterpret_cast<std::uintptr_t>(text) >> 3) * 0x9E3779B97F4A7C15ull >> 20) &
           mask;
}

} // namespace

std::uint32_t ZtOpFindTextRows::RowOf(std::wstring_view text) {
    if (text.size() > kMaxLength)
        return kNoRow;
    if (table_.empty())
        table_.resize(64);
    const std::uint64_t hash = HashOf(text);
    const std::size_t mask = table_.size() - 1;
    std::size_t at = static_cast<std::size_t>(hash) & mask;
    for (; table_[at].row != kNoRow; at = (at + 1) & mask) {
        const Entry& entry = table_[at];
        if (entry.hash == hash && entry.text == text)
            return entry.row;
    }
    if (rows_ == kMaxRows)
        return kNoRow;
    table_[at] = {hash, rows_, std::wstring(text)};
    if (++rows_ * 2 > table_.size()) {
        std::vector<Entry> old(table_.size() * 2);
        old.swap(table_);
        const std::size_t wider = table_.size() - 1;
        for (Entry& entry : old) {
            if (entry.row == kNoRow)
                continue;
            std::size_t to = static_cast<std::size_t>(entry.hash) & wider;
            while (table_[to].row != kNoRow)
                to = (to + 1) & wider;
            table_[to] = std::move(entry);
        }
    }
    return rows_ - 1;
}

std::uint32_t ZtOpFindTextRows::RowOf(const ZtUData& value) {
    const wchar_t* text = value.GetWideString();
    if (held_.empty())
        held_.resize(64);
    std::size_t at = SlotOf(text, held_.size() - 1);
    for (; held_[at].text; at = (at + 1) & (held_.size() - 1))
        if (held_[at].text == text)
            return held_[at].row;
    // Past the bounds a row stays kNoRow, so that one is kept too.
    const std::uint32_t row = RowOf(std::wstring_view(text));
    if (numHeld_ == kMaxHeld)
        return row;
    held_[at] = {text, row, value};
    if (++numHeld_ * 2 > held_.size()) {
        std::vector<Held> old(held_.size() * 2);
        old.swap(held_);
        for (Held& entry : old) {
            if (!entry.text)
                continue;
            std::size_t to = SlotOf(entry.text, held_.size() - 1);
            while (held_[to].text)
                to = (to + 1) & (held_.size() - 1);
            held_[to] = std::move(entry);
        }
    }
    return row;
}
