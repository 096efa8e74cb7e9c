#pragma once
#include "report/ReportHtml.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// A raster of palette indices, one byte a pixel, rows top down; index 0 is the
// transparent background. The report draws into it what is too small or too many to draw
// as shapes, and a saved view's picture for an image file. Every drawing call clips to
// the raster and ignores coordinates that are not finite.
class PaletteRaster {
public:
    PaletteRaster(int width, int height);

    int Width() const { return width_; }
    int Height() const { return height_; }
    // Whether anything was drawn.
    bool IsUsed() const { return used_; }
    std::uint8_t At(int x, int y) const {
        return pixels_[static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) +
                       static_cast<std::size_t>(x)];
    }

    // Pixels from column `left` to `right` and from row `top` to `bottom`, all within the
    // raster.
    struct Span {
        int left, top, right, bottom;
    };
    // The pixels of the rectangle between two corners that lie in the raster; none where
    // a coordinate is not finite or the rectangle lies wholly outside. Inline: a picture
    // covers its marks one by one, up to millions of them.
    std::optional<Span> Cover(double x0, double y0, double x1, double y1) const {
        if (!std::isfinite(x0) || !std::isfinite(y0) || !std::isfinite(x1) || !std::isfinite(y1) ||
            std::max(x0, x1) < 0 || std::max(y0, y1) < 0 || std::min(x0, x1) >= width_ ||
            std::min(y0, y1) >= height_)
            return std::nullopt;
        return Span{
            FinitePixel(std::min(x0, x1), width_ - 1), FinitePixel(std::min(y0, y1), height_ - 1),
            FinitePixel(std::max(x0, x1), width_ - 1), FinitePixel(std::max(y0, y1), height_ - 1)};
    }

    // The pixels of the rectangle between two corners.
    void Fill(double x0, double y0, double x1, double y1, std::uint8_t index);
    void Fill(const Span& span, std::uint8_t index);
    // Fill, but only into the pixels still 0. Marks painted last first this way leave each
    // pixel what the last of them in their own order painted there, as Fill in that order
    // would; and as every one is noted, IsUsed and the palette's length are Fill's too.
    // An index of 0 paints nothing and notes nothing.
    void FillUnder(const Span& span, std::uint8_t index) {
        if (!index)
            return;
        const auto stride = static_cast<std::size_t>(width_);
        std::uint8_t* row = pixels_.data() + static_cast<std::size_t>(span.top) * stride +
                            static_cast<std::size_t>(span.left);
        // Most marks are a pixel, which needs no loop.
        if (span.left == span.right && span.top == span.bottom) {
            *row = *row ? *row : index;
        } else {
            const auto across = static_cast<std::size_t>(span.right - span.left + 1);
            for (int y = span.top; y <= span.bottom; ++y, row += stride)
                for (std::size_t x = 0; x < across; ++x)
                    row[x] = row[x] ? row[x] : index;
        }
        used_ = true;
        highest_ = std::max(highest_, index);
    }

    // A line one pixel wide.
    void Line(double x0, double y0, double x1, double y1, std::uint8_t index);
    // The pixels whose centres lie within `radius` of the centre.
    void Disc(double cx, double cy, double radius, std::uint8_t index);

    // The raster as an RGBA PNG, each index given its palette colour; an index past the
    // palette is transparent.
    std::string Png(const std::vector<Rgba>& palette) const;
    // The PNG in a data URI.
    std::string DataUri(const std::vector<Rgba>& palette) const;

private:
    void Set(int x, int y, std::uint8_t index);

    // A finite coordinate as the number of the pixel whose span holds it, within [0, high]:
    // clamped first, so that the conversion to int can't overflow and truncates a value
    // that is not negative, which is its floor.
    static int FinitePixel(double value, int high) {
        return static_cast<int>(std::min(std::max(value, 0.0), static_cast<double>(high)));
    }

    int width_, height_;
    std::vector<std::uint8_t> pixels_;
    bool used_ = false;
    std::uint8_t highest_ = 0; // no pixel holds a higher index
};
