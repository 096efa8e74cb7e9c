#include "report/ReadableText.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

ZtLAffine3f Map(double a, double b, double c, double d, double e, double f, double g, double h,
                double i, const ZtLVec3f& t) {
    ZtLMatrix3f m;
    m.SetValue(a, b, c, d, e, f, g, h, i);
    return ZtLAffine3f(m, t);
}

TEST(ReadableText, PlacementWords) {
    const double nan = std::nan("");
    struct Case {
        ZtLAffine3f transform;
        ZtOaUnit::Linear from, to;
        std::string words;
    };
    const Case cases[] = {
        {{}, ZtOaUnit::kMetres, ZtOaUnit::kMetres, "not turned, moved by (0, 0, 0) m"},
        {Map(0, -1, 0, 1, 0, 0, 0, 0, 1, {2.54, 1.27, 0}), ZtOaUnit::kFeet, ZtOaUnit::kMetres,
         "scaled from ft to m, turned 90\u00b0 about Z, moved by (2.54, 1.27, 0) m"},
        {Map(2, 0, 0, 0, 1, 0, 0, 0, 1, {}), ZtOaUnit::kMillimetres, ZtOaUnit::kMillimetres,
         "transformed by rows (2 0 0) (0 1 0) (0 0 1), moved by (0, 0, 0) mm"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(PlacementWords(c.transform, c.from, c.to), c.words);
    // A matrix of a control file's "nan" turns nothing that can be told in degrees.
    EXPECT_EQ(
        PlacementWords(Map(nan, 0, 0, 0, nan, 0, 0, 0, 1, {}), ZtOaUnit::kMetres, ZtOaUnit::kMetres)
            .rfind("transformed by rows (", 0),
        0u);
}

} // namespace
