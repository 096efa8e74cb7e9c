#include "tools/ZtTestDgnWriter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <numbers>

void ZtTestPutWord(std::vector<std::uint8_t>& out, std::size_t at, std::uint16_t value) {
    out[at] = static_cast<std::uint8_t>(value & 0xFF);
    out[at + 1] = static_cast<std::uint8_t>(value >> 8);
}

void ZtTestPutInt32(std::vector<std::uint8_t>& out, std::size_t at, std::int32_t value) {
    const auto u = static_cast<std::uint32_t>(value);
    ZtTestPutWord(out, at, static_cast<std::uint16_t>(u >> 16));
    ZtTestPutWord(out, at + 2, static_cast<std::uint16_t>(u & 0xFFFF));
}

void ZtTestPutVaxDouble(std::vector<std::uint8_t>& out, std::size_t at, double value) {
    std::uint64_t ieee;
    std::memcpy(&ieee, &value, sizeof ieee);
    const std::uint64_t sign = ieee >> 63;
    const auto exponent = static_cast<std::int64_t>((ieee >> 52) & 0x7FF);
    std::uint64_t vax = 0;
    if (exponent > 894) {
        const std::uint64_t e =
            static_cast<std::uint64_t>(std::min<std::int64_t>(exponent - 894, 255));
        const std::uint64_t fraction = exponent - 894 > 255
                                           ? (std::uint64_t{1} << 55) - 1
                                           : (ieee & ((std::uint64_t{1} << 52) - 1)) << 3;
        vax = (sign << 63) | (e << 55) | fraction;
    }
    for (int i = 0; i < 4; ++i)
        ZtTestPutWord(out, at + 2 * static_cast<std::size_t>(i),
                      static_cast<std::uint16_t>(vax >> (48 - 16 * i)));
}

namespace {

void PutRange(std::vector<std::uint8_t>& out, std::size_t at, std::int32_t value) {
    ZtTestPutInt32(out, at,
                   static_cast<std::int32_t>(static_cast<std::uint32_t>(value) ^ 0x80000000u));
}

void PutRanges(std::vector<std::uint8_t>& out, std::size_t element, ZtTestDgnPoint low,
               ZtTestDgnPoint high) {
    const std::int32_t values[6] = {low.x, low.y, low.z, high.x, high.y, high.z};
    for (std::size_t i = 0; i < 6; ++i)
        PutRange(out, element + 4 + 4 * i, values[i]);
}

ZtTestDgnPoint Min(ZtTestDgnPoint a, ZtTestDgnPoint b) {
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::min(a.z, b.z)};
}

ZtTestDgnPoint Max(ZtTestDgnPoint a, ZtTestDgnPoint b) {
    return {std::max(a.x, b.x), std::max(a.y, b.y), std::max(a.z, b.z)};
}

using Vec = std::array<double, 3>;

// The vector turned as the element's rotation turns it (Rodrigues' formula), so that the
// writer's ranges do not depend on how a reader decodes the quaternion.
Vec Turn(const ZtTestDgnTurn& turn, int dimension, Vec v) {
    const double radians = turn.degrees * std::numbers::pi / 180;
    Vec k = {0, 0, 1};
    if (dimension == 3) {
        const double n = std::hypot(turn.axis[0], turn.axis[1], turn.axis[2]);
        k = {turn.axis[0] / n, turn.axis[1] / n, turn.axis[2] / n};
    }
    const Vec cross = {k[1] * v[2] - k[2] * v[1], k[2] * v[0] - k[0] * v[2],
                       k[0] * v[1] - k[1] * v[0]};
    const double dot = k[0] * v[0] + k[1] * v[1] + k[2] * v[2];
    Vec out;
    for (int i = 0; i < 3; ++i)
        out[i] = v[i] * std::cos(radians) + cross[i] * std::sin(radians) +
                 k[i] * dot * (1 - std::cos(radians));
    return out;
}

// Widens low and high by the point, rounded outwards to whole UORs.
void Cover(Vec p, ZtTestDgnPoint* low, ZtTestDgnPoint* high, bool* first) {
    const ZtTestDgnPoint down = {static_cast<std::int32_t>(std::floor(p[0])),
                                 static_cast<std::int32_t>(std::floor(p[1])),
                                 static_cast<std::int32_t>(std::floor(p[2]))};
    const ZtTestDgnPoint up = {static_cast<std::int32_t>(std::ceil(p[0])),
                               static_cast<std::int32_t>(std::ceil(p[1])),
                               static_cast<std::int32_t>(std::ceil(p[2]))};
    *low = *first ? down : Min(*low, down);
    *high = *first ? up : Max(*high, up);
    *first = false;
}

