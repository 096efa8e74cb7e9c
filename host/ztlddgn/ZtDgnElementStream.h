#pragma once
#include <cstdint>
#include <string>
#include <vector>

// One element as it stands in the file: its bytes (header included) and where it starts.
// The bytes stay valid until the stream moves on.
struct ZtDgnRawElement {
    const unsigned char* bytes = nullptr;
    std::uint32_t size = 0;
    std::uint64_t offset = 0;
};

// Opens the design file `path` (UTF-8) for reading: its descriptor, with its size in
// `size`; -1 with a reason in words for a user if it can't be read as a regular file.
int ZtDgnOpenDesignFile(const std::string& path, std::uint64_t* size, std::string* reason);

// Reads the elements of a design file one after the other through a buffer that holds
// any whole element, so that a caller always sees an element's bytes in one piece.
class ZtDgnElementStream {
public:
    enum Result {
        kElement,   // `element` holds the next element
        kEnd,       // the end-of-design word, or the end of the file between elements
        kTruncated, // the file ends inside an element; Describe tells where
        kReadError, // the operating system failed a read
    };

    ZtDgnElementStream() = default;
    ZtDgnElementStream(const ZtDgnElementStream&) = delete;
    ZtDgnElementStream& operator=(const ZtDgnElementStream&) = delete;
    ~ZtDgnElementStream();

    // Opens `path` (UTF-8); false with a reason if it can't be read as a regular file.
    bool Open(const std::string& path, std::string* reason);
    std::uint64_t GetFileSize() const { return fileSize_; }

    // Moves to the next element. After kEnd, kTruncated or kReadError every further call
    // gives the same result.
    Result Next(ZtDgnRawElement* element);
    // Copies up to `count` bytes from the read position to `out` without moving on;
    // returns how many the file has there.
    std::size_t Peek(unsigned char* out, std::size_t count);
    // Why the last call did not give an element, in words for a user.
    const std::string& Describe() const { return problem_; }

private:
    // Makes at least `count` bytes from the read position available, as far as the file
    // has them; false if it has fewer.
    bool Ensure(std::size_t count);
    // Next, when the element is not wholly in the buffer or the stream ends.
    Result NextSlowly(ZtDgnRawElement* element);

    int descriptor_ = -1;
    std::uint64_t fileSize_ = 0;
    std::vector<unsigned char> buffer_;
    std::size_t begin_ = 0;          // read position in buffer_
    std::size_t end_ = 0;            // end of the bytes read into buffer_
    std::uint64_t bufferOffset_ = 0; // file offset of buffer_[0]
    bool atEof_ = false;
    bool readError_ = false;
    Result finished_ = kElement;
    std::string problem_;
};
