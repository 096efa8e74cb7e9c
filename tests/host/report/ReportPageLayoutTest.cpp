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

TEST(ReportPageLayout, TheScaleBarIsOneTwoOrFiveTimesAPowerOfTen) {
    struct Case {
        double scale, length;
    };
    for (const Case c : {Case{1, 100}, Case{0.5, 200}, Case{0.2, 500}, Case{7.3, 20},
                         Case{1500, 0.1}, Case{1e-3, 1e5}}) {
        PageLayout layout;
        layout.scale = c.scale;
        EXPECT_DOUBLE_EQ(layout.ScaleBarLength(), c.length) << c.scale;
        EXPECT_LE(layout.ScaleBarLength() * c.scale, kPageScaleBarPixels);
    }
}

// Elements under a pixel go to the raster; of the rest, the biggest are drawn.
TEST(ReportPageLayout, ShapesAreTheBiggestElementsOfAPixelOrMore) {
    ReportScene scene;
    for (std::size_t i = 0; i < kPageMaxShapes + 2; ++i)
        scene.elements.push_back({ZtLBox3f({0, 0, 0}, {1.0 + i, 1, 1}), 0, 0});
    scene.elements.push_back({ZtLBox3f({0, 0, 0}, {0.5, 0.5, 0.5}), 0, 0});
    const std::vector<bool> shapes = ChooseShapes(scene, 1.0);
    EXPECT_FALSE(shapes[0]);
    EXPECT_FALSE(shapes[1]);
    EXPECT_TRUE(shapes[2]);
    EXPECT_TRUE(shapes[kPageMaxShapes + 1]);
    EXPECT_FALSE(shapes.back());
    EXPECT_EQ(std::count(shapes.begin(), shapes.end(), true), kPageMaxShapes);
}

} // namespace
