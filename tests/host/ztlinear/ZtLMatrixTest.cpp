#include "ztlinear/ZtLAffine3f.h"
#include "ztlinear/ZtLFrustum3f.h"
#include "ztlinear/ZtLMatrix3f.h"
#include "ztlinear/ZtLMatrix4f.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace {

void ExpectNear(const ZtLVec3f& actual, const ZtLVec3f& expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-12);
    EXPECT_NEAR(actual.y, expected.y, 1e-12);
    EXPECT_NEAR(actual.z, expected.z, 1e-12);
}

// A quarter turn about +Z: x goes to y.
ZtLMatrix3f QuarterTurnZ() {
    ZtLMatrix3f m;
    m.SetValue(0, -1, 0, 1, 0, 0, 0, 0, 1);
    return m;
}

TEST(ZtLMatrix3f, SetValueFillsRowsAndActsOnColumnVectors) {
    ZtLMatrix3f m;
    m.SetValue(1, 2, 3, 4, 5, 6, 7, 8, 9);
    // The image of the first axis is the first column.
    EXPECT_EQ(m * ZtLVec3f(1, 0, 0), ZtLVec3f(1, 4, 7));
    EXPECT_EQ(m * ZtLVec3f(1, 1, 1), ZtLVec3f(6, 15, 24));
}

TEST(ZtLMatrix3f, ProductAppliesTheRightFactorFirst) {
    ZtLMatrix3f scale;
    scale.SetValue(2, 0, 0, 0, 1, 0, 0, 0, 1);
    const ZtLVec3f x(1, 0, 0);
    // Turn first, then scale x: the turned axis lies along y and is not scaled.
    EXPECT_EQ((scale * QuarterTurnZ()) * x, ZtLVec3f(0, 1, 0));
    EXPECT_EQ((QuarterTurnZ() * scale) * x, ZtLVec3f(0, 2, 0));
}

TEST(ZtLAffine3f, MapsMatrixTimesPointPlusTranslation) {
    const ZtLAffine3f a(QuarterTurnZ(), ZtLVec3f(10, 20, 30));
    EXPECT_EQ(a.Transform(ZtLPos3f(1, 0, 0)), ZtLPos3f(10, 21, 30));
    EXPECT_EQ(ZtLAffine3f().Transform(ZtLPos3f(1, 2, 3)), ZtLPos3f(1, 2, 3));
}

TEST(ZtLAffine3f, MultRightAppliesTheArgumentFirst) {
    ZtLAffine3f x(ZtLMatrix3f(), ZtLVec3f(5, 0, 0));
    const ZtLAffine3f turn(QuarterTurnZ(), ZtLVec3f(0, 0, 1));
    x.MultRight(turn);
    // Turn (and lift) first, then shift along x.
    EXPECT_EQ(x.Transform(ZtLPos3f(1, 0, 0)), ZtLPos3f(5, 1, 1));
    EXPECT_EQ(x.GetMatrix(), QuarterTurnZ());
    EXPECT_EQ(x.GetTranslation(), ZtLVec3f(5, 0, 1));

    // The other way round the shift is turned too.
    ZtLAffine3f y = turn;
    y.MultRight(ZtLAffine3f(ZtLMatrix3f(), ZtLVec3f(5, 0, 0)));
    EXPECT_EQ(y.Transform(ZtLPos3f(1, 0, 0)), ZtLPos3f(0, 6, 1));
}

// The placed box is the box about the placed corners; an empty box stays empty; an axis
// without bounds keeps its infinities where the map does not mix it into another.
TEST(ZtLAffine3f, TransformBoxBoundsThePlacedCorners) {
    const ZtLAffine3f turn(QuarterTurnZ(), ZtLVec3f(10, 5, 0));
    EXPECT_EQ(turn.TransformBox(ZtLBox3f(ZtLPos3f(1, 2, 3), ZtLPos3f(4, 8, 5))),
              ZtLBox3f(ZtLPos3f(2, 6, 3), ZtLPos3f(8, 9, 5)));
    EXPECT_TRUE(turn.TransformBox(ZtLBox3f()).IsEmpty());
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(turn.TransformBox(ZtLBox3f(ZtLPos3f(0, 0, -inf), ZtLPos3f(1, 1, inf))),
              ZtLBox3f(ZtLPos3f(9, 5, -inf), ZtLPos3f(10, 6, inf)));
    EXPECT_TRUE(ZtLAffine3f().IsIdentity());
    EXPECT_FALSE(turn.IsIdentity());
}

