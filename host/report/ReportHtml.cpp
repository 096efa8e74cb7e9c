#include "report/ReportHtml.h"

#include <algorithm>
#include <charconv>
#include <cmath>

void AppendEscaped(std::string& out, const std::string& text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        case '\r':
            out += '\n';
            if (i + 1 < text.size() && text[i + 1] == '\n')
                ++i;
            break;
        case '\n':
            out += '\n';
            if (i + 1 < text.size() && text[i + 1] == '\r')
                ++i;
            break;
        default:
            out += c;
        }
    }
}

std::string Escaped(const std::string& text) {
    std::string out;
    AppendEscaped(out, text);
    return out;
}

void AppendIsolated(std::string& out, const std::string& text) {
    out += "<bdi>";
    AppendEscaped(out, text);
    out += "</bdi>";
}

std::string Isolated(const std::string& text) {
    std::string out;
    AppendIsolated(out, text);
    return out;
}

std::string Exact(double value) {
    char text[32];
    return std::string(text, std::to_chars(text, text + sizeof text, value).ptr);
}

std::string Px(double value) {
    char text[32];
    const double rounded = std::round(value * 100) / 100;
    return std::string(text, std::to_chars(text, text + sizeof text, rounded == 0 ? 0.0 : rounded,
                                           std::chars_format::fixed, 2)
                                 .ptr);
}

void AppendCoord(std::string& out, double value) {
    constexpr double kFar = 1e7;
    const double v = std::isnan(value) ? 0 : std::clamp(value, -kFar, kFar);
    char text[32];
    char* end = std::to_chars(text, text + sizeof text, v, std::chars_format::fixed, 2).ptr;
    while (end[-1] == '0')
        --end;
    if (end[-1] == '.')
        --end;
    if (end - text == 2 && text[0] == '-' && text[1] == '0')
        out += '0';
    else
        out.append(text, end);
}

Rgba KeyColour(int key) {
    // The golden angle keeps neighbouring keys far apart in hue; odd keys are darker.
    const double hue = std::fmod(key * 137.508, 360.0) / 60.0;
    const double s = 0.65, l = key % 2 ? 0.42 : 0.55;
    const double c = (1 - std::abs(2 * l - 1)) * s;
    const double x = c * (1 - std::abs(std::fmod(hue, 2.0) - 1));
    double r = 0, g = 0, b = 0;
    switch (static_cast<int>(hue)) {
    case 0:
        r = c, g = x;
        break;
    case 1:
        r = x, g = c;
        break;
    case 2:
        g = c, b = x;
        break;
    case 3:
        g = x, b = c;
        break;
    case 4:
        r = x, b = c;
        break;
    default:
        r = c, b = x;
    }
    const double m = l - c / 2;
    auto byte = [m](double v) { return static_cast<std::uint8_t>(std::lround((v + m) * 255)); };
    return {byte(r), byte(g), byte(b), 255};
}

std::string Hex(const Rgba& colour) {
    static const char kDigits[] = "0123456789abcdef";
    std::string out = "#";
    for (int i = 0; i < 3; ++i) {
        out += kDigits[colour[i] >> 4];
        out += kDigits[colour[i] & 15];
    }
    return out;
}

std::string Base64(std::string_view bytes) {
    static const char kDigits[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string out;
    out.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        const std::size_t n = std::min<std::size_t>(3, bytes.size() - i);
        std::uint32_t v = 0;
        for (std::size_t k = 0; k < 3; ++k)
            v = (v << 8) | (k < n ? static_cast<unsigned char>(bytes[i + k]) : 0u);
        for (std::size_t k = 0; k < 4; ++k)
            out += k <= n ? kDigits[(v >> (18 - 6 * k)) & 63] : '=';
    }
    return out;
}
