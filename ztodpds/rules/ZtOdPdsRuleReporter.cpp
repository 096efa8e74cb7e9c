#include "rules/ZtOdPdsRuleReporter.h"

#include "rules/ZtOdPdsDisplaySet.h"
#include "ztutil/ZtUWideString.h"

#include <algorithm>
#include <cwctype>

namespace {

bool SameIgnoringCase(std::wstring_view a, std::wstring_view b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](wchar_t x, wchar_t y) {
               return std::towlower(static_cast<std::wint_t>(x)) ==
                      std::towlower(static_cast<std::wint_t>(y));
           });
}

} // namespace

void ZtOdPdsRuleReporter::Report(ZtOdPdsCheck check, ZtOdPdsSourcePosition at,
                                 std::wstring_view text, std::int64_t figure0, std::int64_t figure1,
                                 ZtOdPdsSourcePosition related) const {
    ZtOdPdsReport(*spot_.sink, check, spot_.file, at, text, {figure0, figure1}, related);
}

void ZtOdPdsRuleReporter::SetBegins(const ZtOdPdsDisplaySet* set) {
    EndIgnoring();
    current_ = set;
    sets_[set] = At();
    finds_.clear();
    defined_ = false;
}

bool ZtOdPdsRuleReporter::IsNearMiss(std::wstring_view line, std::wstring_view marker) {
    const std::wstring_view trimmed = ZtUTrimmedView(line);
    return line != marker && (SameIgnoringCase(trimmed, marker) || trimmed.starts_with(marker));
}

void ZtOdPdsRuleReporter::NearMiss(const ZtUWideStringBuffer& line, std::wstring_view marker,
                                   ZtOdPdsCheck check) {
    const std::wstring_view text = line.Str();
    if (IsNearMiss(text, marker))
        Report(check, At(static_cast<std::size_t>(ZtUTrimmedView(text).data() - text.data())),
               text);
}

void ZtOdPdsRuleReporter::OutsideSection(const ZtUWideStringBuffer& line) {
    const std::wstring_view trimmed = ZtUTrimmedView(line.Str());
    const bool brace = trimmed.find(L'{') != std::wstring_view::npos;
    if (trimmed.empty() || (outsideSeen_ && (braceSeen_ || !brace)))
        return;
    outsideSeen_ = true;
    braceSeen_ = braceSeen_ || brace;
    Report(ZtOdPdsCheck::kFactOutsideSection, At(), line.Str());
}

ZtOdPdsSourcePosition ZtOdPdsRuleReporter::SetAt(const ZtOdPdsDisplaySet* set) const {
    const auto found = sets_.find(set);
    return found == sets_.end() ? ZtOdPdsSourcePosition{} : found->second;
}

ZtOdPdsSourcePosition ZtOdPdsRuleReporter::FindAt(const void* scope) const {
    const auto found = finds_.find(scope);
    return found == finds_.end() ? ZtOdPdsSourcePosition{} : found->second;
}

ZtOdPdsSourcePosition ZtOdPdsRuleReporter::NamedAlike(std::wstring_view name) const {
    for (const auto& [other, at] : names_)
        if (SameIgnoringCase(other, name))
            return at;
    return {};
}

void ZtOdPdsRuleReporter::BeginIgnoring() {
    EndIgnoring();
    ignoringAt_ = At();
}

void ZtOdPdsRuleReporter::EndIgnoring() {
    if (ignoringAt_.IsKnown() && ignored_ > 0)
        Report(ZtOdPdsCheck::kIgnoredLines, ignoringAt_, {}, ignored_);
    ignoringAt_ = {};
    ignored_ = 0;
}

void ZtOdPdsRuleReporter::SetYieldsNothing(const ZtOdPdsDisplaySet* set, std::wstring_view name,
                                           int why) {
    if (budgetRun_) {
        ++budgetRun_->sets;
        return;
    }
    if (why == kZtOdPdsSetFileBudget) {
        budgetRun_ = BudgetRun{std::wstring(name), SetAt(set), 1};
        return;
    }
    Report(ZtOdPdsCheck::kSetEmpty, SetAt(set), name, why);
}

void ZtOdPdsRuleReporter::EndBudgetRun() {
    if (budgetRun_)
        Report(ZtOdPdsCheck::kSetEmpty, budgetRun_->at, budgetRun_->name, kZtOdPdsSetFileBudget,
               budgetRun_->sets);
    budgetRun_.reset();
}

void ZtOdPdsRuleReporter::Resolved(const void* criterion, std::size_t index, std::wstring_view name,
                                   const ZtOdPdsDisplaySet* found) {
    // Behind a spent budget every set is abandoned: what its references give is moot.
    if (budgetRun_)
        return;
    const auto noted = references_.find({criterion, index});
    const ZtOdPdsSourcePosition at = noted == references_.end() ? SetAt() : noted->second;
    if (!found)
        unresolved_.push_back({std::wstring(name), at});
    else if (found == current_)
        Report(ZtOdPdsCheck::kSetReference, at, name, 2);
    else if (!found->GetTree())
        Report(ZtOdPdsCheck::kSetReference, at, name, 3, 0, SetAt(found));
}
