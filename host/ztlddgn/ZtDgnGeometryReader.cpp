#include "ztlddgn/ZtDgnGeometryReader.h"

#include "ztlddgn/ZtDgnBytes.h"
#include "ztlddgn/ZtDgnElementStream.h"
#include "ztutil/ZtUSysDescriptor.h"

#include <algorithm>

namespace {

// The window read at a time; an element longer than it is read whole.
constexpr std::size_t kWindowBytes = 1 << 16;
// The header words that tell an element apart: level and type, length, range.
constexpr std::size_t kHeaderBytes = 28;

} // namespace

ZtDgnGeometryReader::~ZtDgnGeometryReader() {
    if (descriptor_ >= 0)
        ZtUSysDescriptor::Close(descriptor_);
}

bool ZtDgnGeometryReader::Open(const std::string& path, int dimension, std::string* reason) {
    descriptor_ = ZtDgnOpenDesignFile(path, &fileSize_, reason);
    if (descriptor_ < 0)
        return false;
    dimension_ = dimension;
    return true;
}

const unsigned char* ZtDgnGeometryReader::Bytes(std::uint64_t offset, std::size_t count) {
    if (offset > fileSize_ || count > fileSize_ - offset)
        return nullptr;
    if (offset >= windowOffset_ && offset - windowOffset_ <= window_.size() &&
        count <= window_.size() - (offset - windowOffset_))
        return window_.data() + (offset - windowOffset_);
    const std::size_t want = static_cast<std::size_t>(
        std::min<std::uint64_t>(std::max(count, kWindowBytes), fileSize_ - offset));
    window_.resize(want);
    windowOffset_ = offset;
    std::size_t got = 0;
    if (ZtUSysDescriptor::Seek(descriptor_, offset) == 0) {
        while (got < want) {
            const long long n =
                ZtUSysDescriptor::Read(descriptor_, window_.data() + got, want - got);
            if (n <= 0)
                break;
            got += static_cast<std::size_t>(n);
        }
    }
    window_.resize(got);
    return got >= count ? window_.data() : nullptr;
}

bool ZtDgnGeometryReader::Read(const ZtDgnElement& element, ZtDgnGeometry* out) {
    out->Clear();
    if (descriptor_ < 0)
        return false;
    const unsigned char* header = Bytes(element.offset, kHeaderBytes);
    if (!header || header[0] != element.levelByte || (header[1] & 0x7F) != element.type)
        return false;
    for (int i = 0; i < 6; ++i)
        if (ZtDgnRangeValue(header + 4 + 4 * i) != element.range[i])
            return false;
    const std::size_t size = 4 + 2 * std::size_t{ZtDgnWord(header + 2)};
    const unsigned char* bytes = Bytes(element.offset, size);
    return bytes && ZtDgnDecodeGeometry(bytes, size, dimension_, out);
}
