#include "ztlddgn/ZtDgnGeometry.h"

#include "ztlddgn/ZtDgnBytes.h"

#include <cmath>
#include <numbers>

namespace {

// Angles are counted in 1/360000 of a degree.
constexpr double kRadiansPerUnit = std::numbers::pi / 180.0 / 360000.0;
// Quaternion components are fractions of 2^31.
constexpr double kQuaternionOne = 2147483648.0;
// A character cell is 6 UORs at a size multiplier of 1000.
constexpr double kCellUnitsPerMultiplier = 6.0 / 1000.0;
// Straight pieces drawn for each span of a curve.
constexpr int kCurvePieces = 8;

constexpr int kLine = 3, kLineString = 4, kShape = 6, kCurve = 11, kEllipse = 15, kArc = 16,
              kText = 17, kPoles = 21, kPointString = 22, kCone = 23;

// The fields of one record. Every read is checked against the record's end by Has first.
class Record {
public:
    Record(const unsigned char* bytes, std::size_t size, int dimension)
        : p_(bytes), size_(size), dimension_(dimension == 2 ? 2 : 3) {}

    bool Has(std::size_t at, std::size_t count) const { return at <= size_ && count <= size_ - at; }
    int Dimension() const { return dimension_; }
    std::size_t PointBytes() const { return 4 * static_cast<std::size_t>(dimension_); }

