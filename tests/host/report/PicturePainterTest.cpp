// A saved view painted for an image file.
#include "report/PicturePainter.h"
#include "ReportTestScenes.h"

#include <gtest/gtest.h>

#include <stb_image.h>

namespace {

// A bar across the camera's sight, and one tag on it whose redline points up and right.
TEST(PicturePainter, SavedViewPngShowsTheSceneAndItsTag) {
    ReportScene scene;
    scene.elements.push_back({ZtLBox3f({10, -2, 0}, {10, 2, 0}), 3, 0});
    auto source = std::make_shared<FakeElementSource>();
    source->geometry[0] = Polyline({{10, -2, 0}, {10, 2, 0}});
    scene.source = source;
    ReportTag tag;
    tag.id = 1;
    tag.placed = true;
    tag.position = {10, 0, 0};
    tag.window = {0.5, 0.5};
    tag.windowB = {0.75, 0.75};
    scene.views.push_back({"v", LookingAt({0, 0, 0}, {1, 0, 0}), {}, {tag}, {}});
    const std::string png = SavedViewPng(scene, scene.views[0], 120);
    int width = 0, height = 0, channels = 0;
    unsigned char* pixels =
        stbi_load_from_memory(reinterpret_cast<const unsigned char*>(png.data()),
                              static_cast<int>(png.size()), &width, &height, &channels, 3);
    ASSERT_NE(pixels, nullptr);
    ASSERT_EQ(width, 120);
    ASSERT_EQ(height, 120);
    auto rgb = [&](int x, int y) {
        const unsigned char* p = pixels + 3 * (y * width + x);
        return Rgba{p[0], p[1], p[2], 255};
    };
    EXPECT_EQ(rgb(2, 2), (Rgba{255, 255, 255, 255}));
    EXPECT_EQ(rgb(90, 30), (Rgba{204, 0, 0, 255})); // the pin's head
    // Straight ahead, the bar runs across the middle in its level's colour.
    EXPECT_EQ(rgb(40, 60), KeyColour(3));
    stbi_image_free(pixels);
    scene.views[0].camera.SetHeightField(0);
    EXPECT_EQ(SavedViewPng(scene, scene.views[0], 120), "");
}

} // namespace
