#pragma once
#include "ztlddgn/ZtDgnElement.h"
#include "ztlddgn/ZtDgnGeometry.h"

#include <cstdint>
#include <string>
#include <vector>

// Reads elements of a loaded model's file again, one at a time by their offsets, to
// decode what they draw. Reads go through a window of the file, so that elements asked
// for in file order cost one read per window rather than one per element.
class ZtDgnGeometryReader {
public:
    ZtDgnGeometryReader() = default;
    ZtDgnGeometryReader(const ZtDgnGeometryReader&) = delete;
    ZtDgnGeometryReader& operator=(const ZtDgnGeometryReader&) = delete;
    ~ZtDgnGeometryReader();

    // Opens the design file at `path` (UTF-8) of `dimension` 2 or 3; false with the
    // reason.
    bool Open(const std::string& path, int dimension, std::string* reason);
    // Decodes the element that `element` records, at its offset. False where the file no
    // longer holds that element there (its header or range differ from the record's: the
    // file changed since it was loaded), can't be read, or the record is cut short.
    bool Read(const ZtDgnElement& element, ZtDgnGeometry* out);

private:
    // The file's bytes from `offset` on, at least `count` of them, or null where the file
    // ends first or a read fails.
    const unsigned char* Bytes(std::uint64_t offset, std::size_t count);

    int descriptor_ = -1;
    int dimension_ = 3;
    std::uint64_t fileSize_ = 0;
    std::vector<unsigned char> window_;
    std::uint64_t windowOffset_ = 0;
};