    std::uint8_t Byte(std::size_t at) const { return p_[at]; }
    std::uint16_t Word(std::size_t at) const { return ZtDgnWord(p_ + at); }
    std::int32_t Int(std::size_t at) const { return ZtDgnInt32(p_ + at); }
    std::uint32_t UInt(std::size_t at) const { return ZtDgnUInt32(p_ + at); }
    double Double(std::size_t at) const { return ZtDgnVaxDouble(p_ + at); }
    // A point of 32-bit integers, z = 0 in a 2D file.
    ZtLPos3f Point(std::size_t at) const {
        return {static_cast<double>(Int(at)), static_cast<double>(Int(at + 4)),
                dimension_ == 3 ? static_cast<double>(Int(at + 8)) : 0.0};
    }
    // A point of doubles.
    ZtLPos3f DoublePoint(std::size_t at) const {
        return {Double(at), Double(at + 8), dimension_ == 3 ? Double(at + 16) : 0.0};
    }
    const unsigned char* At(std::size_t at) const { return p_ + at; }

private:
    const unsigned char* p_;
    std::size_t size_;
    int dimension_;
};

// The element's own x and y axes in the design.
struct Axes {
    ZtLVec3f x{1, 0, 0};
    ZtLVec3f y{0, 1, 0};
};

// A 2D element's rotation: an angle counter-clockwise about z.
Axes Turned(std::int32_t angle) {
    const double radians = angle * kRadiansPerUnit;
    const double c = std::cos(radians), s = std::sin(radians);
    return {{c, s, 0}, {-s, c, 0}};
}

// A 3D element's rotation: the quaternion (w, x, y, z) turns the element's axes into the
// design's. An all-zero quaternion, which some writers leave, means no rotation.
Axes Rotated(const Record& r, std::size_t at) {
    double w = r.Int(at) / kQuaternionOne, x = r.Int(at + 4) / kQuaternionOne,
           y = r.Int(at + 8) / kQuaternionOne, z = r.Int(at + 12) / kQuaternionOne;
    const double norm = std::sqrt(w * w + x * x + y * y + z * z);
    if (norm < 1e-9)
        return {};
    w /= norm, x /= norm, y /= norm, z /= norm;
    return {{1 - 2 * (y * y + z * z), 2 * (x * y + w * z), 2 * (x * z - w * y)},
            {2 * (x * y - w * z), 1 - 2 * (x * x + z * z), 2 * (y * z + w * x)}};
}

Axes Orientation(const Record& r, std::size_t at) {
    return r.Dimension() == 3 ? Rotated(r, at) : Turned(r.Int(at));
}

std::size_t OrientationBytes(const Record& r) {
    return r.Dimension() == 3 ? 16 : 4;
}

// The sweep keeps its direction in the top bit and its size in the others; 0 is a whole
// turn.
double Sweep(std::uint32_t raw) {
    const double size = (raw & 0x7FFFFFFFu) * kRadiansPerUnit;
    if (size == 0)
        return 2 * std::numbers::pi;
    return (raw & 0x80000000u) ? -size : size;
}

bool Points(const Record& r, std::size_t at, std::size_t count, std::vector<ZtLPos3f>* out) {
    if (!r.Has(at, count * r.PointBytes()))
        return false;
    out->reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        out->push_back(r.Point(at + i * r.PointBytes()));
    return true;
}

// A smooth run through the points from the third to the third from last, the points
// beside them setting the slopes (a Catmull-Rom spline). Too few points for that are drawn
// straight.
std::vector<ZtLPos3f> CurveThrough(const std::vector<ZtLPos3f>& p) {
    if (p.size() < 6)
        return p;
    std::vector<ZtLPos3f> out;
    out.reserve((p.size() - 5) * kCurvePieces + 1);
    for (std::size_t i = 2; i + 3 < p.size(); ++i) {
        const ZtLVec3f c1 = p[i + 1] - p[i - 1];
        const ZtLVec3f c2 = p[i - 1] * 2.0 - p[i] * 5.0 + p[i + 1] * 4.0 - p[i + 2];
        const ZtLVec3f c3 = (p[i] - p[i + 1]) * 3.0 + p[i + 2] - p[i - 1];
        for (int k = 0; k < kCurvePieces; ++k) {
            const double t = static_cast<double>(k) / kCurvePieces;
            out.push_back(p[i] + (c1 * t + c2 * (t * t) + c3 * (t * t * t)) * 0.5);
        }
    }
    out.push_back(p[p.size() - 3]);
    return out;
}

bool DecodePolyline(const Record& r, int type, ZtDgnGeometry* out) {
    ZtDgnPolyline line;
    if (type == kLine) {
        if (!Points(r, 36, 2, &line.points))
            return false;
    } else {
        if (!r.Has(36, 2) || !Points(r, 38, r.Word(36), &line.points))
            return false;
    }
    if (type == kCurve)
        line.points = CurveThrough(line.points);
    line.closed = type == kShape;
    if (!line.points.empty())
        out->polylines.push_back(std::move(line));
    return true;
}

// Ellipses and arcs: an arc begins with its start and sweep; then both give the two
// semi-axes, the rotation and the centre.
bool DecodeArc(const Record& r, int type, ZtDgnGeometry* out) {
    ZtDgnArc arc;
    arc.sweep = 2 * std::numbers::pi;
    std::size_t at = 36;
    if (type == kArc) {
        if (!r.Has(at, 8))
            return false;
        arc.start = r.Int(at) * kRadiansPerUnit;
        arc.sweep = Sweep(r.UInt(at + 4));
        at += 8;
    }
    const std::size_t centreAt = at + 16 + OrientationBytes(r);
    if (!r.Has(at, centreAt - at + 8 * static_cast<std::size_t>(r.Dimension())))
        return false;
    const Axes axes = Orientation(r, at + 16);
    arc.a = axes.x * r.Double(at);
    arc.b = axes.y * r.Double(at + 8);
    arc.centre = r.DoublePoint(centreAt);
    out->arcs.push_back(arc);
    return true;
}

// A cone's body: its kind, its rotation, then each end's centre and radius.
bool DecodeCone(const Record& r, ZtDgnGeometry* out) {
    if (r.Dimension() != 3)
        return true;
    if (!r.Has(36, 82))
        return false;
    const Axes axes = Rotated(r, 38);
    const auto end = [&](std::size_t at) {
        const double radius = r.Double(at + 24);
        return ZtDgnArc{r.DoublePoint(at), axes.x * radius, axes.y * radius, 0,
                        2 * std::numbers::pi};
    };
    out->cones.push_back({end(54), end(86)});
    return true;
}

void AppendUtf8(std::string& out, unsigned code) {
    if (code < 0x80) {
        out += static_cast<char>(code);
    } else if (code < 0x800) {
        out += static_cast<char>(0xC0 | (code >> 6));
        out += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        out += static_cast<char>(0xE0 | (code >> 12));
        out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (code & 0x3F));
    }
}

