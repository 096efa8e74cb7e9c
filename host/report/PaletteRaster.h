#pragma once
#include "report/ReportHtml.h"

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
    // a coordinate is not finite or the rectangle lies wholly outside.
    std::optional<Span> Cover(double x0, double y0, double x1, double y1) const;

    // The pixels of the rectangle between two corners.
    void Fill(double x0, double y0, double x1, double y1, std::uint8_t index);
    void Fill(const Span& span, std::uint8_t index);
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

    int width_, height_;
    std::vector<std::uint8_t> pixels_;
    bool used_ = false;
    std::uint8_t highest_ = 0; // no pixel holds a higher index
};
