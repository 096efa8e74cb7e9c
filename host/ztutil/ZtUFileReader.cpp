#include "ztutil/ZtUFileReader.h"

#include "ztutil/ZtUSysDescriptor.h"
#include "ztutil/ZtUSysFile.h"
#include "ztutil/ZtUSysString.h"
#include "ztutil/ZtUUtf16.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <cwchar>

namespace {

// True if the eight bytes at `bytes` are ASCII and none is a CR: they decode one to one.
bool IsPlainAscii(const unsigned char* bytes) {
    constexpr std::uint64_t kHighBits = 0x8080808080808080;
    constexpr std::uint64_t kOnes = 0x0101010101010101;
    std::uint64_t word;
    std::memcpy(&word, bytes, sizeof word);
    const std::uint64_t crZero = word ^ (kOnes * '\r');
    // A zero byte in crZero is a CR in the word.
    return (word & kHighBits) == 0 && ((crZero - kOnes) & ~crZero & kHighBits) == 0;
}

// The character of a byte that begins no UTF-8 sequence: the files' Windows authors write
// in code page 1252, which differs from Latin-1 in 0x80-0x9F; its five undefined bytes
// keep their value.
char32_t FromWindows1252(unsigned char byte) {
    static constexpr char16_t kHigh[32] = {
        0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
    };
    return byte >= 0x80 && byte < 0xA0 ? kHigh[byte - 0x80] : char32_t{byte};
}

} // namespace

ZtUFileReader::ZtUFileReader(int descriptor) : descriptor_(descriptor) {
    // A small file takes buffers in proportion to it. Reading stops a margin past the size
    // the file has now, so that one that grows while it is read, or a kernel file that
    // claims no size and never ends, is read once and no further.
    const long long size = ZtUSysDescriptor::RegularFileSize(descriptor_);
    if (size >= 0)
        readSize_ = std::clamp(static_cast<std::size_t>(size), kSmallChunk, kChunk);
    bytesLeft_ = static_cast<std::uint64_t>(size > 0 ? size : 0) + kGrowthMargin;
    // Left uninitialised: every byte and unit is written before it is read, and clearing
    // them would cost as much as reading a small file.
    bytes_ = std::make_unique_for_overwrite<unsigned char[]>(readSize_ + kLookahead);
    units_ = std::make_unique_for_overwrite<wchar_t[]>(readSize_ + kLookahead);
}

ZtUFileReader::~ZtUFileReader() {
    if (descriptor_ >= 0)
        ZtUSysDescriptor::Close(descriptor_);
}

unsigned ZtUFileReader::Refill() {
    while (!ended_) {
        DecodeChunk();
        if (next_ < end_)
            return static_cast<unsigned>(*next_++);
    }
    return kEnd;
}

void ZtUFileReader::DecodeChunk() {
    if (end_)
        unitsBefore_ += static_cast<std::uint64_t>(end_ - units_.get());
    next_ = end_ = units_.get();
    std::size_t available = carried_;
    const std::size_t wanted =
        static_cast<std::size_t>(std::min<std::uint64_t>(readSize_, bytesLeft_));
    const long long got =
        wanted == 0 ? 0 : ZtUSysDescriptor::Read(descriptor_, bytes_.get() + available, wanted);
    if (got < 0) {
        error_ = true;
    } else {
        available += static_cast<std::size_t>(got);
        bytesLeft_ -= static_cast<std::uint64_t>(got);
    }
    // Only at the end may a sequence be decoded without the bytes that could follow it.
    const bool last = got <= 0;

    std::size_t first = 0;
    if (encoding_ == Encoding::kUndecided) {
        if (!last && available < 3) {
            carried_ = available;
            return;
        }
        first = SkipByteOrderMark(available);
    }
    const std::size_t used = encoding_ == Encoding::kUtf8 ? DecodeUtf8(first, available, last)
                                                          : DecodeUtf16(first, available, last);
    if (last || ended_) {
        ended_ = true;
        carried_ = 0;
        return;
    }
    carried_ = available - used;
    std::memmove(bytes_.get(), bytes_.get() + used, carried_);
}

std::size_t ZtUFileReader::SkipByteOrderMark(std::size_t available) {
    const unsigned char* b = bytes_.get();
    if (available >= 3 && b[0] == 0xEF && b[1] == 0xBB && b[2] == 0xBF) {
        encoding_ = Encoding::kUtf8;
        return 3;
    }
    if (available >= 2 && b[0] == 0xFF && b[1] == 0xFE) {
        encoding_ = Encoding::kUtf16LE;
        return 2;
    }
    if (available >= 2 && b[0] == 0xFE && b[1] == 0xFF) {
        encoding_ = Encoding::kUtf16BE;
        return 2;
    }
    encoding_ = Encoding::kUtf8;
    return 0;
}

