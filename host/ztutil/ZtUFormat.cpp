#include "ztutil/ZtUFormat.h"

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

} // namespace

void ZtUFormatV(std::wstring& out, const wchar_t* format, std::va_list args) {
    out.clear();
    if (!format)
        return;
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
        if (buffer.size() >= (std::size_t{1} << 24))
            return;
        buffer.resize(buffer.size() * 4);
    }
}
