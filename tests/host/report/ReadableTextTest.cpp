#include "report/ReadableText.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

// A turn about Z in degrees, any other matrix by rows (one with NaN, of a control file's
// "nan", too), and a scale only where the units differ.
TEST(ReadableText, PlacementWords) {
    ZtLMatrix3f turn, stretch, nan;
    turn.SetValue(0, -1, 0, 1, 0, 0, 0, 0, 1);
    stretch.SetValue(2, 0, 0, 0, 1, 0, 0, 0, 1);
    nan.SetValue(std::nan(""), 0, 0, 0, std::nan(""), 0, 0, 0, 1);
    const ZtOaUnit::Linear m = ZtOaUnit::kMetres, ft = ZtOaUnit::kFeet;
    EXPECT_EQ(PlacementWords({}, m, m), "not turned, moved by (0, 0, 0) m");
    EXPECT_EQ(PlacementWords({turn, {2.54, 1.27, 0}}, ft, m),
              "scaled from ft to m, turned 90\u00b0 about Z, moved by (2.54, 1.27, 0) m");
    EXPECT_EQ(PlacementWords({stretch, {}}, ft, ft),
              "transformed by rows (2 0 0) (0 1 0) (0 0 1), moved by (0, 0, 0) ft");
    EXPECT_EQ(PlacementWords({nan, {}}, m, m).rfind("transformed by rows (", 0), 0u);
}

} // namespace
