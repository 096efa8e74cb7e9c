#include "report/SceneMarkIndex.h"

#include "report/ReportScene.h"
#include "report/ViewProjection.h"

#include <algorithm>

namespace {

// Elements a run: a run's reach stays about as tight as its elements' while the
// hierarchy's 2 bytes or so an element stay small beside the scene's own.
constexpr std::uint32_t kRunLength = 16;

// Whether the box lies wholly on the side of the plane that it doesn't keep.
bool Outside(const ZtLBox3f& box, const ZtLPlane3f& plane) {
    const ZtLVec3f& n = plane.GetNormal();
    const ZtLPos3f& low = box.GetMin();
    const ZtLPos3f& high = box.GetMax();
    const ZtLPos3f nearest{n.x >= 0 ? high.x : low.x, n.y >= 0 ? high.y : low.y,
                           n.z >= 0 ? high.z : low.z};
    return plane.SignedDistance(nearest) < 0;
}

bool OutsideAny(const ZtLBox3f& box, const std::vector<ZtLPlane3f>& planes) {
    return std::any_of(planes.begin(), planes.end(),
                       [&](const ZtLPlane3f& plane) { return Outside(box, plane); });
}

} // namespace

SceneMarkIndex::SceneMarkIndex(const ReportScene& scene, const std::vector<bool>& isShape)
    : elements_(static_cast<std::uint32_t>(scene.elements.size())) {
    const std::uint32_t runs = (elements_ + kRunLength - 1) / kRunLength;
    reaches_.resize(runs);
    ZtOcBoxHierarchy::Builder builder(runs);
    for (std::uint32_t run = 0; run < runs; ++run) {
        ZtLBox3f reach;
        bool marked = false;
        const std::uint32_t end = std::min(elements_, (run + 1) * kRunLength);
        for (std::uint32_t i = run * kRunLength; i < end; ++i) {
            const ReportElement& e = scene.elements[i];
            if (!IsMarkedElement(scene, isShape, i) || e.box.IsEmpty())
                continue;
            const ZtLVec3f size = e.box.GetSize();
            const double s = std::max({size.x, size.y, size.z});
            const ZtLPos3f centre = e.box.GetMin() + size * 0.5;
            reach.Extend(ZtLBox3f(centre - ZtLVec3f(s, s, s), centre + ZtLVec3f(s, s, s)));
            marked = true;
        }
        if (!marked)
            continue;
        reaches_[run] = reach;
        if (ZtOcBoxHierarchy::Holds(reach))
            builder.Add(reach, run);
        else
            unheld_.push_back(run);
    }
    runs_ = builder.Finish();
}

std::optional<std::vector<SceneMarkIndex::Range>>
SceneMarkIndex::RangesInView(const ViewProjection& view) const {
    const std::vector<ZtLPlane3f> bounds = view.MarkBounds();
    if (bounds.empty())
        return std::nullopt;
    std::vector<std::uint32_t> runs = unheld_;
    std::vector<std::uint32_t> stack;
    if (!runs_.IsEmpty())
        stack.push_back(ZtOcBoxHierarchy::kRoot);
    while (!stack.empty()) {
        const std::uint32_t node = stack.back();
        stack.pop_back();
        const ZtLBox3f box = runs_.GetNodeBox(node);
        if (OutsideAny(box, bounds))
            continue;
        if (!runs_.IsLeaf(node)) {
            stack.push_back(runs_.GetSecondChild(node));
            stack.push_back(runs_.GetFirstChild(node));
            continue;
        }
        const std::uint32_t first = runs_.GetFirstItem(node);
        for (std::uint32_t item = first; item < first + runs_.GetNumLeafItems(node); ++item) {
            const std::uint32_t run = runs_.GetOrdinal(item);
            if (!OutsideAny(reaches_[run], bounds))
                runs.push_back(run);
        }
    }
    std::sort(runs.begin(), runs.end());
    std::vector<Range> ranges;
    for (std::uint32_t run : runs) {
        const std::uint32_t first = run * kRunLength;
        const std::uint32_t end = std::min(elements_, first + kRunLength);
        if (!ranges.empty() && ranges.back().second == first)
            ranges.back().second = end;
        else
            ranges.emplace_back(first, end);
    }
    return ranges;
}
