#include "tools/ZtTestDgnWriter.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

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

std::uint32_t ZtTestDgnWriter::Text(const ZtTestDgnSymbology& s, ZtTestDgnPoint origin,
                                    const std::string& text, std::int32_t height) {
    const std::int32_t multiplier = height * 1000 / 6;
    std::vector<std::uint8_t> body(dimension_ == 3 ? 40 : 24, 0);
    body[1] = 2; // left bottom
    ZtTestPutInt32(body, 2, multiplier);
    ZtTestPutInt32(body, 6, multiplier);
    const std::vector<std::uint8_t> place = Points({origin});
    const std::size_t originAt = dimension_ == 3 ? 26 : 14;
    std::copy(place.begin(), place.end(), body.begin() + static_cast<std::ptrdiff_t>(originAt));
    const std::size_t countAt = originAt + place.size();
    body.resize(countAt + 2);
    body[countAt] = static_cast<std::uint8_t>(std::min<std::size_t>(text.size(), 255));
    body.insert(body.end(), text.begin(), text.begin() + body[countAt]);
    const std::int64_t width = static_cast<std::int64_t>(height) * body[countAt];
    const ZtTestDgnPoint low = {origin.x, origin.y, dimension_ == 3 ? origin.z : 0};
    const ZtTestDgnPoint high = {static_cast<std::int32_t>(origin.x + width), origin.y + height,
                                 low.z};
    return Write(17, s, body, low, high, false);
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
