#include "ztutil/ZtUFileWriter.h"

#include "ztutil/ZtUFileScope.h"
#include "ztutil/ZtUSysDescriptor.h"
#include "ztutil/ZtUSysString.h"
#include "ztutil/ZtUUtf16.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace {

constexpr unsigned kReplacementCharacter = 0xFFFD;

} // namespace

ZtUFileWriter::ZtUFileWriter(int descriptor, std::unique_ptr<ZtUSysReplacement> replacement,
                             std::string shownPath)
    : descriptor_(descriptor), replacement_(std::move(replacement)),
      shownPath_(std::move(shownPath)) {}

ZtUFileWriter::~ZtUFileWriter() {
    if (descriptor_ >= 0)
        ZtUSysDescriptor::Close(descriptor_);
}

bool ZtUFileWriter::Write(const wchar_t* text, std::size_t length) {
    if (descriptor_ < 0) {
        Fail(EBADF);
        return false;
    }
    if (ZtUWriteWatcher* watcher = ZtUFileScope::CurrentWatcher())
        watcher->Wrote(std::wstring_view(text, length));
    for (std::size_t i = 0; i < length;) {
        // Runs of ASCII, most of what is written, are copied as they stand.
        std::size_t end = i;
        while (end < length && static_cast<unsigned>(text[end]) < 0x80)
            ++end;
        if (end > i && !highSurrogate_) {
            // Narrowed in place: a range of wide characters appended as it stands would
            // first be copied into a string of its own.
            const std::size_t at = pending_.size();
            pending_.resize(at + (end - i));
            std::transform(text + i, text + end, pending_.begin() + static_cast<std::ptrdiff_t>(at),
                           [](wchar_t c) { return static_cast<char>(c); });
            i = end;
            continue;
        }
        EncodeUnit(static_cast<unsigned>(text[i++]));
    }
    if (pending_.size() >= kChunk)
        Flush();
    return !error_;
}

// Units are UTF-16, but a wchar_t here is wide enough for a whole code point, which is
// written as it stands.
void ZtUFileWriter::EncodeUnit(unsigned unit) {
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

bool ZtUFileWriter::Flush() {
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
    bytesWritten_ += done;
    pending_.clear();
    return !error_;
}

void ZtUFileWriter::Fail(int errorNumber) {
    if (!error_)
        errorNumber_ = errorNumber;
    error_ = true;
}

int ZtUFileWriter::Close() {
    if (descriptor_ < 0)
        return -1;
    if (highSurrogate_) {
        highSurrogate_ = 0;
        ZtUSysString::AppendUtf8(pending_, kReplacementCharacter);
    }
    // The text must be on the device before it takes the old file's place.
    if (Flush())
        if (const int error = ZtUSysDescriptor::Commit(descriptor_))
            Fail(error);
    if (const int error = ZtUSysDescriptor::Close(descriptor_))
        Fail(error);
    descriptor_ = -1;
    if (!error_) {
        ZtUWriteWatcher* watcher = ZtUFileScope::CurrentWatcher();
        if (!watcher ||
            watcher->MayReplace({shownPath_, bytesWritten_, replacement_->GetOldSize()})) {
            if (const int error = replacement_->Commit())
                Fail(error);
        }
    }
    // Gone whether it moved or not: an uncommitted temporary file goes with it.
    replacement_.reset();
    if (!error_)
        return 0;
    ZtUFileScope::RecordFailure(shownPath_, std::strerror(errorNumber_));
    return -1;
}