TEST(ZtLMatrix4f, PointsAreRowVectorsAndTheProductAppliesTheLeftFactorFirst) {
    ZtLMatrix4f shift; // translation in the last row
    shift.Set(3, 0, 1);
    ZtLMatrix4f twice;
    for (int i = 0; i < 3; ++i)
        twice.Set(i, i, 2);
    const ZtLPos3f p(1, 1, 1);
    EXPECT_EQ(p * shift, ZtLPos3f(2, 1, 1));
    EXPECT_EQ(p * (shift * twice), ZtLPos3f(4, 2, 2));
    EXPECT_EQ(p * (twice * shift), ZtLPos3f(3, 2, 2));
}

TEST(ZtLMatrix4f, ThePointIsDividedByW) {
    ZtLMatrix4f m;
    m.Set(3, 3, 4); // W = 4 for every point
    EXPECT_EQ(ZtLPos3f(4, 8, 12) * m, ZtLPos3f(1, 2, 3));
    m.Set(3, 3, 0);
    const ZtLPos3f atInfinity = ZtLPos3f(1, 0, 0) * m;
    EXPECT_FALSE(std::isfinite(atInfinity.x));
}

TEST(ZtLFrustum3f, MatrixSpansMinusOneToOneAcrossTheWindowAndInDepth) {
    // The eye at the origin looking along -Z, up +Y, a window of tan 45 degrees each way
    // and a depth from 1 to 10.
    ZtLFrustum3f f;
    f.SetPerspective(ZtLPos3f(0, 0, 0), ZtLVec3f(0, 0, -1), ZtLVec3f(0, 1, 0), 1, 1, 1, 10);
    const ZtLMatrix4f m = f.GetMatrix();
    struct Case {
        ZtLPos3f model;
        ZtLPos3f frustum;
    };
    const Case cases[] = {
        {{0, 0, -1}, {0, 0, -1}},          // the near plane's centre
        {{0, 0, -10}, {0, 0, 1}},          // the far plane's centre
        {{1, 1, -1}, {1, 1, -1}},          // a corner of the window on the near plane
        {{-4, 2, -4}, {-1, 0.5, 2.0 / 3}}, // x along right = viewDir x up, y along up
        {{5, -5, -10}, {0.5, -0.5, 1}},    // the same direction further out
    };
    for (const Case& c : cases)
        ExpectNear(c.model * m, c.frustum);
    // A point in the eye's own plane has no finite image.
    EXPECT_FALSE(std::isfinite((ZtLPos3f(1, 0, 0) * m).x));
}

TEST(ZtLFrustum3f, MatrixFollowsTheEyeAndItsAxes) {
    ZtLFrustum3f f;
    // The eye at (10, 0, 0) looking along +Y with up +Z: right is +X.
    f.SetPerspective(ZtLPos3f(10, 0, 0), ZtLVec3f(0, 1, 0), ZtLVec3f(0, 0, 1), 2, 1, 1, 3);
    EXPECT_EQ(f.GetRight(), ZtLVec3f(1, 0, 0));
    const ZtLMatrix4f m = f.GetMatrix();
    ExpectNear(ZtLPos3f(10, 1, 0) * m, ZtLPos3f(0, 0, -1));
    ExpectNear(ZtLPos3f(12, 1, 1) * m, ZtLPos3f(1, 1, -1));
    ExpectNear(ZtLPos3f(10, 3, -3) * m, ZtLPos3f(0, -1, 1));
}

} // namespace
