#include "ztutil/ZtUFormat.h"

#include <charconv>
#include <cwchar>
#include <vector>

namespace {

// Rewrites the conversions whose argument width differs between the host's home platform
// and the C library here: a bare %s or %c becomes %ls or %lc. Flags, width, precision and
// an explicit length modifier are copied as they stand.
std::wstring TranslateFormat(const wchar_t* format) {
    std::wstring out;
    for (const wchar_t* p = format; *p; ++p) {
        out += *p;
        if (*p != L'%')
            continue;
        ++p;
        if (*p == L'%') {
            out += *p;
            continue;
        }
        while (*p && std::wcschr(L"-+ #0123456789.*", *p))
            out += *p++;
        bool hasLength = false;
        while (*p && std::wcschr(L"hlLqjzt", *p)) {
            out += *p++;
            hasLength = true;
        }
        if (!*p)
            break;
        if (!hasLength && (*p == L's' || *p == L'c'))
            out += L'l';
        out += *p;
    }
    return out;
}

// The longest result; the C library's road gives up at this size too.
constexpr std::size_t kLongest = std::size_t{1} << 24;

// The conversions that PlainFormat writes itself: %d, %i and %u with no length, l or ll,
// %s, %c and %%, none with flags, width or precision. The rest go to the C library, whose
// wide printf costs a parse of the format and a locale look-up a call: the export writes
// a few of these plain ones for every tag.
bool IsPlain(const wchar_t* format) {
    for (const wchar_t* p = format; *p; ++p) {
        if (*p != L'%')
            continue;
        ++p;
        int longs = 0;
        while (*p == L'l' && longs < 2) {
            ++p;
            ++longs;
        }
        const bool integer = *p == L'd' || *p == L'i' || *p == L'u';
        if (!integer && (longs > 0 || (*p != L's' && *p != L'c' && *p != L'%')))
            return false;
    }
    return true;
}

template <class T> void AppendInteger(std::wstring& out, T value) {
    char digits[24];
    const char* end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    // Widened a digit at a time: a range of narrow characters would first be copied
    // into a wide string of its own.
    for (const char* digit = digits; digit != end; ++digit)
        out.push_back(static_cast<wchar_t>(*digit));
}

// Writes a format that IsPlain, as vswprintf would.
void PlainFormat(std::wstring& out, const wchar_t* format, std::va_list args) {
    for (const wchar_t* p = format; *p; ++p) {
        if (*p != L'%') {
            const wchar_t* run = p;
            while (p[1] && p[1] != L'%')
                ++p;
            out.append(run, p + 1);
            continue;
        }
        ++p;
        int longs = 0;
        while (*p == L'l') {
            ++p;
            ++longs;
        }
        switch (*p) {
        case L'%':
            out += L'%';
            break;
        case L'c':
            // A character passes through `...` as an int where wint_t is narrower (Windows).
            out += static_cast<wchar_t>(va_arg(args, int));
            break;
        case L's': {
            const auto* text = va_arg(args, const wchar_t*);
            out += text ? text : L"(null)";
            break;
        }
        case L'u':
            if (longs == 2)
                AppendInteger(out, va_arg(args, unsigned long long));
            else if (longs == 1)
                AppendInteger(out, va_arg(args, unsigned long));
            else
                AppendInteger(out, va_arg(args, unsigned));
            break;
        default: // d, i
            if (longs == 2)
                AppendInteger(out, va_arg(args, long long));
            else if (longs == 1)
                AppendInteger(out, va_arg(args, long));
            else
                AppendInteger(out, va_arg(args, int));
            break;
        }
    }
    if (out.size() >= kLongest)
        out.clear();
}

} // namespace

void ZtUFormatV(std::wstring& out, const wchar_t* format, std::va_list args) {
    out.clear();
    if (!format)
        return;
    if (IsPlain(format)) {
        std::va_list copy;
        va_copy(copy, args);
        PlainFormat(out, format, copy);
        va_end(copy);
        return;
    }
    const std::wstring translated = TranslateFormat(format);
    std::vector<wchar_t> buffer(256);
    for (;;) {
        std::va_list copy;
        va_copy(copy, args);
        const int written = std::vswprintf(buffer.data(), buffer.size(), translated.c_str(), copy);
        va_end(copy);
        if (written >= 0 && static_cast<std::size_t>(written) < buffer.size()) {
            out.assign(buffer.data(), static_cast<std::size_t>(written));
            return;
        }
        // vswprintf gives -1 both for a short buffer and for a bad conversion; stop
        // growing at a size no sane format reaches.
        if (buffer.size() >= kLongest)
            return;
        buffer.resize(buffer.size() * 4);
    }
}
