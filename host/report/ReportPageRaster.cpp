#include "report/ReportPageRaster.h"

#include "report/PngEncoder.h"

#include <algorithm>
#include <cmath>

PageRaster::PageRaster(int width, int height)
    : width_(width), height_(height), pixels_(static_cast<std::size_t>(width) * height, 0) {}

void PageRaster::Fill(double x0, double y0, double x1, double y1, std::uint8_t index) {
    const int left = std::clamp(static_cast<int>(std::floor(x0)), 0, width_ - 1);
    const int right = std::clamp(static_cast<int>(std::floor(x1)), 0, width_ - 1);
    const int top = std::clamp(static_cast<int>(std::floor(y0)), 0, height_ - 1);
    const int bottom = std::clamp(static_cast<int>(std::floor(y1)), 0, height_ - 1);
    for (int y = top; y <= bottom; ++y)
        std::fill_n(pixels_.begin() + static_cast<std::ptrdiff_t>(y) * width_ + left,
                    right - left + 1, index);
    used_ = true;
}

std::string PageRaster::DataUri(const std::vector<Rgba>& palette) const {
    return "data:image/png;base64," + Base64(EncodePalettePng(width_, height_, pixels_, palette));
}
