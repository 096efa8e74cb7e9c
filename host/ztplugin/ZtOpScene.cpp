#include "ztplugin/ZtOpScene.h"

#include "ztlinear/ZtLBox3f.h"
#include "ztnav/ZtNvViewPoint.h"
#include "ztobject/ZtOaPartition.h"
#include "ztobject/ZtOaTraversal.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

// The union of the bounding boxes of every node below the partition that has one, each
// where the partitions above it place it.
class BoxGathering : public ZtOaTraversal {
public:
    Result VisitNode(const ZtOaPathLink& link) override {
        ZtLBox3f nodeBox;
        if (link.GetNode()->GetBoundingBox(&nodeBox))
            box.Extend(link.MapBox(nodeBox));
        return kContinue;
    }

    ZtLBox3f box;
};

// From the centre towards the eye: one part up, one part along a direction across it,
// and one part along the third axis, backwards. With up +Z that is (1, -1, 1): above the
// scene, in front of it and to its right.
ZtLVec3f EyeSide(const ZtLVec3f& up) {
    const ZtLVec3f reference = std::abs(up.x) < 0.9 ? ZtLVec3f(1, 0, 0) : ZtLVec3f(0, 1, 0);
    const ZtLVec3f across = (reference - up * up.Dot(reference)).Normalized();
    return (across - up.Cross(across) + up).Normalized();
}

} // namespace

void ZtOpScene::DefaultInitializeViewPoint(ZtNvViewPoint* viewPoint, ZtOaPartition* partition) {
    if (!viewPoint)
        return;
    BoxGathering gathering;
    if (partition)
        partition->ApplyTraversal(&gathering);
    ZtLBox3f box = gathering.box;
    if (box.IsEmpty())
        box = ZtLBox3f(ZtLPos3f(-1, -1, -1), ZtLPos3f(1, 1, 1));
    const ZtLPos3f centre = box.GetCenter();
    double radius = box.GetSize().Length() / 2;
    // A box of one point (or of coordinates beyond the range of doubles) has no size to
    // frame; a unit sphere stands in.
    if (!(radius >= ZtLVec::GetResabs() && std::isfinite(radius)))
        radius = 1;

    ZtLVec3f up = viewPoint->GetWorldUp().value_or(ZtLVec3f(0, 0, 1)).Normalized();
    if (up.Length() == 0)
        up = ZtLVec3f(0, 0, 1);

    ZtNvCamera& camera = viewPoint->EditCamera();
    if (!(camera.GetHeightField() > 0 && camera.GetHeightField() < std::numbers::pi))
        camera.SetHeightField(std::numbers::pi / 4);
    // The sphere about the box touches the edges of the field at this distance.
    const double distance = radius / std::sin(camera.GetHeightField() / 2);
    const ZtLVec3f side = EyeSide(up);
    camera.SetPosition(centre + side * distance);
    camera.SetOrientation(-side, up);
    camera.SetNearFar(std::max((distance - radius) / 2, distance * 1e-3), (distance + radius) * 2);
}
