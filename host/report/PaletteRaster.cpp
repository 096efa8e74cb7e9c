#include "report/PaletteRaster.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <memory>

#ifdef ZTODPDS_HAVE_ZLIB
#include <zlib.h>
#else
#define STB_IMAGE_WRITE_STATIC
#define STBI_WRITE_NO_STDIO
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb_image_write.h>
#endif

namespace {

#ifdef ZTODPDS_HAVE_ZLIB
// zlib's level 3: as small as stb's deflate at its default, in a third of the time.
constexpr int kDeflateLevel = 3;

// The data as a zlib stream; empty where zlib fails.
std::string Deflate(const std::vector<std::uint8_t>& data) {
    uLongf size = compressBound(static_cast<uLong>(data.size()));
    std::string out(size, '\0');
    if (compress2(reinterpret_cast<Bytef*>(out.data()), &size, data.data(),
                  static_cast<uLong>(data.size()), kDeflateLevel) != Z_OK)
        return {};
    out.resize(size);
    return out;
}
#else
// How hard stb's deflater looks for matches (its quality: the length of its hash chains).
constexpr int kDeflateEffort = 8;

std::string Deflate(const std::vector<std::uint8_t>& data) {
    int size = 0;
    const std::unique_ptr<unsigned char, void (*)(void*)> deflated(
        stbi_zlib_compress(const_cast<unsigned char*>(data.data()), static_cast<int>(data.size()),
                           &size, kDeflateEffort),
        [](void* p) { STBIW_FREE(p); });
    return deflated ? std::string(reinterpret_cast<const char*>(deflated.get()),
                                  static_cast<std::size_t>(size))
                    : std::string();
}
#endif

// A finite coordinate as a pixel number within [low, high], the pixel whose span holds it:
// what lies beyond either end lands on it, before any conversion to int could overflow.
// Inside, the conversion truncates and one step down makes that the floor, without a call
// of floor for every pixel of a mark or line.
inline int PixelWithin(double value, int low, int high) {
    if (!(value > low))
        return low;
    if (value >= high)
        return high;
    const int truncated = static_cast<int>(value);
    return truncated - (truncated > value ? 1 : 0);
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

// The CRC-32 of a PNG chunk (the polynomial of ISO 3309, bits reflected), a byte at a
// time from a table.
constexpr std::array<std::uint32_t, 256> MakeCrcTable() {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t n = 0; n < 256; ++n) {
        std::uint32_t c = n;
        for (int k = 0; k < 8; ++k)
            c = c & 1 ? 0xEDB88320u ^ (c >> 1) : c >> 1;
        table[n] = c;
    }
    return table;
}
constexpr std::array<std::uint32_t, 256> kCrcTable = MakeCrcTable();

void AppendU32(std::string& out, std::uint32_t v) {
    for (int shift = 24; shift >= 0; shift -= 8)
        out += static_cast<char>((v >> shift) & 0xFF);
}

// A chunk: the length of its data, its type, the data, and the CRC of type and data.
void AppendChunk(std::string& png, const char (&type)[5], const std::uint8_t* data,
                 std::size_t size) {
    AppendU32(png, static_cast<std::uint32_t>(size));
    const std::size_t start = png.size();
    png.append(type, 4);
    if (size)
        png.append(reinterpret_cast<const char*>(data), size);
    std::uint32_t crc = 0xFFFFFFFFu;
    for (std::size_t i = start; i < png.size(); ++i)
        crc = kCrcTable[(crc ^ static_cast<std::uint8_t>(png[i])) & 0xFF] ^ (crc >> 8);
    AppendU32(png, crc ^ 0xFFFFFFFFu);
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
        highest_ = std::max(highest_, index);
    }
}

void PaletteRaster::Fill(double x0, double y0, double x1, double y1, std::uint8_t index) {
    if (const std::optional<Span> span = Cover(x0, y0, x1, y1))
        Fill(*span, index);
}

void PaletteRaster::Fill(const Span& span, std::uint8_t index) {
    // Most spans are the few pixels of a mark too small to see, not worth a call of
    // memset a row.
    const auto across = static_cast<std::size_t>(span.right - span.left + 1);
    const auto stride = static_cast<std::size_t>(width_);
    std::uint8_t* row = pixels_.data() + static_cast<std::size_t>(span.top) * stride +
                        static_cast<std::size_t>(span.left);
    for (int y = span.top; y <= span.bottom; ++y, row += stride) {
        if (across > 4) {
            std::memset(row, index, across);
            continue;
        }
        row[0] = index;
        row[across > 1 ? 1 : 0] = index;
        row[across > 2 ? 2 : 0] = index;
        row[across > 3 ? 3 : 0] = index;
    }
    used_ = true;
    highest_ = std::max(highest_, index);
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
    // An indexed PNG, a byte a pixel as the raster holds them: a quarter of the RGBA data
    // to compress. Every index in use has an entry; those past the palette are
    // transparent black, as the palette's own transparency is given in tRNS.
    std::vector<std::uint8_t> colours, alphas;
    for (std::size_t i = 0; i <= highest_; ++i) {
        const Rgba c = i < palette.size() ? palette[i] : Rgba{0, 0, 0, 0};
        colours.insert(colours.end(), c.begin(), c.begin() + 3);
        alphas.push_back(c[3]);
    }
    // Each row after its filter byte, 0: no filter, which suits palette indices best.
    const std::size_t row = static_cast<std::size_t>(width_);
    std::vector<std::uint8_t> rows((row + 1) * static_cast<std::size_t>(height_), 0);
    for (std::size_t y = 0; y < static_cast<std::size_t>(height_); ++y)
        std::copy_n(pixels_.begin() + static_cast<std::ptrdiff_t>(y * row), row,
                    rows.begin() + static_cast<std::ptrdiff_t>(y * (row + 1) + 1));
    const std::string deflated = Deflate(rows);
    if (deflated.empty())
        return {};
    std::string png = "\x89PNG\r\n\x1a\n";
    std::string header;
    AppendU32(header, static_cast<std::uint32_t>(width_));
    AppendU32(header, static_cast<std::uint32_t>(height_));
    header += std::string("\x08\x03\x00\x00\x00", 5); // 8 bits an index, no interlace
    AppendChunk(png, "IHDR", reinterpret_cast<const std::uint8_t*>(header.data()), header.size());
    AppendChunk(png, "PLTE", colours.data(), colours.size());
    AppendChunk(png, "tRNS", alphas.data(), alphas.size());
    AppendChunk(png, "IDAT", reinterpret_cast<const std::uint8_t*>(deflated.data()),
                deflated.size());
    AppendChunk(png, "IEND", nullptr, 0);
    return png;
}

std::string PaletteRaster::DataUri(const std::vector<Rgba>& palette) const {
    return "data:image/png;base64," + Base64(Png(palette));
}
