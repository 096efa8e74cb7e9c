#include "ztplugin/ZtOpProgress.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace {

class RecordingProgress : public ZtOpProgress {
public:
    std::vector<double> seen;

protected:
    void OnProgress(double overall) override { seen.push_back(overall); }
};

TEST(ZtOpProgress, ClampsAndIgnoresNonFiniteFractions) {
    RecordingProgress p;
    p.SetProgress(0.25);
    p.SetProgress(-3);
    p.SetProgress(7);
    p.SetProgress(std::nan(""));
    p.SetProgress(std::numeric_limits<double>::infinity());
    EXPECT_EQ(p.seen, (std::vector<double>{0.25, 0.0, 1.0}));
    EXPECT_EQ(p.GetOverall(), 1.0);
}

TEST(ZtOpProgress, SubOperationsMapOntoTheirStretch) {
    RecordingProgress p;
    p.SetProgress(0.2);
    p.BeginSubOperation(0.6); // 0..1 now covers 0.2..0.6
    p.SetProgress(0.5);
    EXPECT_DOUBLE_EQ(p.GetOverall(), 0.4);
    p.BeginSubOperation(1.0); // the end is in the enclosing 0..1: this covers 0.4..0.6
    p.SetProgress(0.5);
    EXPECT_DOUBLE_EQ(p.GetOverall(), 0.5);
    p.SetProgress(1.0);
    EXPECT_DOUBLE_EQ(p.GetOverall(), 0.6);
    p.EndSubOperation();
    EXPECT_DOUBLE_EQ(p.GetOverall(), 0.6);
    p.EndSubOperation();
    EXPECT_DOUBLE_EQ(p.GetOverall(), 0.6);
    p.SetProgress(0.9);
    EXPECT_DOUBLE_EQ(p.GetOverall(), 0.9);
    // An unmatched end changes nothing.
    p.EndSubOperation();
    EXPECT_DOUBLE_EQ(p.GetOverall(), 0.9);
}

TEST(ZtOpProgress, AStretchNeverRunsBackwards) {
    RecordingProgress p;
    p.SetProgress(0.7);
    p.BeginSubOperation(0.3);
    p.SetProgress(1.0);
    EXPECT_DOUBLE_EQ(p.GetOverall(), 0.7);
    p.EndSubOperation();
    EXPECT_DOUBLE_EQ(p.GetOverall(), 0.7);
}

} // namespace