// Decodes bytes [first, available) as far as they are known to be complete and returns the
// index of the first byte not used. Before the last chunk, a unit is decoded only while
// kLookahead bytes remain, so that neither a sequence nor a CR LF is split by the chunk's
// end.
std::size_t ZtUFileReader::DecodeUtf8(std::size_t first, std::size_t available, bool last) {
    const unsigned char* const bytes = bytes_.get();
    const unsigned char* const stop = bytes + available;
    const std::size_t safe =
        last ? available : (available >= kLookahead ? available - (kLookahead - 1) : 0);
    const unsigned char* const safeEnd = bytes + safe;
    const unsigned char* p = bytes + first;
    wchar_t* out = units_.get();
    while (p < safeEnd) {
        if (safeEnd - p >= 8 && IsPlainAscii(p)) {
            for (int i = 0; i < 8; ++i)
                out[i] = static_cast<wchar_t>(p[i]);
            out += 8;
            p += 8;
            continue;
        }
        const unsigned char byte = *p;
        if (byte < 0x80) {
            ++p;
            if (byte == '\r' && p < stop && *p == '\n')
                continue;
            *out++ = static_cast<wchar_t>(byte);
            continue;
        }
        char32_t codePoint;
        std::size_t length =
            ZtUSysString::DecodeUtf8(p, static_cast<std::size_t>(stop - p), &codePoint);
        if (length == 0) {
            codePoint = FromWindows1252(byte);
            length = 1;
            if (legacyBytes_++ == 0)
                firstLegacyUnit_ = unitsBefore_ + static_cast<std::uint64_t>(out - units_.get());
        }
        p += length;
        if (codePoint == kEnd) {
            ended_ = true;
            break;
        }
        if (codePoint >= ZtUUtf16::kFirstSupplementary) {
            *out++ = static_cast<wchar_t>(ZtUUtf16::HighOf(codePoint));
            *out++ = static_cast<wchar_t>(ZtUUtf16::LowOf(codePoint));
        } else {
            *out++ = static_cast<wchar_t>(codePoint);
        }
    }
    end_ = out;
    return static_cast<std::size_t>(p - bytes);
}

std::size_t ZtUFileReader::DecodeUtf16(std::size_t first, std::size_t available, bool last) {
    const unsigned char* const bytes = bytes_.get();
    const bool littleEndian = encoding_ == Encoding::kUtf16LE;
    auto unitAt = [&](std::size_t at) -> unsigned {
        return littleEndian ? bytes[at] | (bytes[at + 1] << 8) : (bytes[at] << 8) | bytes[at + 1];
    };
    const std::size_t safe =
        last ? available : (available >= kLookahead ? available - (kLookahead - 1) : 0);
    std::size_t at = first;
    wchar_t* out = units_.get();
    // A lone byte at the very end has no partner and is dropped.
    while (at < safe && at + 1 < available) {
        const unsigned unit = unitAt(at);
        at += 2;
        if (unit == kEnd) {
            ended_ = true;
            break;
        }
        if (unit == '\r' && at + 1 < available && unitAt(at) == '\n')
            continue;
        *out++ = static_cast<wchar_t>(unit);
    }
    end_ = out;
    return at;
}

wchar_t* ZtUFileReader::GetLine(wchar_t* out, int count) {
    if (!out || count <= 0)
        return nullptr;
    const std::size_t room = static_cast<std::size_t>(count) - 1;
    std::size_t length = 0;
    while (length < room) {
        if (next_ == end_) {
            const unsigned c = Refill();
            if (c == kEnd)
                break;
            out[length++] = static_cast<wchar_t>(c);
            if (c == '\n')
                break;
            continue;
        }
        std::size_t take = std::min(room - length, static_cast<std::size_t>(end_ - next_));
        const wchar_t* lineFeed = std::wmemchr(next_, L'\n', take);
        if (lineFeed)
            take = static_cast<std::size_t>(lineFeed - next_) + 1;
        std::wmemcpy(out + length, next_, take);
        next_ += take;
        length += take;
        if (lineFeed)
            break;
    }
    out[length] = 0;
    return length == 0 && room > 0 ? nullptr : out;
}

bool ZtUFileReader::Write(const wchar_t*, std::size_t) {
    error_ = true;
    return false;
}

int ZtUFileReader::Close() {
    if (descriptor_ < 0)
        return -1;
    const int closed = ZtUSysDescriptor::Close(descriptor_);
    descriptor_ = -1;
    if (legacyBytes_ > 0)
        ZtUSysFile::RecordLegacyRead({readPath_, legacyBytes_, firstLegacyUnit_});
    ended_ = true;
    next_ = end_ = nullptr;
    return closed == 0 && !error_ ? 0 : -1;
}
