#pragma once
#include <cstdint>

class ZtOdPdsBlock;
class ZtOdPdsBlockTracker;
class ZtUFile;
class ZtUWideStringBuffer;

// Reads blocks one level at a time from a text file. A file that is one enclosing block
// is read with ReadName, which stops behind its opening brace, and then NextBlock, which
// hands out the inner blocks until the enclosing block's closing brace ends the reading.
class ZtOdPdsBlockFileSource {
public:
    // `flags` are OR-ed into every block that NextBlock reads.
    explicit ZtOdPdsBlockFileSource(std::uint32_t flags = 0) : flags_(flags) {}
    ~ZtOdPdsBlockFileSource();
    ZtOdPdsBlockFileSource(const ZtOdPdsBlockFileSource&) = delete;
    ZtOdPdsBlockFileSource& operator=(const ZtOdPdsBlockFileSource&) = delete;

    // Closes a file that is still open, then opens `path`. Returns 1 or 0.
    int Open(const wchar_t* path);
    void Close();

    // Reads up to and including the first opening brace, with counted values off, and
    // gives the name before it. Returns 1, or 0 at the end of the input (`out` untouched).
    int ReadName(ZtUWideStringBuffer* out);
    // Reads the next complete block. Returns 1, or 0 at the end of the input or at a
    // closing brace with no block open; an unfinished block keeps the name it reached.
    int NextBlock(ZtOdPdsBlock* block);
    // The same reads, followed by `tracker`, which learns where each block stands and why
    // a read stopped, and reports what the reader throws away on the way.
    int ReadName(ZtUWideStringBuffer* out, ZtOdPdsBlockTracker& tracker);
    int NextBlock(ZtOdPdsBlock* block, ZtOdPdsBlockTracker& tracker);

    std::uint32_t GetFlags() const { return flags_; }

private:
    // The reads, with a tracker or (null) without.
    int ReadNameTracked(ZtUWideStringBuffer* out, ZtOdPdsBlockTracker* tracker);
    int NextBlockTracked(ZtOdPdsBlock* block, ZtOdPdsBlockTracker* tracker);

    ZtUFile* file_ = nullptr;
    std::uint32_t flags_;
    // The last reader's buffer, kept for the next one while it is small, so that a file
    // of many blocks does not allocate one a block.
    wchar_t* spare_ = nullptr;
    std::size_t spareCapacity_ = 0;
};
