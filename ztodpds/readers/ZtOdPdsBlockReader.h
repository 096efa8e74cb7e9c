#pragma once
#include "readers/ZtOdPdsBlock.h"
#include "readers/ZtOdPdsBlockReaderBase.h"
#include "ztutil/ZtUWideString.h"

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <string_view>

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
// it does is inline (forced where the compiler would stop short) and nothing takes its
// address, so that the compiler can keep its fields in registers for the length of the
// character loop; what is rare and large goes out of line through values only.
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
    // `spare`, if it holds memory, is the buffer to gather into, the reader's from then on
    // (TakeBuffer gives it back); else the reader allocates its own.
    ZtOdPdsBasicBlockReader(ZtOdPdsBlock* block, std::int32_t stopAtName,
                            Buffer spare = {nullptr, 0}) requires(!kSlices)
        : stopAtName_(stopAtName), block_(block) {
        block_->Clear();
        flags_ = block_->GetFlags();
        const Buffer buffer = spare.text ? spare : Allocate();
        buffer_ = buffer.text;
        capacity_ = buffer.capacity;
        UpdateRoom();
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

    // Takes characters from `next` (a callable that gives the next one, or `kEndMark` at
    // the end of the input) for as long as they only lengthen the text gathered inside a
    // block, while the buffer has room: passed through, a count's ASCII digits and the
    // character that ends them, other text, and the braces of inner blocks. Gives the
    // first character it did not take, for FeedChar, or `kEndMark`. A source fed this way
    // takes a block's value in loops of a few instructions a character.
    template <unsigned kEndMark, class NextChar>
    [[gnu::always_inline]] unsigned GatherRun(NextChar&& next);
    // The same for a source that follows each character it takes with `step`, which must
    // see braces and NULs one by one: it takes neither, nor a count's digits.
    template <unsigned kEndMark, class NextChar, class Step>
    [[gnu::always_inline]] unsigned GatherPlainRun(NextChar&& next, Step&& step);

    // Takes the next character of the text given to the constructor.
    [[gnu::always_inline]] int FeedNext() requires kSlices { return Feed(*next_++); }

    // Takes the characters of the text given to the constructor up to `end`, as FeedNext
    // one after another would, until the block completes (kComplete) or `end` is reached
    // (kContinue). A run of characters that only lengthens the slice (passed through, or
    // no brace; outside any block, line ends that only start the name afresh) is taken at
    // once.
    [[gnu::always_inline]] int FeedTo(const wchar_t* end);
    // The next character that the reader over a text would take.
    const wchar_t* Next() const requires kSlices { return next_; }

    // Hands the buffer to the caller, for the next reader, if it is no larger than
    // `mostCapacity` characters; a larger one is freed. The reader is done with it.
    Buffer TakeBuffer(std::size_t mostCapacity) requires(!kSlices) {
        Buffer taken{nullptr, 0};
        if (capacity_ <= mostCapacity)
            taken = {buffer_, capacity_};
        else
            Free(buffer_);
        buffer_ = nullptr;
        capacity_ = 0;
        length_ = 0;
        end_ = 0;
        return taken;
    }

    // What a reporting source looks at between two characters.
    std::int32_t Depth() const { return depth_; }
    bool InCount() const { return inCount_ != 0; }
    std::uint32_t Count() const { return count_; }
    std::uint32_t PassThrough() const { return passThrough_; }
    std::wstring_view Gathered() const { return {Text(), length_}; }

private:
    // OpenBrace and CloseBrace give this for a brace that is gathered like any character.
    static constexpr int kGather = -1;

    // Every character that is gathered goes through the one Append at the end, so that
    // the loop holds one copy of it. A name read from a file drops its leading white space
    // as it comes, as the trim would.
    [[gnu::always_inline]] int Feed(wchar_t c) {
        if (passThrough_ != 0) {
            --passThrough_;
        } else if (c == L'{' || c == L'}') [[unlikely]] {
            const int result = c == L'{' ? OpenBrace() : CloseBrace();
            if (result != kGather)
                return result;
        } else if (depth_ <= 0) {
            if (depth_ == 0 && (c == L'\n' || c == L'\r')) {
                Restart();
                return complete_ ? kComplete : kContinue;
            }
            if (!kSlices && length_ == 0 && ZtUIsWhiteSpace(c))
                return complete_ ? kComplete : kContinue;
            if (depth_ < 0 && inCount_)
                CountDigit(c);
        } else if (inCount_) {
            CountDigit(c);
        }
        Append(c);
        return complete_ ? kComplete : kContinue;
    }

    // The gathered text.
    const wchar_t* Text() const {
        if constexpr (kSlices)
            return text_;
        else
            return buffer_;
    }

    [[gnu::always_inline]] int OpenBrace() {
        ++depth_;
        // Before the name is taken, so that a key ending in "text" counts at any depth.
        if ((flags_ & ZtOdPdsCountedText) && EndsWithText(holding_, Text(), length_)) {
            inCount_ = 1;
            count_ = 0;
        }
        if (depth_ == 1) {
            // A block that memory ran short for gets no name: it is skipped at its end.
            if (holding_.held == Held::kStarved) {
                Restart();
                return kContinue;
            }
            block_->SetName(Text(),
                            holding_.held == Held::kOverlong ? 0 : LengthToNul(Text(), length_));
            Restart();
            if (stopAtName_ == 1)
                return kComplete;
            return complete_ ? kComplete : kContinue;
        }
        return kGather;
    }

    [[gnu::always_inline]] int CloseBrace() {
        --depth_;
        if (depth_ < 0) {
            if constexpr (kSlices)
                LeaveSlice();
            return kUnmatchedClose;
        }
        if (depth_ == 0) {
            if (holding_.held == Held::kStarved)
                return SkipBlock();
            block_->SetValue(Text(), LengthToNul(Text(), length_));
            length_ = 0;
            complete_ = 1;
            return kComplete;
        }
        return kGather;
    }

    // The count's digits and the character that ends them stay in the value; the caller
    // splits them off. The subtraction wraps for counts below 2.
    void CountDigit(wchar_t c) {
        if (IsCountDigit(c)) {
            count_ = count_ * 10 + static_cast<std::uint32_t>(c - L'0');
        } else {
            inCount_ = 0;
            passThrough_ = count_ - 2;
        }
    }

    // Drops the gathered text; with kSlices, the next slice starts at the next character.
    // A block that memory ran short for gathers nothing up to its end.
    void Restart() {
        length_ = 0;
        if (holding_.held != Held::kStarved)
            holding_ = {Held::kAll, 0};
        if constexpr (kSlices) {
            if (!buffer_)
                text_ = next_;
        }
        UpdateRoom();
    }

    // The end of a block that memory ran short for: nothing of it is delivered, and the
    // reader starts afresh on the next block.
    int SkipBlock() {
        block_->Clear();
        inCount_ = 0;
        passThrough_ = 0;
        holding_ = {Held::kAll, 0};
        Restart();
        return kContinue;
    }

    void Append(wchar_t c) {
        // A slice grows by the character just fed, which always follows it: the only
        // character that is neither gathered nor drops the gathered text is a stray
        // closing brace, and the reader leaves the slice there.
        if constexpr (kSlices) {
            if (!buffer_) {
                assert(text_ + length_ == next_ - 1);
                ++length_;
                return;
            }
        }
        if (length_ < end_) [[likely]] {
            buffer_[length_++] = c;
            return;
        }
        if (holding_.held != Held::kAll) {
            holding_ = Hold(holding_, c);
            return;
        }
        const Gathering gathering =
            AppendSlowly({buffer_, length_, capacity_, end_, holding_}, c, GetLimits());
        buffer_ = gathering.buffer;
        length_ = gathering.length;
        capacity_ = gathering.capacity;
        end_ = gathering.end;
        holding_ = gathering.holding;
        CheckRoom();
        if constexpr (kSlices)
            text_ = buffer_;
    }

    // At depth 0 and below the text is a name.
    Limits GetLimits() const {
        if constexpr (kSlices)
            return Limits::kNone;
        else
            return depth_ <= 0 ? Limits::kFileName : Limits::kFile;
    }

    // The fast path of Append stores below end_ with no other test: end_ stays within the
    // buffer, within the longest name for a name, and at 0 while the text is held in part.
    void UpdateRoom() {
        end_ = EndOf(holding_.held, capacity_, GetLimits());
        CheckRoom();
    }
    void CheckRoom() const {
        assert(end_ <= capacity_);
        assert(holding_.held == Held::kAll || end_ == 0);
        assert(GetLimits() != Limits::kFileName || end_ <= kMaxNameLength);
        assert(length_ <= capacity_ || (kSlices && !buffer_));
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
        UpdateRoom();
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
    // How much of what is being gathered the text holds.
    Holding holding_ = {Held::kAll, 0};
    // The length up to which Append stores with no further test (UpdateRoom).
    std::size_t end_ = 0;
};

// The reader fed one character at a time, from a file.
using ZtOdPdsBlockReader = ZtOdPdsBasicBlockReader<false>;
// The reader over a parent block's value.
using ZtOdPdsSliceBlockReader = ZtOdPdsBasicBlockReader<true>;

#include "readers/ZtOdPdsBlockReaderRuns.h"
