// How a view maps the scene to pixels: along an axis, and through a saved view's camera
// as the tag maps have it, cut to what the view keeps.
#include "report/ViewProjection.h"
#include "ReportTestScenes.h"
#include "ztlinear/ZtLFrustum3f.h"
#include "ztplugin/ZtOpRedline.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

TEST(ViewProjection, OrthographicDrawsTwoAxesAtOneScale) {
    const ViewProjection plan = ViewProjection::Orthographic(0, 1, 2.0, 10, 100, 200, 120);
    EXPECT_FALSE(plan.IsPerspective());
    EXPECT_EQ(plan.Pixel({3, 4, 99}), ZtLPos2f(16, 92));
    const ViewProjection east = ViewProjection::Orthographic(1, 2, 2.0, 10, 100, 200, 120);
    EXPECT_EQ(east.Pixel({99, 3, 4}), ZtLPos2f(16, 92));
    EXPECT_TRUE(plan.Keeps({-1e9, 1e9, 0}));
    EXPECT_EQ(plan.PixelsPerUnit({5, 5, 5}), 2.0);
}

// A scene point lands where the tag maps put it: the window position of the camera's
// frustum, whose camera-space form the redline keeps.
TEST(ViewProjection, PerspectivePixelsAreTheCameraMapsWindow) {
    const ZtNvCamera camera = LookingAt({20, -30, 10}, {0, 0, 2});
    const auto view = ViewProjection::Perspective(camera, {}, 400);
    ASSERT_TRUE(view);
    EXPECT_EQ(view->Height(), 400); // the camera's aspect is 1
    ZtLFrustum3f frustum;
    ASSERT_TRUE(camera.Frustum(&frustum, 0.0));
    for (const ZtLPos3f p : {ZtLPos3f(0, 0, 2), ZtLPos3f(3, -1, 5), ZtLPos3f(-4, 2, 0)}) {
        const ZtLPos3f f = p * frustum.GetMatrix();
        const ZtLPos2f window = {(f.x + 1) / 2, (f.y + 1) / 2};
        // Through the redline's camera space and back, as the report reads a tag.
        const ZtLPos2f kept = ZtOpRedline::CameraToWindowSpace(
            camera, false, ZtOpRedline::WindowToCameraSpace(camera, false, window));
        const ZtLPos2f pixel = view->Pixel(p);
        EXPECT_NEAR(pixel.x, kept.x * 400, 1e-9);
        EXPECT_NEAR(pixel.y, (1 - kept.y) * 400, 1e-9);
    }
    // The target lies in the middle; up is up.
    EXPECT_NEAR(view->Pixel({0, 0, 2}).x, 200, 1e-9);
    EXPECT_LT(view->Pixel({0, 0, 3}).y, view->Pixel({0, 0, 2}).y);
    EXPECT_FALSE(ViewProjection::Perspective(LookingAt({0, 0, 0}, {1, 0, 0}, 0.0), {}, 400));
}

TEST(ViewProjection, PerspectiveKeepsWhatLiesInFrontAndInsideTheClipPlanes) {
    // Looking along +x from the origin; a far plane at x = 10 faces back to the eye.
    const ZtNvCamera camera = LookingAt({0, 0, 0}, {1, 0, 0});
    const std::vector<ZtLPlane3f> far = {ZtLPlane3f(ZtLUnitVec3f(-1, 0, 0), ZtLPos3f(10, 0, 0))};
    const auto view = ViewProjection::Perspective(camera, far, 100);
    ASSERT_TRUE(view);
    EXPECT_TRUE(view->Keeps({5, 1, 1}));
    EXPECT_FALSE(view->Keeps({-5, 0, 0}));
    EXPECT_FALSE(view->Keeps({11, 0, 0}));
    struct Case {
        ZtLPos3f a, b;
        bool kept;
        double fromX, toX;
    };
    for (const Case& c :
         {Case{{-5, 0, 0}, {5, 0, 0}, true, camera.GetNear(), 5},
          Case{{2, 0, 0}, {20, 0, 0}, true, 2, 10},
          Case{{-5, 1, 0}, {20, 1, 0}, true, camera.GetNear(), 10},
          Case{{-5, 0, 0}, {-1, 0, 0}, false, 0, 0}, Case{{12, 0, 0}, {15, 0, 0}, false, 0, 0}}) {
        ZtLPos3f a = c.a, b = c.b;
        ASSERT_EQ(view->Clip(&a, &b), c.kept) << c.a.x << " " << c.b.x;
        if (c.kept) {
            EXPECT_NEAR(a.x, c.fromX, 1e-9);
            EXPECT_NEAR(b.x, c.toX, 1e-9);
        }
    }
    // Twice as far, half the size.
    EXPECT_NEAR(view->PixelsPerUnit({2, 0, 0}), 2 * view->PixelsPerUnit({4, 0, 0}), 1e-9);
    EXPECT_EQ(view->PixelsPerUnit({-4, 0, 0}), 0);
}

// A mark is the box's own rectangle along an axis; in perspective a square about the
// centre's pixel as wide as the box's largest side, whichever way that side lies.
TEST(ViewProjection, MarksAreTheBoxAlongAnAxisAndItsLargestSideInPerspective) {
    const ViewProjection plan = ViewProjection::Orthographic(0, 1, 2.0, 10, 100, 200, 120);
    MarkCorners mark{};
    ASSERT_TRUE(plan.Mark(ZtLBox3f({1, 2, 0}, {4, 3, 9}), &mark));
    EXPECT_EQ(std::make_tuple(mark.x0, mark.y0, mark.x1, mark.y1),
              std::make_tuple(12.0f, 94.0f, 18.0f, 96.0f));
    EXPECT_FALSE(plan.Mark(ZtLBox3f(), &mark));

    const auto above = ViewProjection::Perspective(LookingAt({0, 0, 20}, {0, 0.001, 0}), {}, 300);
    ASSERT_TRUE(above);
    const double perUnit = above->PixelsPerUnit({0, 0, 1});
    for (const ZtLBox3f& box : {ZtLBox3f({-0.05, -0.05, 0}, {0.05, 0.05, 2}), // a post
                                ZtLBox3f({-1, -0.05, 0.95}, {1, 0.05, 1.05}), // a beam
                                ZtLBox3f({-1, -1, 0.95}, {1, 1, 1.05})}) {    // a plate
        ASSERT_TRUE(above->Mark(box, &mark));
        const ZtLPos2f centre = above->Pixel({0, 0, 1});
        EXPECT_NEAR(mark.x1 - mark.x0, 2 * perUnit, 1e-3);
        EXPECT_NEAR(mark.y1 - mark.y0, 2 * perUnit, 1e-3);
        EXPECT_NEAR((mark.x0 + mark.x1) / 2, centre.x, 1e-3);
    }
    // Behind the eye: no mark.
    EXPECT_FALSE(above->Mark(ZtLBox3f({-1, -1, 30}, {1, 1, 31}), &mark));
}

} // namespace
