#pragma once
#include "ztlinear/ZtLPlane3f.h"
#include "ztlinear/ZtLVec3f.h"

// A line through a point in a direction; the direction need not be of unit length.
class ZtLLine3f {
public:
    ZtLLine3f(const ZtLPos3f& position, const ZtLVec3f& direction)
        : position_(position), direction_(direction) {}

    const ZtLPos3f& GetPosition() const { return position_; }
    const ZtLVec3f& GetDirection() const { return direction_; }

    // Writes the point where the line meets `plane` and returns 1; returns 0 and leaves
    // `point` alone where the line runs parallel to the plane (or has no direction).
    int Intersect(const ZtLPlane3f& plane, ZtLPos3f* point) const;

private:
    ZtLPos3f position_;
    ZtLVec3f direction_;
};