// Characters are bytes of Latin-1, or 16-bit units after the mark FF FD. A control
// character or a lone surrogate shows as U+FFFD.
std::string TextCharacters(const unsigned char* p, std::size_t count) {
    std::string text;
    const bool wide = count >= 2 && p[0] == 0xFF && p[1] == 0xFD;
    for (std::size_t i = wide ? 2 : 0; i < count; i += wide ? 2 : 1) {
        unsigned code = p[i];
        if (wide)
            code = i + 1 < count ? ZtDgnWord(p + i) : 0xFFFDu;
        if (code < 0x20 || code == 0x7F || (code >= 0xD800 && code < 0xE000))
            code = 0xFFFD;
        AppendUtf8(text, code);
    }
    return text;
}

// Text: font and justification, the length and height multipliers, the rotation, the
// origin (its lower left corner), and the counted characters.
bool DecodeText(const Record& r, ZtDgnGeometry* out) {
    const std::size_t originAt = 46 + OrientationBytes(r);
    const std::size_t countAt = originAt + r.PointBytes();
    if (!r.Has(36, countAt + 2 - 36))
        return false;
    const std::size_t count = r.Byte(countAt);
    if (!r.Has(countAt + 2, count))
        return false;
    const Axes axes = Orientation(r, 46);
    ZtDgnText text;
    text.origin = r.Point(originAt);
    text.advance = axes.x * (r.Int(38) * kCellUnitsPerMultiplier);
    text.height = axes.y * (r.Int(42) * kCellUnitsPerMultiplier);
    text.text = TextCharacters(r.At(countAt + 2), count);
    out->texts.push_back(std::move(text));
    return true;
}

void TransformArc(const ZtLAffine3f& map, ZtDgnArc& arc) {
    arc.centre = map.Transform(arc.centre);
    arc.a = map.GetMatrix() * arc.a;
    arc.b = map.GetMatrix() * arc.b;
}

} // namespace

void ZtDgnGeometry::Transform(const ZtLAffine3f& map) {
    for (ZtDgnPolyline& line : polylines)
        for (ZtLPos3f& p : line.points)
            p = map.Transform(p);
    for (ZtDgnArc& arc : arcs)
        TransformArc(map, arc);
    for (ZtDgnCone& cone : cones) {
        TransformArc(map, cone.base);
        TransformArc(map, cone.top);
    }
    for (ZtDgnText& text : texts) {
        text.origin = map.Transform(text.origin);
        text.advance = map.GetMatrix() * text.advance;
        text.height = map.GetMatrix() * text.height;
    }
}

bool ZtDgnDecodeGeometry(const unsigned char* bytes, std::size_t size, int dimension,
                         ZtDgnGeometry* out) {
    out->Clear();
    if (size < 4 || size < 4 + 2 * std::size_t{ZtDgnWord(bytes + 2)})
        return false;
    // Fields are read within the record alone, whatever follows it.
    const Record r(bytes, 4 + 2 * std::size_t{ZtDgnWord(bytes + 2)}, dimension);
    const int type = bytes[1] & 0x7F;
    switch (type) {
    case kLine:
    case kLineString:
    case kShape:
    case kCurve:
    case kPoles:
    case kPointString:
        return DecodePolyline(r, type, out);
    case kEllipse:
    case kArc:
        return DecodeArc(r, type, out);
    case kCone:
        return DecodeCone(r, out);
    case kText:
        return DecodeText(r, out);
    default:
        return true;
    }
}
