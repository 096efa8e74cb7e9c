#include "check/FindingCollector.h"

#include "check/CheckCatalog.h"

namespace {

// The head of a text the facts keep: enough to tell what a file is, and no more, however
// long the line it comes from.
std::wstring Head(std::wstring_view text) {
    constexpr std::size_t kKept = 256;
    return std::wstring(text.substr(0, kKept));
}

} // namespace

FindingCollector::FileFacts& FindingCollector::Facts(const std::wstring& file) {
    const auto [found, added] = facts_.try_emplace(file);
    if (added)
        files_.push_back(file);
    return found->second;
}

const FindingCollector::FileFacts* FindingCollector::FactsOf(const std::wstring& file) const {
    const auto found = facts_.find(file);
    return found == facts_.end() ? nullptr : &found->second;
}

void FindingCollector::Report(const ZtOdPdsDiagnostic& d) {
    const std::wstring file = d.file ? d.file : L"";
    FileFacts& facts = Facts(file);
    switch (d.check) {
    case ZtOdPdsCheck::kFactBlocks:
        facts.readAsTags = true;
        facts.knownBlocks += d.figures[0];
        return;
    case ZtOdPdsCheck::kFactSection:
        ++facts.sections;
        return;
    case ZtOdPdsCheck::kFactOutsideSection:
        if (facts.firstOutside.empty())
            facts.firstOutside = Head(d.text);
        if (d.text.find(L'{') != std::wstring_view::npos)
            facts.braceOutside = Head(d.text);
        return;
    case ZtOdPdsCheck::kFactModel:
        models_.push_back({file, d.at,
                           d.text.size() > kLongestPath ? std::wstring() : std::wstring(d.text),
                           d.text.size()});
        return;
    case ZtOdPdsCheck::kSetOutsideSection:
        ++facts.setsOutside;
        break;
    case ZtOdPdsCheck::kUnknownKey:
        if (facts.firstKey.empty() && d.figures[0] == kZtOdPdsKeyTagFile)
            facts.firstKey = Head(d.text);
        break;
    case ZtOdPdsCheck::kStrayText:
        if (facts.firstStray.empty())
            facts.firstStray = Head(d.text);
        if (d.text.starts_with(L"[") || d.text.starts_with(L"<Display Set>"))
            facts.displaySetLines = true;
        break;
    default:
        break;
    }
    if (std::optional<Finding> finding = DescribeDiagnostic(d))
        findings_.push_back(std::move(*finding));
}

void FindingCollector::Add(Finding finding) {
    Facts(finding.at.file);
    findings_.push_back(std::move(finding));
}
