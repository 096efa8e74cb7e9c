#include "ztutil/ZtUSysString.h"
#include "ztutil/ZtUUtf16.h"

#include <cwchar>

// The C library's is vectorised; the line pump takes the length of every line.
std::size_t ZtUSysString::WideStrlen(const wchar_t* text) {
    return text ? std::wcslen(text) : 0;
}

int ZtUSysString::WideStrncmp(const wchar_t* a, const wchar_t* b, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        const auto ca = static_cast<unsigned>(a[i]);
        const auto cb = static_cast<unsigned>(b[i]);
        if (ca != cb)
            return ca < cb ? -1 : 1;
        if (ca == 0)
            return 0;
    }
    return 0;
}

void ZtUSysString::AppendUtf8(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

namespace {

// Wide text to UTF-8; a lone surrogate becomes the bytes `loneSurrogate` gives for it.
template <class LoneSurrogate>
std::string EncodeWide(std::wstring_view text, LoneSurrogate loneSurrogate) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char32_t unit = static_cast<char32_t>(text[i]) & 0xFFFF;
        if (ZtUUtf16::IsHighSurrogate(unit) && i + 1 < text.size()) {
            const char32_t low = static_cast<char32_t>(text[i + 1]) & 0xFFFF;
            if (ZtUUtf16::IsLowSurrogate(low)) {
                ZtUSysString::AppendUtf8(out, ZtUUtf16::Combine(unit, low));
                ++i;
                continue;
            }
        }
        if (ZtUUtf16::IsSurrogate(unit))
            loneSurrogate(out, unit);
        else
            ZtUSysString::AppendUtf8(out, unit);
    }
    return out;
}

// UTF-8 to wide text; a byte that begins no valid sequence becomes `invalid(byte)`.
template <class Invalid> std::wstring DecodeBytes(std::string_view text, Invalid invalid) {
    std::wstring out;
    out.reserve(text.size());
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    for (std::size_t i = 0; i < text.size();) {
        char32_t cp;
        std::size_t length = ZtUSysString::DecodeUtf8(bytes + i, text.size() - i, &cp);
        if (length == 0) {
            cp = invalid(bytes[i]);
            length = 1;
        }
        if (cp >= ZtUUtf16::kFirstSupplementary) {
            out += static_cast<wchar_t>(ZtUUtf16::HighOf(cp));
            out += static_cast<wchar_t>(ZtUUtf16::LowOf(cp));
        } else {
            out += static_cast<wchar_t>(cp);
        }
        i += length;
    }
    return out;
}

constexpr char32_t kEscapedByteBase = 0xDC00;

} // namespace

std::string ZtUSysString::WideToUtf8(std::wstring_view text) {
    return EncodeWide(text, [](std::string& out, char32_t) { AppendUtf8(out, 0xFFFD); });
}

std::string ZtUSysString::WideToPath(std::wstring_view text) {
    return EncodeWide(text, [](std::string& out, char32_t unit) {
        if (unit >= kEscapedByteBase + 0x80 && unit <= kEscapedByteBase + 0xFF)
            out += static_cast<char>(unit - kEscapedByteBase);
        else
            AppendUtf8(out, 0xFFFD);
    });
}

std::size_t ZtUSysString::DecodeUtf8(const unsigned char* s, std::size_t available,
                                     char32_t* codePoint) {
    const unsigned char lead = s[0];
    std::size_t length;
    char32_t cp;
    char32_t minimum;
    if (lead < 0x80) {
        *codePoint = lead;
        return 1;
    } else if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2, cp = lead & 0x1F, minimum = 0x80;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3, cp = lead & 0x0F, minimum = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4, cp = lead & 0x07, minimum = 0x10000;
    } else {
        return 0;
    }
    if (available < length)
        return 0;
    for (std::size_t i = 1; i < length; ++i) {
        if ((s[i] & 0xC0) != 0x80)
            return 0;
        cp = (cp << 6) | (s[i] & 0x3F);
    }
    if (cp < minimum || cp > 0x10FFFF || ZtUUtf16::IsSurrogate(cp))
        return 0;
    *codePoint = cp;
    return length;
}

std::wstring ZtUSysString::Utf8ToWide(std::string_view text) {
    return DecodeBytes(text, [](unsigned char byte) { return char32_t{byte}; });
}

std::wstring ZtUSysString::PathToWide(std::string_view bytes) {
    return DecodeBytes(bytes, [](unsigned char byte) { return kEscapedByteBase + byte; });
}