// Covers the points of an elliptical arc at every degree and at its ends.
void CoverArc(Vec centre, Vec a, Vec b, double start, double sweep, ZtTestDgnPoint* low,
              ZtTestDgnPoint* high, bool* first) {
    const int steps = 360;
    for (int i = 0; i <= steps; ++i) {
        const double t = (start + sweep * i / steps) * std::numbers::pi / 180;
        Cover({centre[0] + a[0] * std::cos(t) + b[0] * std::sin(t),
               centre[1] + a[1] * std::cos(t) + b[1] * std::sin(t),
               centre[2] + a[2] * std::cos(t) + b[2] * std::sin(t)},
              low, high, first);
    }
}

std::int32_t AngleUnits(double degrees) {
    return static_cast<std::int32_t>(std::lround(degrees * 360000));
}

} // namespace

std::vector<std::uint16_t> ZtTestDmrsLinkage(std::uint16_t entity, std::uint32_t occurrence,
                                             bool infoBit) {
    return {static_cast<std::uint16_t>(infoBit ? 0x8000 : 0), entity,
            static_cast<std::uint16_t>(occurrence & 0xFFFF),
            static_cast<std::uint16_t>((occurrence >> 16) & 0xFF)};
}

std::vector<std::uint16_t> ZtTestOdbcLinkage(std::uint16_t entity, std::uint32_t mslink) {
    return {0x1007,
            0x5E62,
            0x0F81,
            entity,
            static_cast<std::uint16_t>(mslink & 0xFFFF),
            static_cast<std::uint16_t>(mslink >> 16),
            0,
            0};
}

ZtTestDgnWriter::ZtTestDgnWriter(int dimension, const ZtTestDgnUnits& units)
    : dimension_(dimension) {
    bytes_.assign(1536, 0);
    bytes_[0] = dimension == 3 ? 0xC8 : 0x08;
    bytes_[1] = 9;
    ZtTestPutWord(bytes_, 2, 766);
    ZtTestPutInt32(bytes_, 1112, static_cast<std::int32_t>(units.subunitsPerMaster));
    ZtTestPutInt32(bytes_, 1116, static_cast<std::int32_t>(units.uorsPerSubunit));
    for (std::size_t i = 0; i < 2 && i < units.masterName.size(); ++i)
        bytes_[1120 + i] = static_cast<std::uint8_t>(units.masterName[i]);
    for (std::size_t i = 0; i < 2 && i < units.subName.size(); ++i)
        bytes_[1122 + i] = static_cast<std::uint8_t>(units.subName[i]);
    bytes_[1214] = dimension == 3 ? 0x40 : 0;
    for (std::size_t i = 0; i < 3; ++i)
        ZtTestPutVaxDouble(bytes_, 1240 + 8 * i, units.origin[i]);
    offsets_.push_back(0);
}

std::uint32_t ZtTestDgnWriter::Write(int type, const ZtTestDgnSymbology& s,
                                     const std::vector<std::uint8_t>& body, ZtTestDgnPoint low,
                                     ZtTestDgnPoint high, bool group) {
    std::vector<std::uint8_t> e(36, 0);
    e.insert(e.end(), body.begin(), body.end());
    if (e.size() % 2)
        e.push_back(0);
    const std::size_t beforeLinkages = e.size();
    for (const auto& linkage : s.linkages)
        for (std::uint16_t word : linkage) {
            e.push_back(static_cast<std::uint8_t>(word & 0xFF));
            e.push_back(static_cast<std::uint8_t>(word >> 8));
        }
    const bool component = !groups_.empty();
    e[0] = static_cast<std::uint8_t>((s.level & 0x3F) | (component ? 0x80 : 0));
    e[1] = static_cast<std::uint8_t>((type & 0x7F) | (s.deleted ? 0x80 : 0));
    ZtTestPutWord(e, 2, static_cast<std::uint16_t>((e.size() - 4) / 2));
    PutRanges(e, 0, low, high);
    ZtTestPutWord(e, 28, static_cast<std::uint16_t>(s.graphicGroup));
    ZtTestPutWord(e, 30, static_cast<std::uint16_t>((beforeLinkages - 32) / 2));
    ZtTestPutWord(e, 32,
                  static_cast<std::uint16_t>(s.properties | (s.linkages.empty() ? 0 : 0x0800)));
    e[34] = static_cast<std::uint8_t>((s.style & 7) | ((s.weight & 31) << 3));
    e[35] = static_cast<std::uint8_t>(s.colour);

    if (component) {
        ++groups_.back().components;
        // A group's own range is known, and passed up, when it ends.
        if (!group)
            ExtendGroup(low, high);
    }
    const std::size_t offset = bytes_.size();
    bytes_.insert(bytes_.end(), e.begin(), e.end());
    offsets_.push_back(offset);
    if (group)
        groups_.push_back({offset, e.size(), 0, false, {}, {}});
    return static_cast<std::uint32_t>(offsets_.size() - 1);
}

