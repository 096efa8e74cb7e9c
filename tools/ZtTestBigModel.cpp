#include "tools/ZtTestBigModel.h"

ZtTestDgnWriter ZtTestBigModel(int elements) {
    ZtTestDgnWriter writer(3, {1000, 80, "m", "mm", {0, 0, 0}});
    int written = 0;
    for (int i = 0; written < elements; ++i) {
        ZtTestDgnSymbology s;
        s.level = 1 + i % 63;
        s.colour = i % 256;
        s.linkages = {ZtTestDmrsLinkage(12, static_cast<std::uint32_t>(i))};
        const std::int32_t x = (i % 1000) * 8000, y = (i / 1000) * 8000;
        if (i % 100 == 99 && written + 3 <= elements) {
            writer.BeginCell(s);
            ZtTestDgnSymbology part;
            writer.Shape(part, {{x, y, 0}, {x + 4000, y, 0}, {x, y + 4000, 0}, {x, y, 0}});
            writer.Shape(part, {{x, y, 800}, {x + 4000, y, 800}, {x, y + 4000, 800}, {x, y, 800}});
            writer.EndGroup();
            written += 3;
        } else {
            writer.LineString(s, {{x, y, 0}, {x + 6000, y + 2000, 1600}});
            ++written;
        }
    }
    writer.EndOfDesign();
    return writer;
}
