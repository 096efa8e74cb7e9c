#include "report/ReportPageLayout.h"

#include "report/ReportScene.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr PageView kViews[] = {
    {"plan", "Plan (looking down)", 0, 1},
    {"south", "South elevation (looking north)", 0, 2},
    {"east", "East elevation (looking west)", 1, 2},
};

// Room left around the scene, as a share of its largest size.
constexpr double kRoom = 0.05;

} // namespace

std::span<const PageView> PageViews() {
    return kViews;
}

double AxisOf(const ZtLPos3f& p, int axis) {
    return axis == 0 ? p.x : axis == 1 ? p.y : p.z;
}

int PageLayout::Width(const PageView& view) const {
    return static_cast<int>(
        std::ceil(AxisOf(extent.GetSize(), view.u) * scale + 2 * kPageViewMargin));
}

int PageLayout::Height(const PageView& view) const {
    return static_cast<int>(
        std::ceil(AxisOf(extent.GetSize(), view.v) * scale + 2 * kPageViewMargin));
}

PageLayout MakePageLayout(const ReportScene& scene) {
    PageLayout layout;
    for (const ReportElement& e : scene.elements)
        layout.extent.Extend(e.box);
    for (const ReportView& view : scene.views) {
        layout.extent.Extend(view.camera.GetPosition());
        for (const ReportTag& tag : view.tags)
            if (tag.placed)
                layout.extent.Extend(tag.position);
    }
    if (layout.extent.IsEmpty())
        layout.extent.SetBounds({-1, -1, -1}, {1, 1, 1});
    // A flat scene still gets some room across.
    const ZtLVec3f size = layout.extent.GetSize();
    const double room = std::max({size.x, size.y, size.z, 1e-6}) * kRoom;
    layout.extent.Extend(layout.extent.GetMin() - ZtLVec3f(room, room, room));
    layout.extent.Extend(layout.extent.GetMax() + ZtLVec3f(room, room, room));
    layout.scale = std::numeric_limits<double>::max();
    const ZtLVec3f s = layout.extent.GetSize();
    for (const PageView& view : kViews)
        layout.scale =
            std::min({layout.scale, (kPageMaxViewWidth - 2 * kPageViewMargin) / AxisOf(s, view.u),
                      (kPageMaxViewHeight - 2 * kPageViewMargin) / AxisOf(s, view.v)});
    return layout;
}
