// The page's mapping of the scene to its drawings.
#include "report/ReportPageLayout.h"
#include "report/ReportScene.h"

#include <gtest/gtest.h>

namespace {

ReportScene BoxScene(const ZtLBox3f& box) {
    ReportScene scene;
    scene.elements.push_back({box, 0, 0});
    return scene;
}

// Every drawing fits its largest size, and the tightest of the six limits is met.
TEST(ReportPageLayout, TheSceneFillsTheTightestDrawing) {
    const PageLayout layout = MakePageLayout(BoxScene(ZtLBox3f({0, 0, 0}, {100, 10, 4})));
    double slack = 1e9;
    for (const PageView& view : PageViews()) {
        EXPECT_LE(layout.Width(view), kPageMaxViewWidth + 1) << view.id;
        EXPECT_LE(layout.Height(view), kPageMaxViewHeight + 1) << view.id;
        slack = std::min({slack, kPageMaxViewWidth - layout.Width(view),
                          kPageMaxViewHeight - layout.Height(view)});
    }
    EXPECT_LT(slack, 1);
    // The plan shows x to the right and y upwards, the scene's corner inside the margin.
    const PageView& plan = PageViews()[0];
    EXPECT_GT(layout.X(plan, {100, 0, 0}), layout.X(plan, {0, 0, 0}));
    EXPECT_LT(layout.Y(plan, {0, 10, 0}), layout.Y(plan, {0, 0, 0}));
    EXPECT_GT(layout.X(plan, {0, 0, 0}), kPageViewMargin);
}

} // namespace
