#pragma once
#include <cstddef>
#include <cstdint>

class ZtOdPdsBlock;

// The character machine of the `name{value}` syntax, for one block: it gathers text,
// takes the name at the first opening brace and the value at the matching closing brace.
// Outside any block a line end drops what was gathered, so a name never spans lines.
// With ZtOdPdsCountedText, a brace right behind "text" starts a counted value: decimal
// digits, one separator, then count - 2 characters taken without interpretation.
//
// Counts and pass-through are unsigned 32-bit numbers: a count of 0 or 1 wraps and lets
// the rest of the input through as text, and so do counts too long for 32 bits.
class ZtOdPdsBlockReader {
public:
    enum Result : int {
        kContinue = 0,
        // The block is complete, or with stop-at-name its name is.
        kComplete = 1,
        // A closing brace came with no block open.
        kUnmatchedClose = 3,
    };

    // Clears `block` (its flags stay) and reads its flags. With `stopAtName` 1 the reader
    // reports kComplete as soon as the name is taken.
    ZtOdPdsBlockReader(ZtOdPdsBlock* block, std::int32_t stopAtName);
    ~ZtOdPdsBlockReader();
    ZtOdPdsBlockReader(const ZtOdPdsBlockReader&) = delete;
    ZtOdPdsBlockReader& operator=(const ZtOdPdsBlockReader&) = delete;

    // Takes the next character. Inline, as it runs once per character of a file.
    int FeedChar(wchar_t c) {
        if (passThrough_ != 0) {
            Append(c);
            --passThrough_;
        } else if (c == L'{') {
            return OpenBrace();
        } else if (c == L'}') {
            return CloseBrace();
        } else if (depth_ == 0) {
            if (c == L'\n' || c == L'\r')
                length_ = 0;
            else
                Append(c);
        } else {
            if (inCount_)
                CountDigit(c);
            Append(c);
        }
        return complete_ ? kComplete : kContinue;
    }

private:
    static constexpr std::size_t kInitialCapacity = 512;

    int OpenBrace();
    int CloseBrace();
    void CountDigit(wchar_t c);
    bool EndsWithText() const;
    // The gathered text up to its first NUL.
    std::size_t LengthToNul() const;

    void Append(wchar_t c) {
        if (length_ == capacity_)
            Grow();
        if (length_ < capacity_)
            buffer_[length_++] = c;
    }
    // Adds half the capacity; when memory is short the character is dropped.
    void Grow();

    std::int32_t stopAtName_;
    std::int32_t complete_ = 0;
    std::int32_t inCount_ = 0;
    std::uint32_t count_ = 0;
    std::uint32_t passThrough_ = 0;
    std::int32_t depth_ = 0;
    // The gathered text, from ZtUMemory.
    wchar_t* buffer_ = nullptr;
    std::size_t length_ = 0;
    std::size_t capacity_ = 0;
    ZtOdPdsBlock* block_;
    std::uint32_t flags_;
};
