#pragma once
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// A PNG of 8-bit palette indices, one byte a pixel, rows top down. The palette's entries
// are RGBA; index 0 is usually the transparent background. The image data is deflated
// with the fixed code and runs only: the report's rasters are mostly empty, so that runs
// are nearly all there is to gain.
std::string EncodePalettePng(int width, int height, const std::vector<std::uint8_t>& pixels,
                             const std::vector<std::array<std::uint8_t, 4>>& palette);

// Base64 with padding, as in a data URI.
std::string Base64(std::string_view bytes);