std::vector<std::uint8_t> ZtTestDgnWriter::Points(const std::vector<ZtTestDgnPoint>& points) const {
    std::vector<std::uint8_t> out(static_cast<std::size_t>(dimension_) * 4 * points.size(), 0);
    std::size_t at = 0;
    for (const ZtTestDgnPoint& p : points) {
        ZtTestPutInt32(out, at, p.x);
        ZtTestPutInt32(out, at + 4, p.y);
        if (dimension_ == 3)
            ZtTestPutInt32(out, at + 8, p.z);
        at += static_cast<std::size_t>(dimension_) * 4;
    }
    return out;
}

namespace {

void Bounds(const std::vector<ZtTestDgnPoint>& points, int dimension, ZtTestDgnPoint* low,
            ZtTestDgnPoint* high) {
    *low = *high = points.empty() ? ZtTestDgnPoint{} : points.front();
    for (const ZtTestDgnPoint& p : points) {
        *low = Min(*low, p);
        *high = Max(*high, p);
    }
    if (dimension == 2)
        low->z = high->z = 0;
}

} // namespace

std::uint32_t ZtTestDgnWriter::PointElement(int type, const ZtTestDgnSymbology& s,
                                            const std::vector<ZtTestDgnPoint>& points) {
    std::vector<std::uint8_t> body(2, 0);
    ZtTestPutWord(body, 0, static_cast<std::uint16_t>(points.size()));
    const std::vector<std::uint8_t> vertices = Points(points);
    body.insert(body.end(), vertices.begin(), vertices.end());
    ZtTestDgnPoint low, high;
    Bounds(points, dimension_, &low, &high);
    return Write(type, s, body, low, high, false);
}

std::uint32_t ZtTestDgnWriter::Line(const ZtTestDgnSymbology& s, ZtTestDgnPoint a,
                                    ZtTestDgnPoint b) {
    ZtTestDgnPoint low, high;
    Bounds({a, b}, dimension_, &low, &high);
    return Write(3, s, Points({a, b}), low, high, false);
}

std::uint32_t ZtTestDgnWriter::LineString(const ZtTestDgnSymbology& s,
                                          const std::vector<ZtTestDgnPoint>& points) {
    return PointElement(4, s, points);
}

std::uint32_t ZtTestDgnWriter::Shape(const ZtTestDgnSymbology& s,
                                     const std::vector<ZtTestDgnPoint>& points) {
    return PointElement(6, s, points);
}

std::uint32_t ZtTestDgnWriter::Curve(const ZtTestDgnSymbology& s,
                                     const std::vector<ZtTestDgnPoint>& points) {
    return PointElement(11, s, points);
}

void ZtTestDgnWriter::PutTurn(std::vector<std::uint8_t>& body, std::size_t at,
                              const ZtTestDgnTurn& turn) const {
    if (turn.degrees == 0)
        return;
    if (dimension_ == 2) {
        ZtTestPutInt32(body, at, AngleUnits(turn.degrees));
        return;
    }
    const double half = turn.degrees * std::numbers::pi / 360;
    const double n = std::hypot(turn.axis[0], turn.axis[1], turn.axis[2]);
    const double q[4] = {std::cos(half), std::sin(half) * turn.axis[0] / n,
                         std::sin(half) * turn.axis[1] / n, std::sin(half) * turn.axis[2] / n};
    for (std::size_t i = 0; i < 4; ++i)
        ZtTestPutInt32(body, at + 4 * i,
                       static_cast<std::int32_t>(std::lround(q[i] * 2147483647.0)));
}

