#include "ztlddgn/ZtDgnElementStream.h"

#include "ztlddgn/ZtDgnBytes.h"
#include "ztutil/ZtUSysDescriptor.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace {

// The largest element: 4 header bytes and 65535 words to follow.
constexpr std::size_t kMaxElementBytes = 4 + 2 * 65535;
// Reads go in large pieces; the buffer always has room for a whole element besides.
constexpr std::size_t kReadSize = 1 << 20;

std::string OffsetText(std::uint64_t offset) {
    return "byte " + std::to_string(offset);
}

} // namespace

int ZtDgnOpenDesignFile(const std::string& path, std::uint64_t* size, std::string* reason) {
    const int descriptor = ZtUSysDescriptor::OpenForReading(path);
    if (descriptor < 0) {
        *reason = errno == EISDIR ? "not a regular file"
                                  : "cannot open the file: " + std::string(std::strerror(errno));
        return -1;
    }
    const long long bytes = ZtUSysDescriptor::RegularFileSize(descriptor);
    if (bytes < 0) {
        ZtUSysDescriptor::Close(descriptor);
        *reason = "not a regular file";
        return -1;
    }
    *size = static_cast<std::uint64_t>(bytes);
    return descriptor;
}

ZtDgnElementStream::~ZtDgnElementStream() {
    if (descriptor_ >= 0)
        ZtUSysDescriptor::Close(descriptor_);
}

bool ZtDgnElementStream::Open(const std::string& path, std::string* reason) {
    descriptor_ = ZtDgnOpenDesignFile(path, &fileSize_, reason);
    if (descriptor_ < 0)
        return false;
    // A file smaller than one read needs no more room than itself besides an element.
    buffer_.resize(static_cast<std::size_t>(std::min<std::uint64_t>(fileSize_, kReadSize)) +
                   kMaxElementBytes);
    return true;
}

bool ZtDgnElementStream::Ensure(std::size_t count) {
    if (end_ - begin_ >= count)
        return true;
    if (descriptor_ < 0 || atEof_ || readError_)
        return false;
    // Move what is left to the front, then fill behind it.
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    bufferOffset_ += begin_;
    end_ -= begin_;
    begin_ = 0;
    while (end_ < count && !atEof_) {
        const long long got =
            ZtUSysDescriptor::Read(descriptor_, buffer_.data() + end_, buffer_.size() - end_);
        if (got < 0) {
            readError_ = true;
            return false;
        }
        atEof_ = got == 0;
        end_ += static_cast<std::size_t>(got);
    }
    return end_ - begin_ >= count;
}

std::size_t ZtDgnElementStream::Peek(unsigned char* out, std::size_t count) {
    Ensure(count);
    const std::size_t available = std::min(count, end_ - begin_);
    std::memcpy(out, buffer_.data() + begin_, available);
    return available;
}

ZtDgnElementStream::Result ZtDgnElementStream::Next(ZtDgnRawElement* element) {
    // The common case: the whole element is in the buffer already.
    if (end_ - begin_ >= 4 && finished_ == kElement) {
        const unsigned char* p = buffer_.data() + begin_;
        const std::size_t size = 4 + 2 * std::size_t{ZtDgnWord(p + 2)};
        if (end_ - begin_ >= size && !(p[0] == 0xFF && p[1] == 0xFF)) {
            element->bytes = p;
            element->size = static_cast<std::uint32_t>(size);
            element->offset = bufferOffset_ + begin_;
            begin_ += size;
            return kElement;
        }
    }
    return NextSlowly(element);
}

ZtDgnElementStream::Result ZtDgnElementStream::NextSlowly(ZtDgnRawElement* element) {
    if (finished_ != kElement)
        return finished_;
    const std::uint64_t offset = bufferOffset_ + begin_;
    auto finish = [&](Result result, std::string problem) {
        finished_ = result;
        problem_ = std::move(problem);
        return result;
    };
    if (!Ensure(2)) {
        if (readError_)
            return finish(kReadError, "read error at " + OffsetText(offset));
        if (end_ == begin_)
            return finish(kEnd, "");
        return finish(kTruncated,
                      "the file ends inside the element header at " + OffsetText(offset));
    }
    const unsigned char* p = buffer_.data() + begin_;
    if (p[0] == 0xFF && p[1] == 0xFF)
        return finish(kEnd, "");
    if (!Ensure(4)) {
        if (readError_)
            return finish(kReadError, "read error at " + OffsetText(offset));
        return finish(kTruncated,
                      "the file ends inside the element header at " + OffsetText(offset));
    }
    p = buffer_.data() + begin_;
    const std::size_t size = 4 + 2 * std::size_t{ZtDgnWord(p + 2)};
    if (!Ensure(size)) {
        if (readError_)
            return finish(kReadError, "read error at " + OffsetText(offset));
        return finish(kTruncated, "the element at " + OffsetText(offset) + " is " +
                                      std::to_string(size) + " bytes long but only " +
                                      std::to_string(end_ - begin_) + " bytes remain in the file");
    }
    element->bytes = buffer_.data() + begin_;
    element->size = static_cast<std::uint32_t>(size);
    element->offset = offset;
    begin_ += size;
    return kElement;
}
