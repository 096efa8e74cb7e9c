#include "report/MarkProjection.h"

MarkProjection::MarkProjection(const ViewProjection& view)
    : perspective_(view.perspective_), u_(view.u_), v_(view.v_), scale_(view.scale_), ox_(view.ox_),
      oy_(view.oy_), column_{}, width_(view.width_), height_(view.height_),
      pixelsAtUnitDepth_(view.pixelsAtUnitDepth_), eye_(view.eye_), viewDir_(view.viewDir_) {
    for (int k = 0; k < 4; ++k)
        for (int row = 0; row < 4; ++row)
            column_[k][row] = view.frustum_.Get(row, k);
    for (const ZtLPlane3f& plane : view.keep_) {
        const ZtLVec3f& n = plane.GetNormal();
        keep_.push_back({n.x, n.y, n.z, plane.GetDistance()});
    }
}
