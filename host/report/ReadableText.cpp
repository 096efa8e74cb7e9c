#include "report/ReadableText.h"

#include "ztutil/ZtUSysString.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>

namespace {

bool IsReordering(char32_t c) {
    return c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2066 && c <= 0x2069) || c == 0x2028 || c == 0x2029;
}

void AppendEscape(std::string& out, const char* format, unsigned value) {
    char escape[8];
    std::snprintf(escape, sizeof escape, format, value);
    out += escape;
}

} // namespace

std::string ReadableNumber(double value, int digits) {
    char text[32];
    std::snprintf(text, sizeof text, "%.*g", digits, value);
    return text;
}

std::string UnitName(ZtOaUnit::Linear unit) {
    const char* name = ZtOaUnit::Abbreviation(unit);
    return *name ? name : "unit " + std::to_string(static_cast<int>(unit));
}

namespace {

// The rotation of a matrix that only turns about Z, in degrees; none for any other, nor
// for one with an entry that is no number (which every comparison below would pass).
bool TurnAboutZ(const ZtLMatrix3f& m, double* degrees) {
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column)
            if (!std::isfinite(m.Get(row, column)))
                return false;
    const double eps = 1e-9;
    if (std::abs(m.Get(2, 2) - 1) > eps || std::abs(m.Get(0, 2)) > eps ||
        std::abs(m.Get(1, 2)) > eps || std::abs(m.Get(2, 0)) > eps || std::abs(m.Get(2, 1)) > eps ||
        std::abs(m.Get(0, 0) - m.Get(1, 1)) > eps || std::abs(m.Get(0, 1) + m.Get(1, 0)) > eps ||
        std::abs(m.Get(0, 0) * m.Get(0, 0) + m.Get(1, 0) * m.Get(1, 0) - 1) > eps)
        return false;
    *degrees = std::atan2(m.Get(1, 0), m.Get(0, 0)) * 180 / std::numbers::pi;
    return true;
}

} // namespace

std::string PlacementWords(const ZtLAffine3f& transform, ZtOaUnit::Linear from,
                           ZtOaUnit::Linear to) {
    std::string words;
    if (ZtOaUnit::ScaleFactor(from, to) != 1.0)
        words += "scaled from " + UnitName(from) + " to " + UnitName(to) + ", ";
    const ZtLMatrix3f& m = transform.GetMatrix();
    double degrees = 0;
    if (!TurnAboutZ(m, &degrees)) {
        words += "transformed by rows";
        for (int row = 0; row < 3; ++row)
            words += " (" + ReadableNumber(m.Get(row, 0)) + " " + ReadableNumber(m.Get(row, 1)) +
                     " " + ReadableNumber(m.Get(row, 2)) + ")";
        words += ", ";
    } else if (std::abs(degrees) > 1e-9) {
        words += "turned " + ReadableNumber(degrees) + "\u00b0 about Z, ";
    } else {
        words += "not turned, ";
    }
    const ZtLVec3f& t = transform.GetTranslation();
    return words + "moved by (" + ReadableNumber(t.x) + ", " + ReadableNumber(t.y) + ", " +
           ReadableNumber(t.z) + ") " + UnitName(to);
}

std::string DmrsWords(std::uint64_t dmrs) {
    return std::to_string(dmrs >> 48) + " " + std::to_string((dmrs >> 32) & 0xFFFF) + " " +
           std::to_string((dmrs >> 16) & 0xFFFF) + " " + std::to_string(dmrs & 0xFFFF);
}

std::string ReadableText(std::string_view utf8, bool keepLineFeeds) {
    const auto plain = [keepLineFeeds](char c) {
        return (c >= 0x20 && c < 0x7F) || (keepLineFeeds && (c == '\n' || c == '\t'));
    };
    if (std::all_of(utf8.begin(), utf8.end(), plain))
        return std::string(utf8);
    std::string out;
    out.reserve(utf8.size() + 16);
    const auto* bytes = reinterpret_cast<const unsigned char*>(utf8.data());
    for (std::size_t at = 0; at < utf8.size();) {
        if (plain(utf8[at])) {
            out += utf8[at++];
            continue;
        }
        char32_t c = 0;
        const std::size_t length =
            bytes[at] < 0x80 ? 1 : ZtUSysString::DecodeUtf8(bytes + at, utf8.size() - at, &c);
        if (bytes[at] < 0x80 || length == 0) {
            AppendEscape(out, "\\x%02x", bytes[at]);
            ++at;
            continue;
        }
        if ((c >= 0x80 && c <= 0x9F) || IsReordering(c))
            AppendEscape(out, "\\u%04x", static_cast<unsigned>(c));
        else
            out.append(utf8.substr(at, length));
        at += length;
    }
    return out;
}
