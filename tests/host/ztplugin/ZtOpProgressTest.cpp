#include "ztplugin/ZtOpProgress.h"

#include "support/ZtTestRecordingProgress.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

TEST(ZtOpProgress, ClampsAndIgnoresNonFiniteFractions) {
    ZtTestRecordingProgress p;
    for (double fraction : {0.25, -3.0, 7.0, std::nan(""), std::numeric_limits<double>::infinity()})
        p.SetProgress(fraction);
    EXPECT_EQ(p.seen, (std::vector<double>{0.25, 0.0, 1.0}));
    EXPECT_EQ(p.GetOverall(), 1.0);
}

TEST(ZtOpProgress, SubOperationsMapOntoTheirStretch) {
    ZtTestRecordingProgress p;
    auto set = [&](double fraction, double overall) {
        p.SetProgress(fraction);
        EXPECT_DOUBLE_EQ(p.GetOverall(), overall) << fraction;
    };
    auto end = [&](double overall) {
        p.EndSubOperation();
        EXPECT_DOUBLE_EQ(p.GetOverall(), overall);
    };
    set(0.2, 0.2);
    p.BeginSubOperation(0.6); // 0..1 now covers 0.2..0.6
    set(0.5, 0.4);
    p.BeginSubOperation(1.0); // the end is in the enclosing 0..1: this covers 0.4..0.6
    set(0.5, 0.5);
    set(1.0, 0.6);
    end(0.6);
    end(0.6);
    set(0.9, 0.9);
    end(0.9); // an unmatched end changes nothing
    set(0.7, 0.7);
    p.BeginSubOperation(0.3); // a stretch never runs backwards
    set(1.0, 0.7);
    end(0.7);
}

} // namespace
