#pragma once
#include <cstdint>
#include <initializer_list>

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

// Graphic elements carry their range and display header in their first 36 bytes.
inline constexpr std::uint32_t kZtDgnGraphicHeaderBytes = 36;

static_assert(sizeof(ZtDgnElement) == 48, "element records are meant to stay small");

// A set of element types (0 to 127) as two words of bits, asked once an element.
class ZtDgnTypeSet {
public:
    constexpr ZtDgnTypeSet(std::initializer_list<int> types) {
        for (int type : types)
            bits_[type >> 6] |= std::uint64_t{1} << (type & 63);
    }
    constexpr bool Has(int type) const { return (bits_[(type >> 6) & 1] >> (type & 63)) & 1; }

private:
    std::uint64_t bits_[2] = {};
};

// Element types that stand for something drawn (cells and complex headers included):
// cell 2, line 3, line string 4, shape 6, text node 7, curve 11, complex chain 12, complex
// shape 14, ellipse 15, arc 16, text 17, surface 18, solid 19, B-spline poles 21, point
// string 22, cone 23, B-spline surface header 24 and boundary 25, B-spline knots 26,
// curve header 27 and weights 28, dimension 33, shared cell instance 35, multi-line 36,
// tag value 37, raster header 87 and component 88.
inline constexpr ZtDgnTypeSet kZtDgnGraphicTypes{2,  3,  4,  6,  7,  11, 12, 14, 15,
                                                 16, 17, 18, 19, 21, 22, 23, 24, 25,
                                                 26, 27, 28, 33, 35, 36, 37, 87, 88};
// Element types whose header gives the total length of their components at byte 36; the
// shared cell definition (34) is not drawn itself, but its components must be passed.
inline constexpr ZtDgnTypeSet kZtDgnGroupTypes{2, 7, 12, 14, 18, 19, 34};

inline bool ZtDgnIsGraphicType(int type) {
    return kZtDgnGraphicTypes.Has(type);
}
inline bool ZtDgnHasTotalLength(int type) {
    return kZtDgnGroupTypes.Has(type);
}
// The name of a graphic element type ("line string"), or null for another type.
const char* ZtDgnTypeName(int type);
