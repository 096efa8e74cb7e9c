#pragma once
#include "readers/ZtOdPdsBlock.h"

#include <cstddef>
#include <cstdint>
#include <cwchar>
#include <cwctype>
#include <string_view>

// The parts of the block reader that do not depend on where its characters come from.
class ZtOdPdsBlockReaderBase {
public:
    enum Result : int {
        kContinue = 0,
        // The block is complete, or with stop-at-name its name is.
        kComplete = 1,
        // A closing brace came with no block open.
        kUnmatchedClose = 3,
    };

protected:
    struct Buffer {
        wchar_t* text;
        std::size_t capacity;
    };
    // The buffer's memory comes from ZtUMemory; these take and give values only, so that
    // the reader's address never leaves it. Growing adds half the capacity; when memory
    // is short the old buffer stays and the character is dropped.
    static Buffer Allocate();
    static Buffer Grow(Buffer buffer);
    // A buffer holding `length` characters of `text` and room to grow.
    static Buffer Copy(const wchar_t* text, std::size_t length);
    static void Free(wchar_t* text);
};

// The character machine of the `name{value}` syntax, for one block: it gathers text,
// takes the name at the first opening brace and the value at the matching closing brace.
// Outside any block a line end drops what was gathered, so a name never spans lines.
// With ZtOdPdsCountedText, a brace right behind "text" starts a counted value: decimal
// digits, one separator, then count - 2 characters taken without interpretation.
//
// Counts and pass-through are unsigned 32-bit numbers: a count of 0 or 1 wraps and lets
// the rest of the input through as text, and so do counts too long for 32 bits.
//
// A reader lives on the stack of one source call and runs once per character. Everything
// it does is inline and nothing takes its address, so that the compiler can keep its
// fields in registers for the length of the character loop.
//
// A reader fed character by character (kSlices false, FeedChar) gathers into a buffer of
// its own. A reader over text already in memory (kSlices true, FeedNext) gathers slices of
// that text instead, so that a block read from a value holds no third copy of it; only text
// that is not one run of the input (behind a stray closing brace) is copied into a buffer.
// The choice is made at compile time so that neither loop pays for the other.
template <bool kSlices> class ZtOdPdsBasicBlockReader : public ZtOdPdsBlockReaderBase {
public:
    // Clears `block` (its flags stay) and reads its flags. With `stopAtName` 1 the reader
    // reports kComplete as soon as the name is taken.
    ZtOdPdsBasicBlockReader(ZtOdPdsBlock* block, std::int32_t stopAtName) requires(!kSlices)
        : stopAtName_(stopAtName), block_(block) {
        block_->Clear();
        flags_ = block_->GetFlags();
        const Buffer buffer = Allocate();
        buffer_ = buffer.text;
        capacity_ = buffer.capacity;
    }
    // A reader over `text`, fed one character after another with FeedNext.
    ZtOdPdsBasicBlockReader(ZtOdPdsBlock* block, std::int32_t stopAtName,
                            const wchar_t* text) requires kSlices : stopAtName_(stopAtName),
                                                                    text_(text),
                                                                    next_(text),
                                                                    block_(block) {
        block_->Clear();
        flags_ = block_->GetFlags();
    }
    ~ZtOdPdsBasicBlockReader() { Free(buffer_); }
    ZtOdPdsBasicBlockReader(const ZtOdPdsBasicBlockReader&) = delete;
    ZtOdPdsBasicBlockReader& operator=(const ZtOdPdsBasicBlockReader&) = delete;

    // Takes the next character.
    [[gnu::always_inline]] int FeedChar(wchar_t c) requires(!kSlices) { return Feed(c); }

    // Takes the next character of the text given to the constructor.
    [[gnu::always_inline]] int FeedNext() requires kSlices { return Feed(*next_++); }

    // What a reporting source looks at between two characters.
    std::int32_t Depth() const { return depth_; }
    bool InCount() const { return inCount_ != 0; }
    std::uint32_t Count() const { return count_; }
    std::uint32_t PassThrough() const { return passThrough_; }
    std::wstring_view Gathered() const { return {Text(), length_}; }

private:
    [[gnu::always_inline]] int Feed(wchar_t c) {
        if (passThrough_ != 0) {
            Append(c);
            --passThrough_;
        } else if (c == L'{') {
            return OpenBrace();
        } else if (c == L'}') {
            return CloseBrace();
        } else if (depth_ == 0) {
            if (c == L'\n' || c == L'\r')
                Restart();
            else
                Append(c);
        } else {
            if (inCount_)
                CountDigit(c);
            Append(c);
        }
        return complete_ ? kComplete : kContinue;
    }

    // The gathered text.
    const wchar_t* Text() const {
        if constexpr (kSlices)
            return text_;
        else
            return buffer_;
    }

    int OpenBrace() {
        ++depth_;
        // Before the name is taken, so that a key ending in "text" counts at any depth.
        if ((flags_ & ZtOdPdsCountedText) && EndsWithText()) {
            inCount_ = 1;
            count_ = 0;
        }
        if (depth_ == 1) {
            block_->SetName(Text(), LengthToNul());
            Restart();
            if (stopAtName_ == 1)
                return kComplete;
        } else {
            Append(L'{');
        }
        return complete_ ? kComplete : kContinue;
    }

    int CloseBrace() {
        --depth_;
        if (depth_ < 0) {
            if constexpr (kSlices)
                LeaveSlice();
            return kUnmatchedClose;
        }
        if (depth_ == 0) {
            block_->SetValue(Text(), LengthToNul());
            length_ = 0;
            complete_ = 1;
            return kComplete;
        }
        Append(L'}');
        return complete_ ? kComplete : kContinue;
    }

    // The count's digits and the character that ends them stay in the value; the caller
    // splits them off. The subtraction wraps for counts below 2.
    void CountDigit(wchar_t c) {
        if (std::iswdigit(static_cast<std::wint_t>(c))) {
            count_ = count_ * 10 + static_cast<std::uint32_t>(c - L'0');
        } else {
            inCount_ = 0;
            passThrough_ = count_ - 2;
        }
    }

    bool EndsWithText() const {
        const wchar_t* text = Text();
        return length_ >= 4 && text[length_ - 4] == L't' && text[length_ - 3] == L'e' &&
               text[length_ - 2] == L'x' && text[length_ - 1] == L't';
    }

    // The gathered text up to its first NUL.
    std::size_t LengthToNul() const {
        const wchar_t* text = Text();
        const wchar_t* nul = std::wmemchr(text, L'\0', length_);
        return nul ? static_cast<std::size_t>(nul - text) : length_;
    }

    // Drops the gathered text; with kSlices, the next slice starts at the next character.
    void Restart() {
        length_ = 0;
        if constexpr (kSlices) {
            if (!buffer_)
                text_ = next_;
        }
    }

    void Append(wchar_t c) {
        // A slice grows by the character just fed, which always follows it: the only
        // character that is neither gathered nor drops the gathered text is a stray
        // closing brace, and the reader leaves the slice there.
        if constexpr (kSlices) {
            if (!buffer_) {
                ++length_;
                return;
            }
        }
        if (length_ == capacity_) {
            const Buffer grown = Grow({buffer_, capacity_});
            buffer_ = grown.text;
            capacity_ = grown.capacity;
            if constexpr (kSlices)
                text_ = buffer_;
        }
        if (length_ < capacity_)
            buffer_[length_++] = c;
    }

    // Behind a stray closing brace the gathered text is no longer one run of the input, so
    // it moves into a buffer of its own. When memory is short it is dropped instead.
    void LeaveSlice() {
        if (buffer_)
            return;
        if (length_ == 0) {
            Restart();
            return;
        }
        const Buffer copy = Copy(text_, length_);
        if (!copy.text) {
            Restart();
            return;
        }
        buffer_ = copy.text;
        text_ = buffer_;
        capacity_ = copy.capacity;
    }

    std::int32_t stopAtName_;
    std::int32_t complete_ = 0;
    std::int32_t inCount_ = 0;
    std::uint32_t count_ = 0;
    std::uint32_t passThrough_ = 0;
    std::int32_t depth_ = 0;
    // With kSlices, the gathered text: a slice of the text read, or the buffer.
    const wchar_t* text_ = nullptr;
    // The reader's own buffer; with kSlices, null until the text leaves the input's run.
    wchar_t* buffer_ = nullptr;
    // With kSlices, the next character of the text read.
    const wchar_t* next_ = nullptr;
    std::size_t length_ = 0;
    std::size_t capacity_ = 0;
    ZtOdPdsBlock* block_;
    std::uint32_t flags_;
};

// The reader fed one character at a time, from a file.
using ZtOdPdsBlockReader = ZtOdPdsBasicBlockReader<false>;
// The reader over a parent block's value.
using ZtOdPdsSliceBlockReader = ZtOdPdsBasicBlockReader<true>;
