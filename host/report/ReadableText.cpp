#include "report/ReadableText.h"

#include "ztutil/ZtUSysString.h"

#include <algorithm>
#include <cstdio>

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
