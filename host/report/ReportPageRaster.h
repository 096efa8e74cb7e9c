#pragma once
#include "report/ReportHtml.h"

#include <cstdint>
#include <string>
#include <vector>

// A view's pixel raster on the review page: each pixel that elements too small to draw
// cover, with an index into a palette; index 0 is the transparent background.
class PageRaster {
public:
    PageRaster(int width, int height);

    int Width() const { return width_; }
    int Height() const { return height_; }
    // Whether anything was filled.
    bool IsUsed() const { return used_; }
    // Fills the pixels of the rectangle between two corners, clipped to the raster.
    void Fill(double x0, double y0, double x1, double y1, std::uint8_t index);
    // The raster as a PNG in a data URI, with the palette's colours.
    std::string DataUri(const std::vector<Rgba>& palette) const;

private:
    int width_, height_;
    std::vector<std::uint8_t> pixels_;
    bool used_ = false;
};
