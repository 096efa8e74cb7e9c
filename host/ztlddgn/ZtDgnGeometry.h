#pragma once
#include "ztlinear/ZtLAffine3f.h"
#include "ztlinear/ZtLVec3f.h"

#include <cstddef>
#include <string>
#include <vector>

// What one graphic element draws, decoded from its record. Coordinates are the file's
// (UORs, the global origin inside them, as in element ranges); a caller places them with
// Transform. The model keeps none of this: it is read again from the file when wanted.

// Straight segments through points; a closed run returns to its first point.
struct ZtDgnPolyline {
    std::vector<ZtLPos3f> points;
    bool closed = false;
};

// An elliptical arc: centre + a cos t + b sin t for t from `start` over `sweep` radians
// (a negative sweep runs clockwise). `a` and `b` are the semi-axes as vectors, so that an
// affine map keeps the arc an arc.
struct ZtDgnArc {
    ZtLPos3f centre;
    ZtLVec3f a, b;
    double start = 0;
    double sweep = 0;
};

// A cone or cylinder: the solid between two end circles, whose outline in any view is the
// hull of the two.
struct ZtDgnCone {
    ZtDgnArc base, top;
};

// One line of text: the lower left corner of its first character, one character's
// advance along the baseline and its height across it (both as vectors), and the
// characters in UTF-8.
struct ZtDgnText {
    ZtLPos3f origin;
    ZtLVec3f advance, height;
    std::string text;
};

struct ZtDgnGeometry {
    std::vector<ZtDgnPolyline> polylines;
    std::vector<ZtDgnArc> arcs;
    std::vector<ZtDgnCone> cones;
    std::vector<ZtDgnText> texts;

    bool IsEmpty() const {
        return polylines.empty() && arcs.empty() && cones.empty() && texts.empty();
    }
    void Clear() { *this = ZtDgnGeometry(); }
    // Maps every position and vector through `map`.
    void Transform(const ZtLAffine3f& map);
};

// Decodes the element whose whole record (header included) is `bytes`, from a design file
// of `dimension` 2 or 3, into `out` (cleared first). Lines, line strings, shapes, curves,
// point strings and B-spline poles give polylines (a curve through its points, its first
// and last two setting only the end slopes); arcs and ellipses give arcs; cones give
// cones; text gives text. Other types, and the headers of cells and complex elements,
// whose components draw for them, give nothing. False for a record too short for what it
// says it holds.
bool ZtDgnDecodeGeometry(const unsigned char* bytes, std::size_t size, int dimension,
                         ZtDgnGeometry* out);
