#include "ztplugin/ZtOpRedline.h"
#include "ztnav/ZtNvCamera.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

ZtNvCamera CameraWithHeightField(double radians) {
    ZtNvCamera camera;
    camera.SetHeightField(radians);
    return camera;
}

TEST(ZtOpRedline, WindowToCameraSpaceScalesByTheHalfField) {
    struct Case {
        bool yDown;
        ZtLPos2f window;
        ZtLPos2f camera;
    };
    // A field of 90 degrees: tan(h/2) is 1, so camera space is frustum space.
    const Case cases[] = {
        {false, {0.5, 0.5}, {0, 0}},
        {false, {1, 1}, {1, 1}},
        {false, {0, 0.75}, {-1, 0.5}},
        {false, {2, -1}, {3, -3}}, // outside the window is no error
        {false, {0.5, 0.25}, {0, -0.5}},
        {true, {0.5, 0.25}, {0, 0.5}}, // y down counts the window from its top
    };
    const ZtNvCamera camera = CameraWithHeightField(std::numbers::pi / 2);
    for (const Case& c : cases) {
        const ZtLPos2f got = ZtOpRedline::WindowToCameraSpace(camera, c.yDown, c.window);
        EXPECT_NEAR(got.x, c.camera.x, 1e-15) << c.window.x << "," << c.window.y;
        EXPECT_NEAR(got.y, c.camera.y, 1e-15) << c.window.x << "," << c.window.y;
    }
    // 60 degrees: the window's top edge is tan 30 degrees above the line of sight.
    const ZtLPos2f top = ZtOpRedline::WindowToCameraSpace(
        CameraWithHeightField(std::numbers::pi / 3), false, ZtLPos2f(0.5, 1));
    EXPECT_NEAR(top.y, 1 / std::sqrt(3.0), 1e-15);
}

TEST(ZtOpRedline, CameraToWindowSpaceIsTheInverse) {
    const ZtNvCamera camera = CameraWithHeightField(0.7);
    for (bool yDown : {false, true})
        for (const ZtLPos2f window :
             {ZtLPos2f(0.1, 0.9), ZtLPos2f(0.5, 0.5), ZtLPos2f(1.3, -0.2)}) {
            const ZtLPos2f back = ZtOpRedline::CameraToWindowSpace(
                camera, yDown, ZtOpRedline::WindowToCameraSpace(camera, yDown, window));
            EXPECT_NEAR(back.x, window.x, 1e-14);
            EXPECT_NEAR(back.y, window.y, 1e-14);
        }
}

} // namespace