std::uint32_t ZtTestDgnWriter::Text(const ZtTestDgnSymbology& s, ZtTestDgnPoint origin,
                                    const std::string& text, std::int32_t height,
                                    const ZtTestDgnTurn& turn) {
    const std::int32_t multiplier = height * 1000 / 6;
    std::vector<std::uint8_t> body(dimension_ == 3 ? 40 : 24, 0);
    body[1] = 2; // left bottom
    ZtTestPutInt32(body, 2, multiplier);
    ZtTestPutInt32(body, 6, multiplier);
    PutTurn(body, 10, turn);
    const std::vector<std::uint8_t> place = Points({origin});
    const std::size_t originAt = 10 + TurnBytes();
    std::copy(place.begin(), place.end(), body.begin() + static_cast<std::ptrdiff_t>(originAt));
    const std::size_t countAt = originAt + place.size();
    body.resize(countAt + 2);
    body[countAt] = static_cast<std::uint8_t>(std::min<std::size_t>(text.size(), 255));
    body.insert(body.end(), text.begin(), text.begin() + body[countAt]);
    const double width = static_cast<double>(height) * body[countAt];
    const Vec o = {static_cast<double>(origin.x), static_cast<double>(origin.y),
                   dimension_ == 3 ? static_cast<double>(origin.z) : 0.0};
    const Vec across = Turn(turn, dimension_, {width, 0, 0});
    const Vec up = Turn(turn, dimension_, {0, static_cast<double>(height), 0});
    ZtTestDgnPoint low, high;
    bool first = true;
    for (int corner = 0; corner < 4; ++corner)
        Cover({o[0] + (corner & 1) * across[0] + (corner >> 1) * up[0],
               o[1] + (corner & 1) * across[1] + (corner >> 1) * up[1],
               o[2] + (corner & 1) * across[2] + (corner >> 1) * up[2]},
              &low, &high, &first);
    return Write(17, s, body, low, high, false);
}

std::uint32_t ZtTestDgnWriter::EllipseElement(int type, const ZtTestDgnSymbology& s,
                                              ZtTestDgnPoint centre, double primary,
                                              double secondary, const ZtTestDgnTurn& turn,
                                              double start, double sweep) {
    const std::size_t axesAt = type == 16 ? 8 : 0;
    const std::size_t centreAt = axesAt + 16 + TurnBytes();
    std::vector<std::uint8_t> body(centreAt + 8 * static_cast<std::size_t>(dimension_), 0);
    if (type == 16) {
        ZtTestPutInt32(body, 0, AngleUnits(start));
        const std::int32_t size = AngleUnits(std::abs(sweep)) & 0x7FFFFFFF;
        ZtTestPutInt32(body, 4, sweep < 0 ? static_cast<std::int32_t>(size | 0x80000000u) : size);
    }
    ZtTestPutVaxDouble(body, axesAt, primary);
    ZtTestPutVaxDouble(body, axesAt + 8, secondary);
    PutTurn(body, axesAt + 16, turn);
    const Vec c = {static_cast<double>(centre.x), static_cast<double>(centre.y),
                   dimension_ == 3 ? static_cast<double>(centre.z) : 0.0};
    for (int i = 0; i < dimension_; ++i)
        ZtTestPutVaxDouble(body, centreAt + 8 * static_cast<std::size_t>(i), c[i]);
    ZtTestDgnPoint low, high;
    bool first = true;
    CoverArc(c, Turn(turn, dimension_, {primary, 0, 0}), Turn(turn, dimension_, {0, secondary, 0}),
             start, sweep, &low, &high, &first);
    return Write(type, s, body, low, high, false);
}

std::uint32_t ZtTestDgnWriter::Ellipse(const ZtTestDgnSymbology& s, ZtTestDgnPoint centre,
                                       double primary, double secondary,
                                       const ZtTestDgnTurn& turn) {
    return EllipseElement(15, s, centre, primary, secondary, turn, 0, 360);
}

