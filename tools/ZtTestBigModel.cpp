#include "tools/ZtTestBigModel.h"

namespace {

// Calls `piece(i, cell)` for each piece of a scene of `elements` elements, in order: every
// 100th piece is a cell of three elements where it still fits, the others line strings.
template <class Piece> void ForEachPiece(int elements, Piece piece) {
    int written = 0;
    for (int i = 0; written < elements; ++i) {
        const bool cell = i % 100 == 99 && written + 3 <= elements;
        piece(i, cell);
        written += cell ? 3 : 1;
    }
}

} // namespace

ZtTestDgnWriter ZtTestBigModel(int elements) {
    ZtTestDgnWriter writer(3, {1000, 80, "m", "mm", {0, 0, 0}});
    ForEachPiece(elements, [&writer](int i, bool cell) {
        ZtTestDgnSymbology s;
        s.level = 1 + i % 63;
        s.colour = i % 256;
        s.linkages = {ZtTestDmrsLinkage(12, static_cast<std::uint32_t>(i))};
        const std::int32_t x = (i % 1000) * 8000, y = (i / 1000) * 8000;
        if (cell) {
            writer.BeginCell(s);
            ZtTestDgnSymbology part;
            writer.Shape(part, {{x, y, 0}, {x + 4000, y, 0}, {x, y + 4000, 0}, {x, y, 0}});
            writer.Shape(part, {{x, y, 800}, {x + 4000, y, 800}, {x, y + 4000, 800}, {x, y, 800}});
            writer.EndGroup();
        } else {
            writer.LineString(s, {{x, y, 0}, {x + 6000, y + 2000, 1600}});
        }
    });
    writer.EndOfDesign();
    return writer;
}

int ZtTestBigModelPieces(int elements) {
    int pieces = 0;
    ForEachPiece(elements, [&pieces](int, bool) { ++pieces; });
    return pieces;
}
