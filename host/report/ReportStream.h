#pragma once
#include <cstddef>
#include <cstdio>
#include <functional>
#include <string>
#include <string_view>

// The text of a report on its way out. Pieces gather in a buffer that goes to the file
// each time it passes a chunk, so that a report many times the size of its input (every
// condition of a large display set, written out) is never whole in memory. Made on a
// string, it gathers the whole text in that string instead, for callers that want it so.
//
// A stream for a reader (kReadable) shows every piece as ReadableText does, line feeds and
// tabs aside: the texts of the run's files go into it as they stand, and none of them
// reaches a terminal raw. Pieces must not split a UTF-8 sequence.
class ReportStream {
public:
    enum class Text { kAsWritten, kReadable };

    // `beforeWrite`, if set, takes whatever else is drawn on the same terminal as `file`
    // (a progress bar) off before each write, so that the two do not mix.
    explicit ReportStream(std::FILE* file, std::function<void()> beforeWrite = {},
                          Text text = Text::kAsWritten)
        : buffer_(&own_), file_(file), beforeWrite_(std::move(beforeWrite)),
          readable_(text == Text::kReadable) {}
    explicit ReportStream(std::string& text, Text kind = Text::kAsWritten)
        : buffer_(&text), readable_(kind == Text::kReadable) {}
    ReportStream(const ReportStream&) = delete;
    ReportStream& operator=(const ReportStream&) = delete;

    ReportStream& operator+=(std::string_view text);
    ReportStream& operator+=(char c) {
        if (readable_)
            return *this += std::string_view(&c, 1);
        buffer_->push_back(c);
        if (file_ && buffer_->size() >= kChunk)
            Drain();
        return *this;
    }
    // `count` copies of `c`.
    void Append(std::size_t count, char c);

    // Hands everything so far to the file and flushes it. False if any write failed since
    // the stream was made; Error() then gives the first failure's errno, 0 if unknown.
    bool Flush();
    int Error() const { return error_; }

private:
    static constexpr std::size_t kChunk = 64 * 1024;

    void Put(std::string_view text);
    void Drain();
    void Write(std::string_view text);

    std::string own_;
    std::string* buffer_;       // own_, or the caller's string
    std::FILE* file_ = nullptr; // null: everything stays in *buffer_
    std::function<void()> beforeWrite_;
    bool readable_ = false;
    bool failed_ = false;
    int error_ = 0;
};
