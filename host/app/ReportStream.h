#pragma once
#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>

class ProgressBar;

// The text of a report on its way out. Pieces gather in a buffer that goes to the file
// each time it passes a chunk, so that a report many times the size of its input (every
// condition of a large display set, written out) is never whole in memory. Made on a
// string, it gathers the whole text in that string instead, for callers that want it so.
class ReportStream {
public:
    // `bar`, if not null, is a progress bar on the same terminal as `file`: it is taken
    // off before each write, so that text and bar do not mix.
    explicit ReportStream(std::FILE* file, ProgressBar* bar = nullptr)
        : buffer_(&own_), file_(file), bar_(bar) {}
    explicit ReportStream(std::string& text) : buffer_(&text) {}
    ReportStream(const ReportStream&) = delete;
    ReportStream& operator=(const ReportStream&) = delete;

    ReportStream& operator+=(std::string_view text);
    ReportStream& operator+=(char c) {
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

    void Drain();
    void Write(std::string_view text);

    std::string own_;
    std::string* buffer_;       // own_, or the caller's string
    std::FILE* file_ = nullptr; // null: everything stays in *buffer_
    ProgressBar* bar_ = nullptr;
    bool failed_ = false;
    int error_ = 0;
};
