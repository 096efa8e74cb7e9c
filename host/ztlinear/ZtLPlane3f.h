#pragma once
#include "ztlinear/ZtLVec3f.h"

// A plane as a unit normal n and a distance d: the points x with n·x = d.
class ZtLPlane3f {
public:
    // The plane z = 0.
    constexpr ZtLPlane3f() = default;
    // The plane through `point` with the normal of `normal`.
    ZtLPlane3f(const ZtLUnitVec3f& normal, const ZtLPos3f& point)
        : normal_(normal), distance_(normal.Dot(point)) {}
    // The plane n·x = `distance`.
    ZtLPlane3f(const ZtLUnitVec3f& normal, double distance)
        : normal_(normal), distance_(distance) {}

    const ZtLUnitVec3f& GetNormal() const { return normal_; }
    double GetDistance() const { return distance_; }
    // n·p - d: positive on the side the normal points to.
    double SignedDistance(const ZtLPos3f& p) const { return normal_.Dot(p) - distance_; }

private:
    ZtLUnitVec3f normal_;
    double distance_ = 0;
};
