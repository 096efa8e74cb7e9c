#include "report/PaletteRaster.h"

#include <algorithm>
#include <cmath>

#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb_image_write.h>

namespace {

// A coordinate as a pixel number within [low, high]: what lies beyond either end lands
// on it, before any conversion to int could overflow.
int PixelWithin(double value, int low, int high) {
    return static_cast<int>(
        std::clamp(std::floor(value), static_cast<double>(low), static_cast<double>(high)));
}

bool Finite(std::initializer_list<double> values) {
    return std::all_of(values.begin(), values.end(), [](double v) { return std::isfinite(v); });
}

// Cuts the line from (x0, y0) to (x1, y1) to the rectangle [0, w] x [0, h] (Liang and
// Barsky); false when none of it lies inside.
bool ClipLine(double& x0, double& y0, double& x1, double& y1, double w, double h) {
    double t0 = 0, t1 = 1;
    const double dx = x1 - x0, dy = y1 - y0;
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {x0, w - x0, y0, h - y0};
    for (int i = 0; i < 4; ++i) {
        if (p[i] == 0) {
            if (q[i] < 0)
                return false;
            continue;
        }
        const double t = q[i] / p[i];
        if (p[i] < 0)
            t0 = std::max(t0, t);
        else
            t1 = std::min(t1, t);
        if (t0 > t1)
            return false;
    }
    x1 = x0 + t1 * dx, y1 = y0 + t1 * dy;
    x0 = x0 + t0 * dx, y0 = y0 + t0 * dy;
    return true;
}

void Append(void* context, void* data, int size) {
    static_cast<std::string*>(context)->append(static_cast<const char*>(data),
                                               static_cast<std::size_t>(size));
}

} // namespace

PaletteRaster::PaletteRaster(int width, int height)
    : width_(std::max(width, 1)), height_(std::max(height, 1)),
      pixels_(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), 0) {}

void PaletteRaster::Set(int x, int y, std::uint8_t index) {
    if (x >= 0 && y >= 0 && x < width_ && y < height_) {
        pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                static_cast<std::size_t>(x)] = index;
        used_ = true;
    }
}

void PaletteRaster::Fill(double x0, double y0, double x1, double y1, std::uint8_t index) {
    if (!Finite({x0, y0, x1, y1}) || std::max(x0, x1) < 0 || std::max(y0, y1) < 0 ||
        std::min(x0, x1) >= width_ || std::min(y0, y1) >= height_)
        return;
    const int left = PixelWithin(std::min(x0, x1), 0, width_ - 1);
    const int right = PixelWithin(std::max(x0, x1), 0, width_ - 1);
    const int top = PixelWithin(std::min(y0, y1), 0, height_ - 1);
    const int bottom = PixelWithin(std::max(y0, y1), 0, height_ - 1);
    for (int y = top; y <= bottom; ++y)
        std::fill_n(pixels_.begin() + static_cast<std::ptrdiff_t>(y) * width_ + left,
                    right - left + 1, index);
    used_ = true;
}

void PaletteRaster::Line(double x0, double y0, double x1, double y1, std::uint8_t index) {
    if (!Finite({x0, y0, x1, y1}) || !ClipLine(x0, y0, x1, y1, width_, height_))
        return;
    // The clipped line is at most the raster's diagonal long, so the steps are bounded.
    const int steps = static_cast<int>(std::ceil(std::max(std::abs(x1 - x0), std::abs(y1 - y0))));
    for (int i = 0; i <= steps; ++i) {
        const double t = steps ? static_cast<double>(i) / steps : 0;
        Set(PixelWithin(x0 + t * (x1 - x0), 0, width_ - 1),
            PixelWithin(y0 + t * (y1 - y0), 0, height_ - 1), index);
    }
}

void PaletteRaster::Disc(double cx, double cy, double radius, std::uint8_t index) {
    if (!Finite({cx, cy, radius}) || radius <= 0)
        return;
    const int top = PixelWithin(cy - radius, 0, height_ - 1);
    const int bottom = PixelWithin(cy + radius, 0, height_ - 1);
    const int left = PixelWithin(cx - radius, 0, width_ - 1);
    const int right = PixelWithin(cx + radius, 0, width_ - 1);
    for (int y = top; y <= bottom; ++y)
        for (int x = left; x <= right; ++x) {
            const double dx = x + 0.5 - cx, dy = y + 0.5 - cy;
            if (dx * dx + dy * dy <= radius * radius)
                Set(x, y, index);
        }
}

std::string PaletteRaster::Png(const std::vector<Rgba>& palette) const {
    std::vector<std::uint8_t> rgba(pixels_.size() * 4, 0);
    for (std::size_t i = 0; i < pixels_.size(); ++i)
        if (pixels_[i] < palette.size())
            std::copy(palette[pixels_[i]].begin(), palette[pixels_[i]].end(), rgba.begin() + 4 * i);
    std::string png;
    if (!stbi_write_png_to_func(Append, &png, width_, height_, 4, rgba.data(), width_ * 4))
        png.clear();
    return png;
}

std::string PaletteRaster::DataUri(const std::vector<Rgba>& palette) const {
    return "data:image/png;base64," + Base64(Png(palette));
}
