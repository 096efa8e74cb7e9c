#pragma once
// The loops of the block reader that take runs of characters at once. Each must leave the
// reader as feeding the same characters one by one would; the block reader's fuzz target
// compares the two readings.
#include "readers/ZtOdPdsBlockReader.h"

template <bool kSlices>
template <unsigned kEndMark, class NextChar>
inline unsigned ZtOdPdsBasicBlockReader<kSlices>::GatherRun(NextChar&& next) {
    static_assert(!kSlices);
    // One test tells the characters below '{', nearly all of a value's, from the
    // braces and the end, which lie above it.
    static_assert(kEndMark > L'}');
    if (depth_ <= 0)
        return next();
    wchar_t* out = buffer_ + length_;
    wchar_t* const room = buffer_ + end_;
    unsigned c = kEndMark;
    auto leave = [&] {
        length_ = static_cast<std::size_t>(out - buffer_);
        return c;
    };
    for (;;) {
        // A count, as CountDigit takes it; braces, and characters beyond ASCII (whose
        // digits a call tells), are left to FeedChar.
        while (inCount_) {
            c = next();
            if (c >= 128 || c == L'{' || c == L'}' || out >= room)
                return leave();
            *out++ = static_cast<wchar_t>(c);
            if (IsCountDigit(static_cast<wchar_t>(c))) {
                count_ = count_ * 10 + (c - L'0');
            } else {
                inCount_ = 0;
                passThrough_ = count_ - 2;
            }
        }
        // Counted text, where no character needs a look, as far as the room goes (0,
        // and the text longer, while the text is held in part).
        if (passThrough_ != 0) {
            const auto roomLeft = out < room ? static_cast<std::size_t>(room - out) : 0;
            wchar_t* const stop = out + (passThrough_ < roomLeft ? passThrough_ : roomLeft);
            wchar_t* const start = out;
            while (out < stop) {
                c = next();
                if (c == kEndMark)
                    break;
                *out++ = static_cast<wchar_t>(c);
            }
            passThrough_ -= static_cast<std::uint32_t>(out - start);
            if (out < stop || passThrough_ != 0) {
                if (out == stop)
                    c = next();
                return leave();
            }
        }
        // Text up to a brace. An inner block's braces are taken as OpenBrace and
        // CloseBrace take them, up to one that starts a count; the block's own closing
        // brace ends the run.
        for (;;) {
            c = next();
            if (c >= L'{' && (c == L'{' || c == L'}' || c == kEndMark)) {
                if (c == kEndMark || out >= room || (c == L'}' && depth_ == 1))
                    return leave();
                if (c == L'}') {
                    --depth_;
                } else {
                    length_ = static_cast<std::size_t>(out - buffer_);
                    ++depth_;
                    if ((flags_ & ZtOdPdsCountedText) && EndsWithText(holding_, Text(), length_)) {
                        inCount_ = 1;
                        count_ = 0;
                        *out++ = static_cast<wchar_t>(c);
                        break;
                    }
                }
            }
            if (out >= room)
                return leave();
            *out++ = static_cast<wchar_t>(c);
        }
    }
}

template <bool kSlices>
template <unsigned kEndMark, class NextChar, class Step>
inline unsigned ZtOdPdsBasicBlockReader<kSlices>::GatherPlainRun(NextChar&& next, Step&& step) {
    static_assert(!kSlices);
    if (depth_ <= 0 || inCount_)
        return next();
    wchar_t* out = buffer_ + length_;
    wchar_t* const room = buffer_ + end_;
    unsigned c;
    for (;;) {
        c = next();
        if (c == kEndMark || IsBraceOrNul(static_cast<wchar_t>(c)) || out >= room)
            break;
        step(static_cast<wchar_t>(c));
        if (passThrough_ != 0)
            --passThrough_;
        *out++ = static_cast<wchar_t>(c);
    }
    length_ = static_cast<std::size_t>(out - buffer_);
    return c;
}

template <bool kSlices> inline int ZtOdPdsBasicBlockReader<kSlices>::FeedTo(const wchar_t* end) {
    static_assert(kSlices);
    while (next_ < end) {
        if (!buffer_ && depth_ >= 0 && !inCount_) {
            const wchar_t* run = next_;
            if (passThrough_ != 0) {
                const auto left = static_cast<std::size_t>(end - run);
                run += passThrough_ < left ? passThrough_ : left;
                passThrough_ -= static_cast<std::uint32_t>(run - next_);
            } else {
                while (run < end && !IsBrace(*run))
                    ++run;
                // Outside any block the last line end of the run starts the name
                // afresh, as each one before it did.
                if (depth_ == 0) {
                    const wchar_t* lineEnd = run;
                    while (lineEnd > next_ && lineEnd[-1] != L'\n' && lineEnd[-1] != L'\r')
                        --lineEnd;
                    if (lineEnd != next_) {
                        next_ = lineEnd;
                        Restart();
                    }
                }
            }
            length_ += static_cast<std::size_t>(run - next_);
            next_ = run;
            if (run == end)
                break;
        }
        if (Feed(*next_++) == kComplete)
            return kComplete;
    }
    return kContinue;
}
