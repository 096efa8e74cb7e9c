#pragma once
#include <cstddef>

// A stream as the host's file layer hands it out (ZtUSysFile::fopenW): a reader
// (ZtUFileReader) or a writer (ZtUFileWriter), behind the one handle that the C library's
// FILE pointer stands for. Taking a character is inline, on the reader's buffer of decoded
// units; a writer has none, and gives the end at once.
//
// A stream is ended with ZtUSysFile::fclose, which closes it (a writer's text then takes
// its target's place) and frees it; ZtUSysFile::fdiscard frees it unclosed, and a writer's
// text is then thrown away.
class ZtUFile {
public:
    // The value of GetChar at the end of the input.
    static constexpr unsigned kEnd = 0xFFFF;

    virtual ~ZtUFile() = default;
    ZtUFile(const ZtUFile&) = delete;
    ZtUFile& operator=(const ZtUFile&) = delete;

    // The next UTF-16 unit, or kEnd.
    unsigned GetChar() { return next_ < end_ ? static_cast<unsigned>(*next_++) : Refill(); }
    // Reads up to count - 1 units into `out`, stopping behind a LF, and terminates them;
    // null if nothing was read.
    virtual wchar_t* GetLine(wchar_t* out, int count) = 0;
    // Encodes and buffers `length` units; false if the stream is not writable or failed.
    virtual bool Write(const wchar_t* text, std::size_t length) = 0;
    // Ends the stream: 0, or -1 if anything failed on the way.
    virtual int Close() = 0;

    bool HasError() const { return error_; }

protected:
    ZtUFile() = default;
    // Decodes the next units into [next_, end_) and hands out the first, or gives kEnd.
    virtual unsigned Refill() = 0;

    const wchar_t* next_ = nullptr;
    const wchar_t* end_ = nullptr;
    bool error_ = false;
};
