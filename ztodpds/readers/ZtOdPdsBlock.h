#pragma once
#include "ztutil/ZtUWideString.h"

#include <cstdint>
#include <utility>

class ZtOdPdsBlockTracker;

// Block flag: an opening brace right behind the letters "text" starts a counted value,
// whose body may hold unbalanced braces.
constexpr std::uint32_t ZtOdPdsCountedText = 1;

// One block of the `name{value}` syntax. The value is raw text, inner blocks included;
// a block is also the source of its own children, read from `cursor` on.
class ZtOdPdsBlock {
public:
    const ZtUWideStringBuffer& GetName() const { return name_; }
    // Takes the name trimmed at both ends.
    void SetName(const wchar_t* text, std::size_t length);
    const ZtUWideStringBuffer& GetValue() const { return value_; }
    void SetValue(const wchar_t* text, std::size_t length) { value_.SetString(text, length); }

    std::uint32_t GetFlags() const { return flags_; }
    void AddFlags(std::uint32_t flags) { flags_ |= flags; }

    std::int32_t GetCursor() const { return cursor_; }
    // A negative cursor reads as 0.
    void SetCursor(std::int32_t cursor) { cursor_ = cursor < 0 ? 0 : cursor; }

    // Empties name and value and rewinds the cursor; the flags stay.
    void Clear() {
        name_.Clear();
        value_.Clear();
        cursor_ = 0;
    }

    // Empties the value and gives its memory back, for a caller done with a long value
    // before the block is next filled.
    void ReleaseValue() {
        ZtUWideStringBuffer released;
        std::swap(value_, released);
    }

    // Exchanges the value with `other`, copying neither; the block's next reading reuses
    // the memory that `other` held.
    void SwapValue(ZtUWideStringBuffer* other) { std::swap(value_, *other); }
    // The characters that the value holds room for.
    std::size_t ValueCapacity() const { return value_.Str().capacity(); }

    // Reads the next complete block of the value, from the cursor on, into `child` (another
    // block), which gets this block's flags too. Returns 1, or 0 once the value holds no
    // further block.
    int NextChild(ZtOdPdsBlock* child);
    // The same read, followed by `tracker`, which stands where the cursor stands.
    int NextChild(ZtOdPdsBlock* child, ZtOdPdsBlockTracker& tracker);

private:
    template <bool kTracked> int ReadChild(ZtOdPdsBlock* child, ZtOdPdsBlockTracker* tracker);

    ZtUWideStringBuffer name_;
    ZtUWideStringBuffer value_;
    std::int32_t cursor_ = 0;
    std::uint32_t flags_ = 0;
};
