#include "check/Wording.h"

#include "ztutil/ZtUSysString.h"
#include "ztutil/ZtUWideString.h"

#include <cstdio>

namespace {

constexpr std::size_t kLongestQuote = 60;

} // namespace

std::string Quoted(std::wstring_view text) {
    std::wstring shown;
    for (const wchar_t c : text.substr(0, kLongestQuote)) {
        if (c == L'\n')
            shown += L"\\n";
        else if (c == L'\r')
            shown += L"\\r";
        else if (c == L'\t')
            shown += L"\\t";
        else if (c < 0x20)
            shown += L'?';
        else
            shown += c;
    }
    if (text.size() > kLongestQuote)
        shown += L"...";
    return "'" + ZtUSysString::WideToUtf8(shown) + "'";
}

std::string Counted(std::int64_t count, std::string_view one, std::string_view many) {
    return std::to_string(count) + " " + std::string(count == 1 ? one : many);
}

std::wstring Lowered(std::wstring_view text) {
    std::wstring lowered(text);
    for (wchar_t& c : lowered)
        if (c >= L'A' && c <= L'Z')
            c = static_cast<wchar_t>(c - L'A' + L'a');
    return lowered;
}

Finding MakeFinding(const ZtOdPdsDiagnostic& diagnostic, std::string name, bool dropsData,
                    std::string message, std::string note) {
    Finding finding;
    finding.name = std::move(name);
    finding.dropsData = dropsData;
    finding.at = {diagnostic.file ? diagnostic.file : L"", diagnostic.at.line,
                  diagnostic.at.column};
    finding.message = std::move(message);
    finding.note = std::move(note);
    return finding;
}

void Relate(Finding& finding, const ZtOdPdsDiagnostic& diagnostic, std::string message) {
    if (!diagnostic.related.IsKnown())
        return;
    const wchar_t* file = diagnostic.relatedFile ? diagnostic.relatedFile : diagnostic.file;
    finding.related =
        Location{file ? file : L"", diagnostic.related.line, diagnostic.related.column};
    finding.relatedMessage = std::move(message);
}
