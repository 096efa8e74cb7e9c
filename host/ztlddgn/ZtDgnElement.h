#pragma once
#include <cstdint>

// What the model keeps of one graphic element: its header, display header and where its
// linkages lie in the model's linkage store. Kept small: a model may hold millions.
struct ZtDgnElement {
    std::uint64_t offset;       // byte offset of the element in the file
    std::int32_t range[6];      // x, y, z low, then x, y, z high, in UORs
    std::uint32_t index;        // position among all elements, the control block being 0
    std::uint32_t linkageFirst; // first word of its linkages in the model's store
    std::uint16_t linkageWords; // words of whole linkages kept
    std::uint16_t graphicGroup;
    std::uint8_t type;
    std::uint8_t levelByte; // the header's first byte: level, 0x80 for a component
    std::uint8_t colour;
    std::uint8_t symbology; // line style in bits 0-2, weight in bits 3-7

    int GetLevel() const { return levelByte & 0x3F; }
    bool IsComplex() const { return (levelByte & 0x80) != 0; }
    int GetWeight() const { return symbology >> 3; }
    int GetStyle() const { return symbology & 7; }
};

static_assert(sizeof(ZtDgnElement) == 48, "element records are meant to stay small");

// Element types that stand for something drawn (cells and complex headers included).
bool ZtDgnIsGraphicType(int type);
// The name of a graphic element type ("line string"), or null for another type.
const char* ZtDgnTypeName(int type);
// Element types whose header gives the total length of their components at byte 36.
bool ZtDgnHasTotalLength(int type);
