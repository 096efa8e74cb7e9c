#include "ztobject/ZtOaClipPlaneSet.h"

#include <gtest/gtest.h>

namespace {

TEST(ZtOaClipPlane, AlignToPickLaysThePlaneThroughThePoint) {
    struct Case {
        ZtOaClipPlane::Alignment alignment;
        ZtLVec3f normal;
        const ZtLUnitVec3f* facing;
        ZtLVec3f expectNormal;
    };
    const ZtLUnitVec3f down(0, 0, -1);
    const Case cases[] = {
        {ZtOaClipPlane::kAlignToNormal, {0, 3, 4}, nullptr, {0, 0.6, 0.8}},
        {ZtOaClipPlane::kAlignToNormal, {0, 3, 4}, &down, {0, -0.6, -0.8}},
        {ZtOaClipPlane::kAlignToAxis, {0, 3, 4}, nullptr, {0, 0, 1}},
        {ZtOaClipPlane::kAlignToAxis, {-5, 3, 4}, nullptr, {-1, 0, 0}},
        {ZtOaClipPlane::kAlignToAxis, {0, 3, 4}, &down, {0, 0, -1}},
    };
    const ZtLPos3f point(1, 2, 3);
    for (const Case& c : cases) {
        ZtOaClipPlane plane;
        plane.AlignToPick(c.alignment, point, ZtLUnitVec3f(c.normal), c.facing);
        EXPECT_NEAR((plane.GetNormal() - c.expectNormal).Length(), 0, 1e-12);
        EXPECT_NEAR(plane.GetPlane3f().SignedDistance(point), 0, 1e-12);
        EXPECT_NEAR(plane.GetPlane3f().GetDistance(), c.expectNormal.Dot(point), 1e-12);
        EXPECT_EQ(plane.IsEnabled(), 0);
    }
}

} // namespace
