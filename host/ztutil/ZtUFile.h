#pragma once
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

// The host's buffered text stream over one open file, for reading or for writing.
//
// Reading decodes the whole byte chunk of each refill into a buffer of UTF-16 units, so
// that taking one character is a comparison and a load. The encoding is chosen by the
// byte-order mark: UTF-8 (BOM skipped), UTF-16 LE or BE (BOM switches), else UTF-8 in
// which a byte that begins no valid, shortest-form sequence is one Windows-1252 character;
// a stream that read such bytes says so on closing (ZtUSysFile::TakeLegacyReads).
// CR LF becomes LF; a lone CR stays. The input ends at the end of the file, at a read
// error (which sets the error flag) or at a U+FFFF character, after which nothing is read.
//
// Writing encodes UTF-8 without a BOM: a surrogate pair becomes one sequence and a lone
// surrogate becomes U+FFFD. A write stream may stand in for a file it replaces: it writes
// a temporary file, which Close moves over the target only when every write, the flush to
// the device and the close succeeded, and removes otherwise, so that a failed write never
// leaves a cut file. Such a failure is recorded for ZtUSysFile::TakeWriteFailures.
class ZtUFile {
public:
    enum class Mode { kRead, kWrite };
    // The value of GetChar at the end of the input.
    static constexpr unsigned kEnd = 0xFFFF;

    // Takes over an open descriptor.
    ZtUFile(int descriptor, Mode mode);
    // Takes over a descriptor open for writing on `temporary`, which replaces `target` on
    // a successful close; `shownPath` names the target in a recorded failure.
    ZtUFile(int descriptor, std::string temporary, std::string target, std::string shownPath);
    // Flushes and closes, ignoring failures; Close reports them.
    ~ZtUFile();
    ZtUFile(const ZtUFile&) = delete;
    ZtUFile& operator=(const ZtUFile&) = delete;

    // The next UTF-16 unit, or kEnd.
    unsigned GetChar() { return next_ < end_ ? static_cast<unsigned>(*next_++) : Refill(); }
    // Reads up to count - 1 units into `out`, stopping behind a LF, and terminates them;
    // null if nothing was read.
    wchar_t* GetLine(wchar_t* out, int count);

    // Encodes and buffers `length` units; false if the stream is not writable.
    bool Write(const wchar_t* text, std::size_t length);
    // Flushes, closes the descriptor (and puts a replacement in place) and returns 0, or
    // -1 if anything failed.
    int Close();

    bool HasError() const { return error_; }

    // The path a read stream was opened with, under which it reports its legacy bytes.
    void SetReadPath(std::wstring path) { readPath_ = std::move(path); }

private:
    static constexpr std::size_t kChunk = 64 * 1024;
    // The smallest read of a file smaller than a chunk.
    static constexpr std::size_t kSmallChunk = 4 * 1024;
    // The longest stretch of bytes that decoding one unit can depend on: a 4-byte UTF-8
    // sequence, or a UTF-16 CR and the unit behind it.
    static constexpr std::size_t kLookahead = 4;

    enum class Encoding { kUndecided, kUtf8, kUtf16LE, kUtf16BE };

    unsigned Refill();
    void DecodeChunk();
    std::size_t SkipByteOrderMark(std::size_t available);
    std::size_t DecodeUtf8(std::size_t first, std::size_t available, bool last);
    std::size_t DecodeUtf16(std::size_t first, std::size_t available, bool last);
    void EncodeUnit(unsigned unit);
    bool Flush();
    // Marks the stream failed with the operating system's error number.
    void Fail(int errorNumber);
    // Moves a replacement's temporary file into place if `ok`, else removes it; false
    // if the move failed.
    bool Replace(bool ok);

    int descriptor_;
    Mode mode_;
    bool error_ = false;
    // The errno of the first failure, 0 if none.
    int errorNumber_ = 0;
    // No more units will come from the file (end, read error or U+FFFF).
    bool ended_ = false;
    Encoding encoding_ = Encoding::kUndecided;

    // Read side. [next_, end_) is what GetChar hands out next; bytes_ starts with the
    // `carried_` bytes that the last chunk could not decode yet.
    const wchar_t* next_ = nullptr;
    const wchar_t* end_ = nullptr;
    std::unique_ptr<unsigned char[]> bytes_;
    std::unique_ptr<wchar_t[]> units_;
    std::size_t carried_ = 0;
    // Bytes a read asks for: a chunk, or less for a file that is smaller.
    std::size_t readSize_ = kChunk;
    // Units handed out before the chunk being read; bytes read as Windows-1252, and the
    // unit offset of the first.
    std::uint64_t unitsBefore_ = 0;
    std::uint64_t legacyBytes_ = 0;
    std::uint64_t firstLegacyUnit_ = 0;
    std::wstring readPath_;

    // Write side. A high surrogate waits here for its low half.
    std::string pending_;
    unsigned highSurrogate_ = 0;
    // A replacement's files; empty for a plain stream.
    std::string temporary_;
    std::string target_;
    std::string shownPath_;
};
