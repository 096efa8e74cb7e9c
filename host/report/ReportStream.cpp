#include "report/ReportStream.h"

#include "report/ReadableText.h"

#include <cerrno>

ReportStream& ReportStream::operator+=(std::string_view text) {
    if (readable_)
        Put(ReadableText(text, true));
    else
        Put(text);
    return *this;
}

void ReportStream::Put(std::string_view text) {
    if (file_ && text.size() >= kChunk) {
        // A piece as large as a chunk goes straight out rather than through the buffer.
        Drain();
        Write(text);
        return;
    }
    buffer_->append(text);
    if (file_ && buffer_->size() >= kChunk)
        Drain();
}

void ReportStream::Append(std::size_t count, char c) {
    buffer_->append(count, c);
    if (file_ && buffer_->size() >= kChunk)
        Drain();
}

void ReportStream::Write(std::string_view text) {
    if (failed_ || text.empty())
        return;
    if (beforeWrite_)
        beforeWrite_();
    errno = 0;
    if (std::fwrite(text.data(), 1, text.size(), file_) != text.size()) {
        failed_ = true;
        error_ = errno;
    }
}

void ReportStream::Drain() {
    Write(*buffer_);
    buffer_->clear();
}

bool ReportStream::Flush() {
    if (!file_)
        return true;
    Drain();
    errno = 0;
    if (!failed_ && (std::fflush(file_) != 0 || std::ferror(file_))) {
        failed_ = true;
        error_ = errno;
    }
    return !failed_;
}