std::uint32_t ZtTestDgnWriter::Arc(const ZtTestDgnSymbology& s, ZtTestDgnPoint centre,
                                   double primary, double secondary, const ZtTestDgnTurn& turn,
                                   double start, double sweep) {
    return EllipseElement(16, s, centre, primary, secondary, turn, start, sweep);
}

std::uint32_t ZtTestDgnWriter::Cone(const ZtTestDgnSymbology& s, const ZtTestDgnTurn& turn,
                                    ZtTestDgnPoint base, double baseRadius, ZtTestDgnPoint top,
                                    double topRadius) {
    std::vector<std::uint8_t> body(82, 0);
    PutTurn(body, 2, turn);
    ZtTestDgnPoint low, high;
    bool first = true;
    const ZtTestDgnPoint ends[2] = {base, top};
    const double radii[2] = {baseRadius, topRadius};
    for (std::size_t end = 0; end < 2; ++end) {
        const Vec c = {static_cast<double>(ends[end].x), static_cast<double>(ends[end].y),
                       static_cast<double>(ends[end].z)};
        for (std::size_t i = 0; i < 3; ++i)
            ZtTestPutVaxDouble(body, 18 + 32 * end + 8 * i, c[i]);
        ZtTestPutVaxDouble(body, 42 + 32 * end, radii[end]);
        CoverArc(c, Turn(turn, 3, {radii[end], 0, 0}), Turn(turn, 3, {0, radii[end], 0}), 0, 360,
                 &low, &high, &first);
    }
    return Write(23, s, body, low, high, false);
}

std::uint32_t ZtTestDgnWriter::Element(int type, const ZtTestDgnSymbology& s,
                                       const std::vector<std::uint8_t>& body, ZtTestDgnPoint low,
                                       ZtTestDgnPoint high) {
    return Write(type, s, body, low, high, false);
}

std::uint32_t ZtTestDgnWriter::Raw(const std::vector<std::uint8_t>& bytes) {
    offsets_.push_back(bytes_.size());
    bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
    return static_cast<std::uint32_t>(offsets_.size() - 1);
}

std::uint32_t ZtTestDgnWriter::BeginCell(const ZtTestDgnSymbology& s) {
    // Total length, name, class map, level mask, range, matrix and origin.
    std::vector<std::uint8_t> body(dimension_ == 3 ? 88 : 56, 0);
    const std::size_t matrixAt = dimension_ == 3 ? 40 : 32;
    const int size = dimension_ == 3 ? 3 : 2;
    for (int i = 0; i < size; ++i)
        ZtTestPutInt32(body, matrixAt + 4 * static_cast<std::size_t>(i * size + i), 214748);
    return Write(2, s, body, {}, {}, true);
}

std::uint32_t ZtTestDgnWriter::BeginComplex(int type, const ZtTestDgnSymbology& s) {
    // Total length, component count and the four words that bring a header to 24 words.
    return Write(type, s, std::vector<std::uint8_t>(12, 0), {}, {}, true);
}

void ZtTestDgnWriter::EndGroup(int shortBy) {
    const Group group = groups_.back();
    groups_.pop_back();
    const std::size_t words = (bytes_.size() - group.offset - 38) / 2;
    ZtTestPutWord(bytes_, group.offset + 36,
                  static_cast<std::uint16_t>(words - static_cast<std::size_t>(shortBy)));
    const int type = bytes_[group.offset + 1] & 0x7F;
    if (type != 2)
        ZtTestPutWord(bytes_, group.offset + 38, static_cast<std::uint16_t>(group.components));
    if (group.hasRange) {
        PutRanges(bytes_, group.offset, group.low, group.high);
        if (!groups_.empty())
            ExtendGroup(group.low, group.high);
    }
}

void ZtTestDgnWriter::ExtendGroup(ZtTestDgnPoint low, ZtTestDgnPoint high) {
    Group& group = groups_.back();
    group.low = group.hasRange ? Min(group.low, low) : low;
    group.high = group.hasRange ? Max(group.high, high) : high;
    group.hasRange = true;
}

void ZtTestDgnWriter::EndOfDesign() {
    bytes_.push_back(0xFF);
    bytes_.push_back(0xFF);
}

bool ZtTestDgnWriter::Save(const std::string& path) const {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (!file)
        return false;
    const bool written = std::fwrite(bytes_.data(), 1, bytes_.size(), file) == bytes_.size();
    return std::fclose(file) == 0 && written;
}
