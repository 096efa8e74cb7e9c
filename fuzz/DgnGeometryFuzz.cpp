// The decoder of an element's geometry on one record, as the report reads it back from a
// design file: the first byte chooses a 2D or 3D file, the rest is the record.

#include "ZtFuzzSupport.h"

#include "ztlddgn/ZtDgnGeometry.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const int dimension = (data[0] & 1) ? 3 : 2;
    ZtDgnGeometry geometry;
    const bool decoded = ZtDgnDecodeGeometry(data + 1, size - 1, dimension, &geometry);
    ZtFuzzCheck(decoded || geometry.IsEmpty(), "a refused record left geometry behind");
    // What it gives is bounded by the record: a vertex takes at least eight of its bytes.
    std::size_t points = 0;
    for (const ZtDgnPolyline& line : geometry.polylines)
        points += line.points.size();
    ZtFuzzCheck(points <= size * 8, "more points than the record can hold");
    return 0;
}
