#include "ztlinear/ZtLPickFrustum3f.h"
#include "ztlinear/ZtLFrustum3f.h"
#include "ztlinear/ZtLLine3f.h"
#include "ztlinear/ZtLPlane3f.h"

#include <gtest/gtest.h>

#include <random>

namespace {

// The eye at (0, 0, 10) looking down -Z, up +Y, the window -2..2 by -1..1 at distance 1.
ZtLFrustum3f Frustum(double nearDistance = 1, double farDistance = 100) {
    ZtLFrustum3f frustum;
    frustum.SetPerspective({0, 0, 10}, {0, 0, -1}, {0, 1, 0}, 2, 1, nearDistance, farDistance);
    return frustum;
}

TEST(ZtLFrustum3f, NarrowCutsTheWindowInWindowSpace) {
    ZtLFrustum3f frustum = Frustum();
    frustum.Narrow(0.25, 0.5, 0.5, 1.0);
    EXPECT_DOUBLE_EQ(frustum.GetWindowLeft(), -1.0);
    EXPECT_DOUBLE_EQ(frustum.GetWindowRight(), 0.0);
    EXPECT_DOUBLE_EQ(frustum.GetWindowBottom(), 0.0);
    EXPECT_DOUBLE_EQ(frustum.GetWindowTop(), 1.0);
    // Narrowing again works within the narrowed window.
    frustum.Narrow(0.5, 1.0, 0.0, 0.5);
    EXPECT_DOUBLE_EQ(frustum.GetWindowLeft(), -0.5);
    EXPECT_DOUBLE_EQ(frustum.GetWindowTop(), 0.5);
}

TEST(ZtLFrustum3f, ProjectPointToLineGivesTheLineOfSight) {
    const ZtLFrustum3f frustum = Frustum();
    // Window (0.75, 1): right = viewDir x up = (1, 0, 0); on the plane at distance 1 the
    // point is 1 along right and 1 along up.
    const ZtLLine3f line = frustum.ProjectPointToLine({0.75, 1.0});
    EXPECT_EQ(line.GetPosition(), ZtLPos3f(0, 0, 10));
    ZtLPos3f at(0, 0, 0);
    ASSERT_EQ(line.Intersect(ZtLPlane3f(ZtLUnitVec3f(0, 0, 1), 5.0), &at), 1);
    EXPECT_NEAR(at.x, 5, 1e-12);
    EXPECT_NEAR(at.y, 5, 1e-12);
    EXPECT_NEAR(at.z, 5, 1e-12);
}

TEST(ZtLLine3f, IntersectGivesZeroForAParallelLineAndLeavesThePoint) {
    const ZtLLine3f line({0, 0, 1}, {1, 0, 0});
    ZtLPos3f at(7, 7, 7);
    EXPECT_EQ(line.Intersect(ZtLPlane3f(ZtLUnitVec3f(0, 0, 1), 0.0), &at), 0);
    EXPECT_EQ(at, ZtLPos3f(7, 7, 7));
    EXPECT_EQ(ZtLLine3f({0, 0, 1}, {0, 0, 0}).Intersect(ZtLPlane3f(), &at), 0);
    // A plane behind the start still meets the line.
    ASSERT_EQ(ZtLLine3f({0, 0, 1}, {0, 0, 2}).Intersect(ZtLPlane3f(), &at), 1);
    EXPECT_EQ(at, ZtLPos3f(0, 0, 0));
}

TEST(ZtLPickFrustum3f, BoxTestsAreExact) {
    const ZtLPickFrustum3f pick(Frustum(1, 100));
    struct Case {
        const char* what;
        ZtLBox3f box;
        bool intersects;
        bool contains;
    };
    const Case cases[] = {
        {"on the line of sight", ZtLBox3f({-1, -1, -1}, {1, 1, 1}), true, true},
        {"behind the eye", ZtLBox3f({-1, -1, 11}, {1, 1, 12}), false, false},
        {"beyond far", ZtLBox3f({-1, -1, -95}, {1, 1, -91}), false, false},
        {"touching near", ZtLBox3f({-0.5, -0.5, 9}, {0.5, 0.5, 9.5}), true, false},
        {"across a side", ZtLBox3f({15, -1, -1}, {30, 1, 1}), true, false},
        {"past a corner edge", ZtLBox3f({22.5, 11.5, -1}, {30, 20, 1}), false, false},
        {"empty", ZtLBox3f(), false, false},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(pick.Intersects(c.box), c.intersects) << c.what;
        EXPECT_EQ(pick.Contains(c.box), c.contains) << c.what;
        EXPECT_EQ(pick.MayIntersect(c.box), c.intersects) << c.what;
    }
}

// The cheap test prunes a search: it may let a box through that misses the frustum, but
// never turns away one that meets it, whether the frustum is wide, narrow or slanted.
TEST(ZtLPickFrustum3f, MayIntersectNeverTurnsAwayABoxThatMeets) {
    std::mt19937 random(11);
    auto uniform = [&](double lo, double hi) {
        return std::uniform_real_distribution<double>(lo, hi)(random);
    };
    int met = 0, letThrough = 0;
    for (int f = 0; f < 40; ++f) {
        ZtLFrustum3f frustum;
        const ZtLVec3f dir = ZtLVec3f(uniform(-1, 1), uniform(-1, 1), -1).Normalized();
        const ZtLVec3f up = (ZtLVec3f(0, 1, 0) - dir * dir.y).Normalized();
        frustum.SetPerspective({0, 0, 10}, dir, up, 0.5, 0.5, uniform(1, 5), uniform(10, 30));
        if (f % 2)
            frustum.Narrow(0.49, 0.51, 0.3, 0.32);
        const ZtLPickFrustum3f pick(frustum);
        for (int b = 0; b < 500; ++b) {
            const ZtLPos3f low(uniform(-15, 15), uniform(-15, 15), uniform(-20, 10));
            const ZtLBox3f box(low, low + ZtLVec3f(uniform(0, 4), uniform(0, 4), uniform(0, 4)));
            const bool meets = pick.Intersects(box);
            EXPECT_TRUE(!meets || pick.MayIntersect(box));
            met += meets;
            letThrough += !meets && pick.MayIntersect(box);
        }
    }
    EXPECT_GT(met, 500);
    EXPECT_GT(letThrough, 0) << "the edges' axes should turn some boxes away";
}

TEST(ZtLPickFrustum3f, DepthIsTheNearestPointAlongTheView) {
    const ZtLPickFrustum3f pick(Frustum());
    EXPECT_DOUBLE_EQ(pick.Depth(ZtLBox3f({-1, -1, -3}, {1, 1, 2})), 8.0);
    // A box inside another is never less deep.
    EXPECT_GE(pick.Depth(ZtLBox3f({0.1, 0.2, -2.9}, {0.3, 0.4, 1.9})),
              pick.Depth(ZtLBox3f({-1, -1, -3}, {1, 1, 2})));
}

} // namespace
