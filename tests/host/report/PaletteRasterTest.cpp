// The report's palette raster: clipped drawing, and its PNG read back by a decoder.
#include "report/PaletteRaster.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include <stb_image.h>

namespace {

std::size_t Count(const PaletteRaster& raster, std::uint8_t index) {
    std::size_t n = 0;
    for (int y = 0; y < raster.Height(); ++y)
        for (int x = 0; x < raster.Width(); ++x)
            n += raster.At(x, y) == index;
    return n;
}

TEST(PaletteRaster, DrawsClippedAndIgnoresWhatIsNotFinite) {
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    PaletteRaster raster(20, 10);
    raster.Fill(nan, 0, 5, 5, 1);
    raster.Line(0, 0, inf, 5, 1);
    raster.Disc(5, 5, nan, 1);
    raster.Fill(-1e300, -1e300, -5, -5, 1);
    EXPECT_FALSE(raster.IsUsed());
    raster.Fill(18.5, 8.5, 1e300, 1e300, 2); // to the corner, corners in any order
    EXPECT_EQ(Count(raster, 2), 4u);
    raster.Line(-1e9, 3.5, 1e9, 3.5, 3); // a whole row, in a few steps
    EXPECT_EQ(Count(raster, 3), 20u);
    raster.Line(2.5, 0.5, 2.5, 9.5, 4); // a whole column
    EXPECT_EQ(Count(raster, 4), 10u);
    raster.Disc(10, 5, 2, 5);
    EXPECT_EQ(Count(raster, 5), 12u);
    EXPECT_TRUE(raster.IsUsed());
}

// Spans of each width up to past those filled without memset, at fractional and whole
// corners: a whole coordinate starts its pixel, and what lies beyond an edge lands on it.
TEST(PaletteRaster, FillsExactlyThePixelsItsCornersCover) {
    struct Case {
        double x0, y0, x1, y1;
        int left, top, right, bottom;
    };
    const Case cases[] = {{2.0, 1.0, 2.9, 1.9, 2, 1, 2, 1},     {2.5, 1.5, 3.1, 1.5, 2, 1, 3, 1},
                          {0.2, 0.0, 2.7, 1.2, 0, 0, 2, 1},     {-0.5, -3.0, 3.0, 0.5, 0, 0, 3, 0},
                          {1.5, 2.5, 6.5, 4.0, 1, 2, 6, 4},     {9.99, 0.5, 9.5, 0.5, 9, 0, 9, 0},
                          {19.5, 9.5, 25.0, 12.0, 19, 9, 19, 9}};
    for (const Case& c : cases) {
        PaletteRaster raster(20, 10);
        raster.Fill(c.x0, c.y0, c.x1, c.y1, 7);
        for (int y = 0; y < raster.Height(); ++y)
            for (int x = 0; x < raster.Width(); ++x) {
                const bool in = x >= c.left && x <= c.right && y >= c.top && y <= c.bottom;
                EXPECT_EQ(raster.At(x, y), in ? 7 : 0)
                    << "(" << c.x0 << ", " << c.y0 << ") (" << c.x1 << ", " << c.y1 << ") at " << x
                    << ", " << y;
            }
    }
}

TEST(PaletteRaster, PngHoldsThePaletteColoursAndTransparency) {
    PaletteRaster raster(7, 3);
    raster.Fill(1, 0, 1, 2, 1);
    raster.Fill(6, 2, 6, 2, 2);
    raster.Fill(3, 1, 3, 1, 9); // past the palette
    const std::string png = raster.Png({{0, 0, 0, 0}, {255, 0, 0, 255}, {1, 2, 3, 128}});
    ASSERT_EQ(png.compare(0, 8, "\x89PNG\r\n\x1a\n"), 0);
    int width = 0, height = 0, channels = 0;
    unsigned char* pixels =
        stbi_load_from_memory(reinterpret_cast<const unsigned char*>(png.data()),
                              static_cast<int>(png.size()), &width, &height, &channels, 4);
    ASSERT_NE(pixels, nullptr);
    EXPECT_EQ(width, 7);
    EXPECT_EQ(height, 3);
    auto pixel = [&](int x, int y) {
        const unsigned char* p = pixels + 4 * (y * width + x);
        return Rgba{p[0], p[1], p[2], p[3]};
    };
    EXPECT_EQ(pixel(1, 2), (Rgba{255, 0, 0, 255}));
    EXPECT_EQ(pixel(6, 2), (Rgba{1, 2, 3, 128}));
    EXPECT_EQ(pixel(3, 1)[3], 0);
    EXPECT_EQ(pixel(0, 0)[3], 0);
    stbi_image_free(pixels);
    EXPECT_EQ(raster.DataUri({}).rfind("data:image/png;base64,iVBORw0KGgo", 0), 0u);
}

// Every index from 0 to 255 in one row, under palettes shorter than, as long as and
// without the indices: each pixel decodes to its entry, or to transparent black past the end.
TEST(PaletteRaster, PngGivesEveryIndexItsEntry) {
    PaletteRaster raster(256, 2);
    for (int x = 0; x < 256; ++x)
        raster.Fill(x, 0, x, 0, static_cast<std::uint8_t>(x));
    for (std::size_t entries : {std::size_t{0}, std::size_t{3}, std::size_t{256}}) {
        std::vector<Rgba> palette;
        for (std::size_t i = 0; i < entries; ++i)
            palette.push_back({static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(255 - i),
                               static_cast<std::uint8_t>(i / 2),
                               static_cast<std::uint8_t>(i % 7 * 40)});
        const std::string png = raster.Png(palette);
        int width = 0, height = 0, channels = 0;
        unsigned char* pixels =
            stbi_load_from_memory(reinterpret_cast<const unsigned char*>(png.data()),
                                  static_cast<int>(png.size()), &width, &height, &channels, 4);
        ASSERT_NE(pixels, nullptr) << entries;
        ASSERT_EQ(width * height, 512);
        for (int x = 0; x < 256; ++x) {
            const Rgba expected = static_cast<std::size_t>(x) < entries
                                      ? palette[static_cast<std::size_t>(x)]
                                      : Rgba{0, 0, 0, 0};
            const Rgba got{pixels[4 * x], pixels[4 * x + 1], pixels[4 * x + 2], pixels[4 * x + 3]};
            EXPECT_EQ(got, expected) << "index " << x << " of " << entries;
        }
        stbi_image_free(pixels);
    }
}

TEST(ReportHtml, Base64PadsToWholeQuads) {
    EXPECT_EQ(Base64(""), "");
    EXPECT_EQ(Base64("f"), "Zg==");
    EXPECT_EQ(Base64("fo"), "Zm8=");
    EXPECT_EQ(Base64("foo"), "Zm9v");
    EXPECT_EQ(Base64("\xff\xfe\xfd\xfc"), "//79/A==");
}

} // namespace
