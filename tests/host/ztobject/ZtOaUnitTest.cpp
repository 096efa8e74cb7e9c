#include "ztobject/ZtOaUnit.h"

#include <gtest/gtest.h>

namespace {

TEST(ZtOaUnit, ScaleFactorCountsHowManyOfTheSecondMakeOneOfTheFirst) {
    struct Case {
        ZtOaUnit::Linear a, b;
        double factor;
    };
    const Case cases[] = {
        {ZtOaUnit::kFeet, ZtOaUnit::kInches, 12.0},
        {ZtOaUnit::kMetres, ZtOaUnit::kMillimetres, 1000.0},
        {ZtOaUnit::kMillimetres, ZtOaUnit::kMetres, 0.001},
        {ZtOaUnit::kMiles, ZtOaUnit::kYards, 1760.0},
        {ZtOaUnit::kKilometres, ZtOaUnit::kMetres, 1000.0},
        {ZtOaUnit::kInches, ZtOaUnit::kMils, 1000.0},
        {ZtOaUnit::kMils, ZtOaUnit::kMicroinches, 1000.0},
        {ZtOaUnit::kMetres, ZtOaUnit::kMicrometres, 1e6},
        {ZtOaUnit::kCentimetres, ZtOaUnit::kMillimetres, 10.0},
    };
    for (const Case& c : cases)
        EXPECT_NEAR(ZtOaUnit::ScaleFactor(c.a, c.b), c.factor, c.factor * 1e-12)
            << c.a << " " << c.b;
    for (int u = 0; u < ZtOaUnit::kNumLinear; ++u) {
        const auto unit = static_cast<ZtOaUnit::Linear>(u);
        EXPECT_EQ(ZtOaUnit::ScaleFactor(unit, unit), 1.0);
    }
    EXPECT_EQ(ZtOaUnit::ScaleFactor(static_cast<ZtOaUnit::Linear>(11), ZtOaUnit::kFeet), 1.0);
    EXPECT_EQ(ZtOaUnit::ScaleFactor(ZtOaUnit::kFeet, static_cast<ZtOaUnit::Linear>(-1)), 1.0);
}

TEST(ZtOaUnit, SizesAndNames) {
    EXPECT_EQ(ZtOaUnit::SizeInMetres(ZtOaUnit::kFeet), 0.3048);
    EXPECT_EQ(ZtOaUnit::SizeInMetres(static_cast<ZtOaUnit::Linear>(42)), 0.0);
    EXPECT_STREQ(ZtOaUnit::Abbreviation(ZtOaUnit::kMetres), "m");
    EXPECT_STREQ(ZtOaUnit::Abbreviation(ZtOaUnit::kMicroinches), "ui");
    EXPECT_STREQ(ZtOaUnit::Abbreviation(static_cast<ZtOaUnit::Linear>(11)), "");
}

} // namespace
