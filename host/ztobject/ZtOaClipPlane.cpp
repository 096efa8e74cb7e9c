#include "ztobject/ZtOaClipPlane.h"

#include <cmath>

namespace {

// The axis direction nearest to `v`; on a tie the earlier axis (x before y before z).
ZtLVec3f NearestAxis(const ZtLVec3f& v) {
    int axis = 0;
    for (int i = 1; i < 3; ++i)
        if (std::fabs(v[i]) > std::fabs(v[axis]))
            axis = i;
    ZtLVec3f result;
    result[axis] = v[axis] < 0 ? -1.0 : 1.0;
    return result;
}

} // namespace

void ZtOaClipPlane::AlignToPick(Alignment alignment, const ZtLPos3f& point,
                                const ZtLUnitVec3f& normal, const ZtLUnitVec3f* facing) {
    ZtLUnitVec3f n = alignment == kAlignToAxis ? ZtLUnitVec3f(NearestAxis(normal)) : normal;
    if (facing && n.Dot(*facing) < 0)
        n = ZtLUnitVec3f(-n);
    plane_ = ZtLPlane3f(n, point);
}
