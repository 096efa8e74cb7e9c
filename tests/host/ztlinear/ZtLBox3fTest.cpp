#include "ztlinear/ZtLBox3f.h"

#include <gtest/gtest.h>

namespace {

TEST(ZtLBox3f, StartsEmptyAndGrowsByPointsAndBoxes) {
    ZtLBox3f box;
    EXPECT_TRUE(box.IsEmpty());
    EXPECT_EQ(box.GetSize(), ZtLVec3f());
    box.Extend(ZtLBox3f()); // an empty box adds nothing
    EXPECT_TRUE(box.IsEmpty());
    box.Extend(ZtLPos3f(1, 2, 3));
    EXPECT_FALSE(box.IsEmpty());
    EXPECT_EQ(box, ZtLBox3f(ZtLPos3f(1, 2, 3), ZtLPos3f(1, 2, 3)));
    box.Extend(ZtLBox3f(ZtLPos3f(-1, 5, 0), ZtLPos3f(0, 6, 10)));
    EXPECT_EQ(box, ZtLBox3f(ZtLPos3f(-1, 2, 0), ZtLPos3f(1, 6, 10)));
    EXPECT_EQ(box.GetCenter(), ZtLPos3f(0, 4, 5));
    EXPECT_EQ(box.GetSize(), ZtLVec3f(2, 4, 10));
    box.MakeEmpty();
    EXPECT_TRUE(box.IsEmpty());
}

TEST(ZtLBox3f, FacesCountAsInside) {
    const ZtLBox3f box(ZtLPos3f(0, 0, 0), ZtLPos3f(1, 1, 1));
    EXPECT_TRUE(box.Contains(ZtLPos3f(1, 1, 1)));
    EXPECT_TRUE(box.Contains(ZtLPos3f(0, 0.5, 0)));
    EXPECT_FALSE(box.Contains(ZtLPos3f(1.0000001, 0.5, 0.5)));
    EXPECT_TRUE(box.Intersects(ZtLBox3f(ZtLPos3f(1, 1, 1), ZtLPos3f(2, 2, 2))));
    EXPECT_FALSE(box.Intersects(ZtLBox3f(ZtLPos3f(1, 1, 1.5), ZtLPos3f(2, 2, 2))));
    EXPECT_FALSE(box.Intersects(ZtLBox3f()));
    // A flat box, as a 2D element's range gives, is not empty.
    EXPECT_FALSE(ZtLBox3f(ZtLPos3f(0, 0, 0), ZtLPos3f(1, 1, 0)).IsEmpty());
}

} // namespace
