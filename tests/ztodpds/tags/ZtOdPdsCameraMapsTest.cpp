#include "tags/ZtOdPdsCameraMaps.h"
#include "ztnav/ZtNvCamera.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

// At (0, 0, 10) looking down -Z with up +Y, a field of 90 degrees (tan(h/2) = 1) and a
// depth from 1 to 100.
ZtNvCamera TestCamera() {
    ZtNvCamera camera;
    camera.SetPosition(ZtLPos3f(0, 0, 10));
    camera.SetHeightField(std::numbers::pi / 2);
    camera.SetNearFar(1, 100);
    return camera;
}

TEST(ZtOdPdsCameraMaps, ModelPointsMapThroughFrustumAndWindowToCameraSpace) {
    struct Case {
        ZtLPos3f model;
        ZtLPos2f window;
        ZtLPos2f camera;
    };
    const Case cases[] = {
        {{0, 0, 0}, {0.5, 0.5}, {0, 0}},           // on the line of sight
        {{5, 0, 5}, {1, 0.5}, {1, 0}},             // the window's right edge
        {{-2, 1, 6}, {0.25, 0.625}, {-0.5, 0.25}}, // depth 4
        {{0, -30, -20}, {0.5, 0.0}, {0, -1}},      // depth 30, the bottom edge
        {{40, 0, 0}, {2.5, 0.5}, {4, 0}},          // beyond the window
    };
    const ZtNvCamera camera = TestCamera();
    for (const Case& c : cases) {
        const ZtLPos2f window = ZtOdPdsModelToWindow(c.model, camera);
        EXPECT_NEAR(window.x, c.window.x, 1e-12);
        EXPECT_NEAR(window.y, c.window.y, 1e-12);
        const ZtLPos2f cameraSpace = ZtOdPdsModelToCameraSpace(c.model, camera);
        EXPECT_NEAR(cameraSpace.x, c.camera.x, 1e-12);
        EXPECT_NEAR(cameraSpace.y, c.camera.y, 1e-12);
    }
}

TEST(ZtOdPdsCameraMaps, CameraSpaceIsTheImagePlaneAtDistanceOne) {
    // With a narrower field the window shrinks but camera space stays: a point one unit
    // aside at depth 2 is at 0.5 whatever the field.
    for (double field : {0.3, 1.0, 2.0}) {
        ZtNvCamera camera = TestCamera();
        camera.SetHeightField(field);
        const ZtLPos2f p = ZtOdPdsModelToCameraSpace(ZtLPos3f(1, -1, 8), camera);
        EXPECT_NEAR(p.x, 0.5, 1e-12) << field;
        EXPECT_NEAR(p.y, -0.5, 1e-12) << field;
    }
}

TEST(ZtOdPdsCameraMaps, FrustumDepthRunsFromNearToFar) {
    const ZtNvCamera camera = TestCamera();
    EXPECT_NEAR(ZtOdPdsModelToFrustum(ZtLPos3f(0, 0, 9), camera).z, -1, 1e-12);
    EXPECT_NEAR(ZtOdPdsModelToFrustum(ZtLPos3f(0, 0, -90), camera).z, 1, 1e-12);
}

TEST(ZtOdPdsCameraMaps, WindowAndFrustumConvertBothWays) {
    EXPECT_EQ(ZtOdPdsWindowToFrustum(ZtLPos2f(0.25, 1)), ZtLPos3f(-0.5, 1, -1));
    EXPECT_EQ(ZtOdPdsFrustumToWindow(ZtLPos3f(-0.5, 1, 0.7)), ZtLPos2f(0.25, 1));
}

TEST(ZtOdPdsCameraMaps, ACameraWithoutFrustumMapsThroughTheDefaultOne) {
    ZtNvCamera camera = TestCamera();
    camera.SetNearFar(5, 5);
    // The default frustum: eye at the origin looking down -Z, window -1..1.
    const ZtLPos2f window = ZtOdPdsModelToWindow(ZtLPos3f(1, 0, -2), camera);
    EXPECT_NEAR(window.x, 0.75, 1e-12);
    EXPECT_NEAR(window.y, 0.5, 1e-12);
}

} // namespace
