#pragma once
#include "ztutil/ZtUWideString.h"

#include <cstddef>
#include <cstdint>
#include <cwchar>
#include <cwctype>

// The parts of the block reader that do not depend on where its characters come from.
//
// What a reader of a file holds stays in proportion to what can matter: nothing behind a
// NUL counts in a name or value, and no name is longer than kMaxNameLength, so the text
// behind a NUL and the rest of an overlong name are not gathered; only their last four
// characters are, for the counted-text test. When memory runs short for a value, the
// reader gathers no more of that block, skips it to its end and goes on with the next.
class ZtOdPdsBlockReaderBase {
public:
    enum Result : int {
        kContinue = 0,
        // The block is complete, or with stop-at-name its name is.
        kComplete = 1,
        // A closing brace came with no block open.
        kUnmatchedClose = 3,
    };
    // The longest name, trimmed, that a reader of a file gathers: no key comes near it. A
    // longer one is dropped as it is read, and its block reads as one without a name.
    static constexpr std::size_t kMaxNameLength = std::size_t{1} << 20;

    // The characters a source that follows the reader must see one by one, as they change
    // more than the place: a brace or a NUL.
    static bool IsBraceOrNul(wchar_t c) { return c == L'{' || c == L'}' || c == L'\0'; }

protected:
    // Whether `c` is a brace. Nearly every character lies below them, which one compare
    // tells.
    static bool IsBrace(wchar_t c) {
        return static_cast<std::uint32_t>(c) >= static_cast<std::uint32_t>(L'{') &&
               (c == L'{' || c == L'}');
    }
    // Whether `c` is a digit of a count. An ASCII character is a digit in every locale
    // only from '0' to '9', and needs no call to tell.
    static bool IsCountDigit(wchar_t c) {
        const auto unit = static_cast<std::uint32_t>(c);
        return unit < 128 ? unit - L'0' < 10u : std::iswdigit(static_cast<std::wint_t>(c)) != 0;
    }

    // How much of the text being gathered a reader holds.
    enum class Held : std::uint8_t {
        kAll,
        // All up to a NUL, behind which nothing counts.
        kToNul,
        // A name of the longest length, and white space behind it that the trim drops.
        kToSpace,
        // A name longer than the longest, which is dropped.
        kOverlong,
        // Nothing: memory ran short, and the block is skipped at its end.
        kStarved,
    };

    // What a reader holds of text it no longer gathers: how much, and how many letters of
    // "text" the characters fed end with, for the counted-text test.
    struct Holding {
        Held held;
        std::uint32_t textMatched;
    };
    // The holding after `c`: inline, as a reader may hold a file's worth of characters.
    // Only the letter t both begins and ends "text", so a mismatch falls back to it.
    static Holding Hold(Holding holding, wchar_t c) {
        std::uint32_t& matched = holding.textMatched;
        if (c == L't')
            matched = matched == 3 ? 4 : 1;
        else if ((c == L'e' && matched == 1) || (c == L'x' && matched == 2))
            ++matched;
        else
            matched = 0;
        // White space behind a full name is trimmed away; anything else makes it too long.
        if (holding.held == Held::kToSpace && !ZtUIsWhiteSpace(c))
            holding.held = c == L'\0' ? Held::kToNul : Held::kOverlong;
        return holding;
    }
    // The text a reader has gathered into its buffer, as one value, so that the rarer
    // steps of gathering can be out of line without the reader's address.
    struct Gathering {
        wchar_t* buffer;
        std::size_t length;
        std::size_t capacity;
        // Up to here Append stores with no further test: nothing while the text is held
        // in part, else to the end of the buffer or of the longest name.
        std::size_t end;
        Holding holding;
    };
    // How a reader's text is bounded: text read from memory is bounded by that memory
    // already. Text read from a file holds nothing behind a NUL, and a name read from a
    // file no more than the longest name.
    enum class Limits : std::uint8_t { kNone, kFile, kFileName };
    // Gathers `c` where Append can't at once: into a grown buffer, or into the holding
    // once the text must not or can't grow. A reader of a file looks for a NUL only here,
    // in all it gathered: the buffer grows by half each time, so each character is looked
    // at a few times at most.
    static Gathering AppendSlowly(Gathering gathering, wchar_t c, Limits limits);
    // Where the gathering's end lies.
    static std::size_t EndOf(Held held, std::size_t capacity, Limits limits) {
        if (held != Held::kAll)
            return 0;
        if (limits != Limits::kFileName)
            return capacity;
        return capacity < kMaxNameLength ? capacity : kMaxNameLength;
    }

    // Whether the text gathered ends with "text", from what is held of it.
    static bool EndsWithText(Holding holding, const wchar_t* text, std::size_t length) {
        if (holding.held != Held::kAll)
            return holding.textMatched == 4;
        return length >= 4 && text[length - 4] == L't' && text[length - 3] == L'e' &&
               text[length - 2] == L'x' && text[length - 1] == L't';
    }
    // The text up to its first NUL. Most names and many values are a few characters,
    // shorter than what a call of wmemchr pays for itself.
    static std::size_t LengthToNul(const wchar_t* text, std::size_t length) {
        if (length <= kShortText) {
            std::size_t toNul = 0;
            while (toNul < length && text[toNul] != L'\0')
                ++toNul;
            return toNul;
        }
        const wchar_t* nul = std::wmemchr(text, L'\0', length);
        return nul ? static_cast<std::size_t>(nul - text) : length;
    }
    static constexpr std::size_t kShortText = 16;

public:
    struct Buffer {
        wchar_t* text;
        std::size_t capacity;
    };
    static void Free(wchar_t* text);

protected:
    // The buffer's memory comes from ZtUMemory. These, like the gathering's, take and give
    // values only, so that the reader's address never leaves it. Growing adds half the capacity;
    // when memory is short the old buffer stays and the character is dropped.
    static Buffer Allocate();
    static Buffer Grow(Buffer buffer);
    // A buffer holding `length` characters of `text` and room to grow.
    static Buffer Copy(const wchar_t* text, std::size_t length);

private:
    // What a name at the longest holds when `c` comes: the name as it is, unless `c` makes
    // it longer.
    static Held HoldFullName(wchar_t c);
    // Holding starts as `held`, after the last characters gathered and then `c`.
    static Holding StartHolding(Held held, const wchar_t* text, std::size_t length, wchar_t c);
};
