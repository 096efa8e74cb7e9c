#pragma once
#include "ztutil/ZtUFile.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

// The host's buffered text stream for reading one open file.
//
// Reading decodes the whole byte chunk of each refill into a buffer of UTF-16 units, so
// that taking one character is a comparison and a load. The encoding is chosen by the
// byte-order mark: UTF-8 (BOM skipped), UTF-16 LE or BE (BOM switches), else UTF-8 in
// which a byte that begins no valid, shortest-form sequence is one Windows-1252 character;
// a stream that read such bytes says so on closing (ZtUSysFile::TakeLegacyReads).
// CR LF becomes LF; a lone CR stays. The input ends at the end of the file, at a read
// error (which sets the error flag) or at a U+FFFF character, after which nothing is read.
//
// A file is read no further than the size it had when the stream was made, and a margin:
// one that keeps growing, or a kernel file that claims no size and never ends, is cut
// there as if it ended.
class ZtUFileReader final : public ZtUFile {
public:
    // Bytes read beyond the size the file had at the start.
    static constexpr std::uint64_t kGrowthMargin = 64 * 1024;

    // Takes over a descriptor open for reading.
    explicit ZtUFileReader(int descriptor);
    ~ZtUFileReader() override;

    wchar_t* GetLine(wchar_t* out, int count) override;
    // A reader is not writable: marks the stream failed.
    bool Write(const wchar_t* text, std::size_t length) override;
    // Closes the descriptor: 0, or -1 if that or a read failed.
    int Close() override;

    // The path the stream was opened with, under which it reports its legacy bytes.
    void SetReadPath(std::wstring path) { readPath_ = std::move(path); }

private:
    static constexpr std::size_t kChunk = 64 * 1024;
    // The smallest read of a file smaller than a chunk.
    static constexpr std::size_t kSmallChunk = 4 * 1024;
    // The longest stretch of bytes that decoding one unit can depend on: a 4-byte UTF-8
    // sequence, or a UTF-16 CR and the unit behind it.
    static constexpr std::size_t kLookahead = 4;

    enum class Encoding { kUndecided, kUtf8, kUtf16LE, kUtf16BE };

    unsigned Refill() override;
    void DecodeChunk();
    std::size_t SkipByteOrderMark(std::size_t available);
    std::size_t DecodeUtf8(std::size_t first, std::size_t available, bool last);
    std::size_t DecodeUtf16(std::size_t first, std::size_t available, bool last);

    int descriptor_;
    // No more units will come from the file (end, read error, U+FFFF or the size bound).
    bool ended_ = false;
    Encoding encoding_ = Encoding::kUndecided;

    // [next_, end_) is what GetChar hands out next; bytes_ starts with the `carried_`
    // bytes that the last chunk could not decode yet.
    std::unique_ptr<unsigned char[]> bytes_;
    std::unique_ptr<wchar_t[]> units_;
    std::size_t carried_ = 0;
    // Bytes a read asks for: a chunk, or less for a file that is smaller.
    std::size_t readSize_ = kChunk;
    // Bytes that may still be read before the size bound ends the input.
    std::uint64_t bytesLeft_ = 0;
    // Units handed out before the chunk being read; bytes read as Windows-1252, and the
    // unit offset of the first.
    std::uint64_t unitsBefore_ = 0;
    std::uint64_t legacyBytes_ = 0;
    std::uint64_t firstLegacyUnit_ = 0;
    std::wstring readPath_;
};
