#pragma once
#include "diagnostics/ZtOdPdsDiagnostics.h"
#include "readers/ZtOdPdsBlockReader.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

// Why a reporting read of blocks stopped.
enum class ZtOdPdsBlockStop {
    kBlock,      // a block was read
    kEnd,        // the input ended
    kStrayBrace, // a closing brace came with no block open
};

// Follows a block reader through its input for a read that reports: where each character
// stands, where the last block's name and value begin, and how the read stopped. It
// reports what the reader cuts or throws away (a NUL, text outside any block) and leaves
// the rest, which means something only to the caller, to the caller. One tracker follows
// one input from block to block, across the readers that its source makes.
class ZtOdPdsBlockTracker {
public:
    // `start` is where the first character fed stands.
    ZtOdPdsBlockTracker(ZtOdPdsDiagnostics& sink, const wchar_t* file,
                        ZtOdPdsSourcePosition start = {1, 1})
        : sink_(sink), file_(file), at_(start) {}

    // Feeds `c` to `reader` (for a reader over a text, the text's next character) and gives
    // its result, noting what the character did.
    template <class Reader> int Feed(Reader& reader, wchar_t c) {
        const std::int32_t depth = reader.Depth();
        if (depth > 0 && OnlyMovesOn(c)) {
            at_.Step(c);
            return Take(reader, c);
        }
        const bool taken = reader.PassThrough() != 0;
        if (depth == 0 && !taken)
            BeforeOutside(reader.Gathered(), c);
        else if (depth == 1 && !taken && c == L'}')
            BeforeValueEnd(reader.Gathered());
        if (c == L'\0' && !nul_.IsKnown())
            nul_ = at_;
        const bool counting = reader.InCount();
        const int result = Take(reader, c);
        if (depth == 0 && reader.Depth() == 1)
            NameTaken(c);
        if (!counting && reader.InCount() && at_.column > 4)
            countAt_ = {at_.line, at_.column - 4};
        if (result == ZtOdPdsBlockReaderBase::kUnmatchedClose && !strayBrace_.IsKnown())
            strayBrace_ = at_;
        at_.Step(c);
        return result;
    }

    // Most characters stand inside a block and are neither a brace nor a NUL: there they
    // only move the place on, and a reader may take a run of them at once.
    static bool OnlyMovesOn(wchar_t c) { return !ZtOdPdsBlockReaderBase::IsBraceOrNul(c); }
    // The place behind `c`, one of such a run.
    void Step(wchar_t c) { at_.Step(c); }
    // The place behind `count` characters of such a run: the characters passed through
    // behind a count, which only a NUL among them would make more of.
    void StepOver(const wchar_t* text, std::size_t count) { at_.StepOver(text, count); }
    // Outside any block, the characters other than a line end, a brace or a NUL only move
    // the place on too, once the first that is not blank has been noted.
    static bool OnlyMovesOnOutside(wchar_t c) { return OnlyMovesOn(c) && c != L'\n' && c != L'\r'; }
    void StepOutside(wchar_t c) {
        if (!gatheredAt_.IsKnown() && c != L' ' && c != L'\t')
            gatheredAt_ = at_;
        at_.Step(c);
    }

    // The read ended without a block: at the end of the input, or at a stray closing brace
    // when `result` says so. Notes a block the input ended in, and reports text that was
    // gathered outside any block.
    template <class Reader> void Stopped(const Reader& reader, int result) {
        if (result == ZtOdPdsBlockReaderBase::kUnmatchedClose) {
            stop_ = ZtOdPdsBlockStop::kStrayBrace;
            return;
        }
        stop_ = ZtOdPdsBlockStop::kEnd;
        if (reader.Depth() > 0) {
            endedInBlock_ = true;
            endedInCount_ = reader.InCount() || reader.PassThrough() != 0;
            endCount_ = reader.Count();
        } else if (reader.Depth() == 0) {
            ReportStray(reader.Gathered());
        }
    }
    void Completed() { stop_ = ZtOdPdsBlockStop::kBlock; }

    // The first line of the text read is the head of its block (the values of a `tag`),
    // not text outside a block.
    void ExpectHeadLine() { headLine_ = true; }
    // While quiet, text outside blocks is noted (FirstStrayText) but not reported.
    void SetQuiet(bool quiet) {
        quiet_ = quiet;
        firstStray_ = {};
    }

