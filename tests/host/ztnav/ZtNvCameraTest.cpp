#include "ztnav/ZtNvCamera.h"
#include "ztlinear/ZtLFrustum3f.h"

#include <gtest/gtest.h>

#include <numbers>

namespace {

void ExpectNear(const ZtLVec3f& actual, const ZtLVec3f& expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-12);
    EXPECT_NEAR(actual.y, expected.y, 1e-12);
    EXPECT_NEAR(actual.z, expected.z, 1e-12);
}

TEST(ZtNvCamera, PointAtTurnsByTheLeastRotation) {
    struct Case {
        ZtLPos3f position;
        ZtLPos3f target;
        ZtLVec3f viewDir;
        ZtLVec3f up;
    };
    // From a new camera's orientation: looking along -Z, up +Y.
    const Case cases[] = {
        {{0, 0, 0}, {0, 0, -7}, {0, 0, -1}, {0, 1, 0}}, // straight ahead: nothing turns
        {{0, 0, 0}, {3, 0, 0}, {1, 0, 0}, {0, 1, 0}},   // a turn about up keeps up
        {{0, 0, 0}, {0, 2, 0}, {0, 1, 0}, {0, 0, 1}},   // tilting up carries up along
        {{0, 0, 0}, {0, 0, 5}, {0, 0, 1}, {0, 1, 0}},   // behind: half a turn about up
        {{0, 0, 0}, {1, 0, -1}, {0.7071067811865476, 0, -0.7071067811865476}, {0, 1, 0}},
        {{10, 10, 10}, {10, 10, 0}, {0, 0, -1}, {0, 1, 0}}, // counted from the position
        {{10, 10, 10}, {10, 12, 10}, {0, 1, 0}, {0, 0, 1}},
        {{1, 2, 3}, {1, 2, 3}, {0, 0, -1}, {0, 1, 0}}, // at the position: nothing changes
    };
    for (const Case& c : cases) {
        ZtNvCamera camera;
        camera.SetPosition(c.position);
        camera.PointAt(c.target);
        ExpectNear(camera.ViewDir(), c.viewDir);
        ExpectNear(camera.GetUp(), c.up);
    }
}

TEST(ZtNvCamera, AlignUpTakesThePartAtRightAnglesToTheView) {
    struct Case {
        ZtLVec3f up;
        ZtLVec3f expected;
    };
    // A camera looking along +X, up +Y.
    const Case cases[] = {
        {{0, 0, 1}, {0, 0, 1}},     {{5, 0, 2}, {0, 0, 1}}, // the part along the view is dropped
        {{0, -3, 0}, {0, -1, 0}},                           // upside down
        {{1, 0, 0}, {0, 1, 0}},     // along the line of sight: the roll stays
        {{1, 1e-10, 0}, {0, 1, 0}}, // shorter than the tolerance across
        {{0, 0, 0}, {0, 1, 0}},     // no direction at all
        {{1, 1e-8, 0}, {0, 1, 0}},  // just long enough
        {{-2, 0, -2}, {0, 0, -1}},
    };
    for (const Case& c : cases) {
        ZtNvCamera camera;
        camera.PointAt(ZtLPos3f(1, 0, 0));
        camera.AlignUp(c.up);
        ExpectNear(camera.GetUp(), c.expected);
        ExpectNear(camera.ViewDir(), ZtLVec3f(1, 0, 0));
    }
}

// Frustum fills the frustum exactly where HasValidFrustum holds, and else leaves it alone.
TEST(ZtNvCamera, AFrustumNeedsAnOpenFieldAndOrderedDistances) {
    struct Case {
        double heightField, nearDistance, farDistance, aspect;
        int valid;
    };
    const double pi = std::numbers::pi;
    const Case cases[] = {
        {0.5, 0.01, 1e6, 0.0, 1},  {0.0, 0.01, 1e6, 0.0, 0},  {pi, 0.01, 1e6, 0.0, 0},
        {-0.5, 0.01, 1e6, 0.0, 0}, {3.14, 0.01, 1e6, 0.0, 1}, {0.5, 0.0, 1e6, 0.0, 0},
        {0.5, -1.0, 1e6, 0.0, 0},  {0.5, 5.0, 5.0, 0.0, 0},   {0.5, 6.0, 5.0, 0.0, 0},
        {0.5, 0.01, 1e6, 2.0, 1},  {0.5, 0.01, 1e6, -1.0, 0},
    };
    for (const Case& c : cases) {
        ZtNvCamera camera;
        camera.SetPosition(ZtLPos3f(5, 5, 5));
        camera.SetHeightField(c.heightField);
        camera.SetNearFar(c.nearDistance, c.farDistance);
        ZtLFrustum3f frustum;
        EXPECT_EQ(camera.HasValidFrustum(c.aspect) != 0, c.valid != 0)
            << c.heightField << " " << c.nearDistance << " " << c.farDistance << " " << c.aspect;
        EXPECT_EQ(camera.Frustum(&frustum, c.aspect) != 0, c.valid != 0);
        EXPECT_EQ(frustum.GetEye(), c.valid ? ZtLPos3f(5, 5, 5) : ZtLPos3f(0, 0, 0));
    }
}

TEST(ZtNvCamera, FrustumMatchesTheCamera) {
    ZtNvCamera camera;
    camera.SetPosition(ZtLPos3f(0, 0, 10));
    camera.SetHeightField(std::numbers::pi / 2); // tan(h/2) = 1
    camera.SetNearFar(1, 10);
    ZtLFrustum3f frustum;
    ASSERT_NE(camera.Frustum(&frustum, 0.0), 0);
    EXPECT_EQ(frustum.GetNear(), 1);
    EXPECT_EQ(frustum.GetFar(), 10);
    const ZtLMatrix4f m = frustum.GetMatrix();
    ExpectNear(ZtLPos3f(0, 0, 9) * m, ZtLPos3f(0, 0, -1));
    // Depth 2 of 1..10: z = 11/9 - 20/(9 * 2).
    ExpectNear(ZtLPos3f(2, 1, 8) * m, ZtLPos3f(1, 0.5, 1.0 / 9));

    // Another aspect ratio widens the window.
    ASSERT_NE(camera.Frustum(&frustum, 2.0), 0);
    ExpectNear(ZtLPos3f(2, 1, 8) * frustum.GetMatrix(), ZtLPos3f(0.5, 0.5, 1.0 / 9));
}

} // namespace
