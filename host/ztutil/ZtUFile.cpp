#include "ztutil/ZtUFile.h"

#include "ztutil/ZtUSysDescriptor.h"
#include "ztutil/ZtUSysFile.h"
#include "ztutil/ZtUSysString.h"
#include "ztutil/ZtUUtf16.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <cwchar>

namespace {

constexpr unsigned kReplacementCharacter = 0xFFFD;

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

ZtUFile::ZtUFile(int descriptor, Mode mode)
    : descriptor_(descriptor), mode_(mode), ended_(mode != Mode::kRead) {
    if (mode_ != Mode::kRead)
        return;
    // A small file takes buffers in proportion to it; one that grows while it is read is
    // still read whole, in smaller pieces.
    const long long size = ZtUSysDescriptor::RegularFileSize(descriptor_);
    if (size >= 0)
        readSize_ = std::clamp(static_cast<std::size_t>(size), kSmallChunk, kChunk);
    // Left uninitialised: every byte and unit is written before it is read, and clearing
    // them would cost as much as reading a small file.
    bytes_ = std::make_unique_for_overwrite<unsigned char[]>(readSize_ + kLookahead);
    units_ = std::make_unique_for_overwrite<wchar_t[]>(readSize_ + kLookahead);
}

ZtUFile::ZtUFile(int descriptor, std::string temporary, std::string target, std::string shownPath)
    : ZtUFile(descriptor, Mode::kWrite) {
    temporary_ = std::move(temporary);
    target_ = std::move(target);
    shownPath_ = std::move(shownPath);
}

ZtUFile::~ZtUFile() {
    if (descriptor_ >= 0)
        Close();
}

unsigned ZtUFile::Refill() {
    while (!ended_) {
        DecodeChunk();
        if (next_ < end_)
            return static_cast<unsigned>(*next_++);
    }
    return kEnd;
}

void ZtUFile::DecodeChunk() {
    if (end_)
        unitsBefore_ += static_cast<std::uint64_t>(end_ - units_.get());
    next_ = end_ = units_.get();
    std::size_t available = carried_;
    const long long got = ZtUSysDescriptor::Read(descriptor_, bytes_.get() + available, readSize_);
    if (got < 0)
        error_ = true;
    else
        available += static_cast<std::size_t>(got);
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

std::size_t ZtUFile::SkipByteOrderMark(std::size_t available) {
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
std::size_t ZtUFile::DecodeUtf8(std::size_t first, std::size_t available, bool last) {
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

std::size_t ZtUFile::DecodeUtf16(std::size_t first, std::size_t available, bool last) {
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

wchar_t* ZtUFile::GetLine(wchar_t* out, int count) {
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

bool ZtUFile::Write(const wchar_t* text, std::size_t length) {
    if (mode_ != Mode::kWrite || descriptor_ < 0) {
        Fail(EBADF);
        return false;
    }
    for (std::size_t i = 0; i < length; ++i)
        EncodeUnit(static_cast<unsigned>(text[i]));
    if (pending_.size() >= kChunk)
        Flush();
    return true;
}

// Units are UTF-16, but a wchar_t here is wide enough for a whole code point, which is
// written as it stands.
void ZtUFile::EncodeUnit(unsigned unit) {
    if (highSurrogate_) {
        const unsigned high = highSurrogate_;
        highSurrogate_ = 0;
        if (ZtUUtf16::IsLowSurrogate(unit)) {
            ZtUSysString::AppendUtf8(pending_, ZtUUtf16::Combine(high, unit));
            return;
        }
        ZtUSysString::AppendUtf8(pending_, kReplacementCharacter);
    }
    if (ZtUUtf16::IsHighSurrogate(unit)) {
        highSurrogate_ = unit;
        return;
    }
    if (ZtUUtf16::IsLowSurrogate(unit) || unit > 0x10FFFF)
        unit = kReplacementCharacter;
    ZtUSysString::AppendUtf8(pending_, unit);
}

bool ZtUFile::Flush() {
    std::size_t done = 0;
    while (done < pending_.size() && !error_) {
        const long long written =
            ZtUSysDescriptor::Write(descriptor_, pending_.data() + done, pending_.size() - done);
        if (written <= 0) {
            Fail(written < 0 ? errno : EIO);
            break;
        }
        done += static_cast<std::size_t>(written);
    }
    pending_.clear();
    return !error_;
}

void ZtUFile::Fail(int errorNumber) {
    if (!error_)
        errorNumber_ = errorNumber;
    error_ = true;
}

int ZtUFile::Close() {
    if (descriptor_ < 0)
        return -1;
    if (mode_ == Mode::kWrite) {
        if (highSurrogate_) {
            highSurrogate_ = 0;
            ZtUSysString::AppendUtf8(pending_, kReplacementCharacter);
        }
        // A replacement must be on the device before it takes the old file's place.
        if (Flush() && !target_.empty())
            if (const int error = ZtUSysDescriptor::Commit(descriptor_))
                Fail(error);
    }
    if (const int error = ZtUSysDescriptor::Close(descriptor_))
        Fail(error);
    descriptor_ = -1;
    if (legacyBytes_ > 0)
        ZtUSysFile::RecordLegacyRead({readPath_, legacyBytes_, firstLegacyUnit_});
    const bool ok = Replace(!error_);
    return ok ? 0 : -1;
}

bool ZtUFile::Replace(bool ok) {
    if (target_.empty())
        return ok;
    if (ok)
        if (const int error = ZtUSysDescriptor::Replace(temporary_, target_))
            Fail(error);
    if (error_) {
        ZtUSysDescriptor::Remove(temporary_);
        ZtUSysFile::RecordWriteFailure(shownPath_, std::strerror(errorNumber_));
    }
    return !error_;
}
