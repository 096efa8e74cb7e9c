#include "tags/ZtOdPdsTagBody.h"

#include "readers/ZtOdPdsBlock.h"

#include <cwchar>
#include <utility>

bool ZtOdPdsTakeTagBody(ZtOdPdsBlock& text, ZtUWideStringBuffer* body) {
    const ZtUWideStringBuffer& value = text.GetValue();
    const std::size_t length = value.GetLength();
    for (std::size_t i = 0; i < length; ++i)
        if (value.GetString()[i] == L'\n' || value.GetString()[i] == L'\r') {
            text.SwapValue(body);
            body->ExtractSubString(i + 1, length - i - 1, body);
            return true;
        }
    return false;
}

// The LFs of `text`, found by the library's vectorised search: bodies hold few.
std::size_t ZtOdPdsCountLineFeeds(const std::wstring& text) {
    std::size_t count = 0;
    const wchar_t* end = text.data() + text.size();
    for (const wchar_t* at = text.data();
         (at = std::wmemchr(at, L'\n', static_cast<std::size_t>(end - at))); ++at)
        ++count;
    return count;
}

// A run between two LFs is copied at a time.
void ZtOdPdsRewriteLineEnds(const std::wstring& text, std::size_t lineFeeds, std::size_t rewrites,
                            std::wstring* rewritten) {
    rewritten->assign(text.size() + lineFeeds * rewrites, L'\r');
    wchar_t* out = rewritten->data();
    const wchar_t* from = text.data();
    const wchar_t* end = from + text.size();
    for (const wchar_t* lf; (lf = std::wmemchr(from, L'\n', static_cast<std::size_t>(end - from)));
         from = lf + 1) {
        const auto run = static_cast<std::size_t>(lf - from);
        out = std::wmemcpy(out, from, run) + run;
        out += rewrites; // over the CRs the string was made of
        *out++ = L'\n';
    }
    std::wmemcpy(out, from, static_cast<std::size_t>(end - from));
}

void ZtOdPdsReleaseIfLong(ZtUWideStringBuffer* text) {
    if (text->Str().capacity() > kZtOdPdsMostKeptCapacity) {
        ZtUWideStringBuffer released;
        std::swap(*text, released);
    }
}

void ZtOdPdsReleaseIfLong(std::wstring* text) {
    if (text->capacity() > kZtOdPdsMostKeptCapacity)
        std::wstring().swap(*text);
}