    ZtOdPdsSourcePosition Position() const { return at_; }
    // Where the name of the block read last begins (its opening brace if it has none), and
    // where its value begins, behind the brace.
    ZtOdPdsSourcePosition NameAt() const { return nameAt_; }
    ZtOdPdsSourcePosition ValueAt() const { return valueAt_; }
    ZtOdPdsBlockStop GetStop() const { return stop_; }
    // The first closing brace read with no block open, if any.
    ZtOdPdsSourcePosition StrayBraceAt() const { return strayBrace_; }
    // Whether the input ended inside a block, and inside a counted text of that count.
    bool EndedInBlock() const { return endedInBlock_; }
    bool EndedInCount() const { return endedInCount_; }
    std::uint32_t EndCount() const { return endCount_; }
    // Where the last counted text began: the "text" before its brace.
    ZtOdPdsSourcePosition CountAt() const { return countAt_; }
    // While quiet, where text outside blocks was first thrown away.
    ZtOdPdsSourcePosition FirstStrayText() const { return firstStray_; }

    ZtOdPdsDiagnostics& Sink() const { return sink_; }
    const wchar_t* File() const { return file_; }

private:
    // Feeds `c` to a reader of characters, or the next character to a reader over a text.
    template <class Reader> static int Take(Reader& reader, wchar_t c) {
        if constexpr (requires { reader.FeedNext(); })
            return reader.FeedNext();
        else
            return reader.FeedChar(c);
    }

    // Outside any block, before `c`: a line end throws away what was gathered, and an
    // opening brace takes it as the name, up to a NUL.
    void BeforeOutside(std::wstring_view gathered, wchar_t c) {
        if (c == L'\n' || c == L'\r') {
            if (headLine_)
                headLine_ = false;
            else
                ReportStray(gathered);
            gatheredAt_ = {};
            nul_ = {};
        } else if (c == L'{') {
            if (nul_.IsKnown())
                ReportNul(0, gathered);
        } else if (!gatheredAt_.IsKnown() && c != L' ' && c != L'\t' && c != L'}') {
            gatheredAt_ = at_;
        }
    }

    void NameTaken(wchar_t brace) {
        nameAt_ = gatheredAt_.IsKnown() ? gatheredAt_ : at_;
        valueAt_ = at_;
        valueAt_.Step(brace);
        headLine_ = false;
        gatheredAt_ = {};
        nul_ = {};
    }

    // The closing brace of a block is coming: a NUL in its value cuts the value there.
    void BeforeValueEnd(std::wstring_view value) {
        if (nul_.IsKnown())
            ReportNul(1, value);
        nul_ = {};
    }

    // `what` is 0 for a name, 1 for a value; `text` the whole of it, NUL and all.
    void ReportNul(int what, std::wstring_view text) {
        const std::size_t kept = text.find(L'\0');
        if (kept != std::wstring_view::npos)
            ZtOdPdsReport(sink_, ZtOdPdsCheck::kNulCut, file_, nul_, text.substr(0, kept),
                          {what, static_cast<std::int64_t>(text.size() - kept - 1)});
    }

    void ReportStray(std::wstring_view gathered) {
        const std::size_t first = gathered.find_first_not_of(L" \t");
        if (first == std::wstring_view::npos)
            return;
        if (quiet_) {
            if (!firstStray_.IsKnown())
                firstStray_ = gatheredAt_;
            return;
        }
        ZtOdPdsReport(sink_, ZtOdPdsCheck::kStrayText, file_, gatheredAt_, gathered.substr(first));
    }

    ZtOdPdsDiagnostics& sink_;
    const wchar_t* file_;
    ZtOdPdsSourcePosition at_;
    ZtOdPdsSourcePosition gatheredAt_;
    ZtOdPdsSourcePosition nameAt_;
    ZtOdPdsSourcePosition valueAt_;
    ZtOdPdsSourcePosition nul_;
    ZtOdPdsSourcePosition countAt_;
    ZtOdPdsSourcePosition strayBrace_;
    ZtOdPdsSourcePosition firstStray_;
    ZtOdPdsBlockStop stop_ = ZtOdPdsBlockStop::kEnd;
    bool headLine_ = false;
    bool quiet_ = false;
    bool endedInBlock_ = false;
    bool endedInCount_ = false;
    std::uint32_t endCount_ = 0;
};
