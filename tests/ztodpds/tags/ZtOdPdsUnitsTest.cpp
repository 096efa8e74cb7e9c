#include "tags/ZtOdPdsUnits.h"
#include "tags/ZtOdPdsLinkage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace {

TEST(ZtOdPdsUnits, MasterToUorsCutsTowardsZero) {
    struct Case {
        double master;
        double factor;
        std::int64_t uors;
    };
    const Case cases[] = {{-1.5, 1.0, -1},     {1.5, 1.0, 1},   {-0.999, 1.0, 0},
                          {0.0004, 1000.0, 0}, {2.5, 10.0, 25}, {-2.54, 100, -254}};
    for (const Case& c : cases)
        EXPECT_EQ(ZtOdPdsMasterToUors(c.master, c.factor), c.uors) << c.master;
}

TEST(ZtOdPdsUnits, ValuesOutsideTheIntegerRangeSaturate) {
    using Limits = std::numeric_limits<std::int64_t>;
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(ZtOdPdsMasterToUors(1e300, 1000.0), Limits::max());
    EXPECT_EQ(ZtOdPdsMasterToUors(-1e300, 1000.0), Limits::min());
    EXPECT_EQ(ZtOdPdsMasterToUors(inf, 1.0), Limits::max());
    EXPECT_EQ(ZtOdPdsMasterToUors(std::nan(""), 1.0), 0);
    // 2^63 itself is out of range; the largest double below it is not.
    EXPECT_EQ(ZtOdPdsMasterToUors(9223372036854775808.0, 1.0), Limits::max());
    EXPECT_EQ(ZtOdPdsMasterToUors(9223372036854774784.0, 1.0), 9223372036854774784);
    EXPECT_EQ(ZtOdPdsMasterToUors(-9223372036854775808.0, 1.0), Limits::min());
    // A factor of 0 divides to infinity on the way in and multiplies to nothing on the
    // way out; neither may trap.
    EXPECT_TRUE(std::isinf(ZtOdPdsUorsToMaster(5, 0.0)));
    EXPECT_EQ(ZtOdPdsMasterToUors(5.0, 0.0), 0);
    // Angles saturate on 32 bits.
    EXPECT_EQ(ZtOdPdsRadiansToDegrees(1e12), std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(ZtOdPdsRadiansToDegrees(-1e12), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(ZtOdPdsRadiansToDegrees(std::nan("")), 0);
}

TEST(ZtOdPdsUnits, AnglesLoseADegreeWhereTheFactorsFallShort) {
    struct Case {
        std::int32_t degrees;
        std::int32_t back;
    };
    const Case cases[] = {{30, 29}, {15, 14}, {60, 59}, {120, 119},
                          {45, 45}, {0, 0},   {90, 90}, {-30, -29}};
    for (const Case& c : cases)
        EXPECT_EQ(ZtOdPdsRadiansToDegrees(ZtOdPdsDegreesToRadians(c.degrees)), c.back) << c.degrees;
    EXPECT_NEAR(ZtOdPdsDegreesToRadians(180), 3.141592653589793, 1e-15);
}

TEST(ZtOdPdsLinkage, SetSplitsTheValueTopWordFirst) {
    ZtOdPdsLinkage l;
    EXPECT_TRUE(l.IsNull());
    l.Set(0xFFFF00020003ABCDull);
    EXPECT_EQ(l.word0, 0xFFFF);
    EXPECT_EQ(l.word1, 2);
    EXPECT_EQ(l.word2, 3);
    EXPECT_EQ(l.word3, 0xABCD);
    // Any one word makes the value non-null.
    for (int shift : {0, 16, 32, 48}) {
        l.Set(1ull << shift);
        EXPECT_FALSE(l.IsNull()) << shift;
    }
    l.Set(0);
    EXPECT_TRUE(l.IsNull());
}

} // namespace
