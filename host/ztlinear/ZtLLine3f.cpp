#include "ztlinear/ZtLLine3f.h"

#include <cmath>

int ZtLLine3f::Intersect(const ZtLPlane3f& plane, ZtLPos3f* point) const {
    const double along = plane.GetNormal().Dot(direction_);
    if (along == 0.0)
        return 0;
    // A line all but parallel can put the meeting point beyond every double.
    const double t = (plane.GetDistance() - plane.GetNormal().Dot(position_)) / along;
    if (!std::isfinite(t))
        return 0;
    if (point)
        *point = position_ + direction_ * t;
    return 1;
}
