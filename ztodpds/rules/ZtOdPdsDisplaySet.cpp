#include "rules/ZtOdPdsDisplaySet.h"

#include "readers/ZtOdPdsDstContext.h"
#include "readers/ZtOdPdsLineTests.h"
#include "rules/ZtOdPdsCriterion.h"
#include "rules/ZtOdPdsDisplaySetDict.h"
#include "rules/ZtOdPdsFindSpecBuilder.h"
#include "rules/ZtOdPdsLimits.h"
#include "rules/ZtOdPdsNode.h"
#include "rules/ZtOdPdsRuleReporter.h"
#include "rules/ZtOdPdsTreeSize.h"

#include <algorithm>
#include <cwchar>
#include <memory>
#include <utility>

namespace {

enum StatementKind { kFind, kModifier, kEndFind };

struct Keyword {
    const wchar_t* text;
    StatementKind statement;
    int number; // `negate` of a FIND, `kind` of a modifier
};

// Tried in this order, so that the longer keywords come before their beginnings.
const Keyword kKeywords[] = {
    {L"FIND ALL BUT", kFind, 1},
    {L"FIND", kFind, 0},
    {L"ADD ALL BUT", kModifier, ZtOdPdsModifier::kAddAllBut},
    {L"ADD", kModifier, ZtOdPdsModifier::kAdd},
    {L"KEEP ONLY", kModifier, ZtOdPdsModifier::kKeepOnly},
    {L"THROW AWAY", kModifier, ZtOdPdsModifier::kThrowAway},
    {L"END FIND", kEndFind, 0},
};

std::size_t LeadingBlanks(const ZtUWideStringBuffer& line) {
    std::size_t count = 0;
    while (count < line.GetLength() && ZtUIsWhiteSpace(line.CharAtPos(count)))
        ++count;
    return count;
}

} // namespace

ZtOdPdsDisplaySet::ZtOdPdsDisplaySet(ZtOdPdsDstContext* context)
    : ZtOdPdsDstInputConsumer(context) {
    scopes_.PushBack(&root_);
}

ZtOdPdsDisplaySet::~ZtOdPdsDisplaySet() {
    if (tree_)
        tree_->Release();
}

void ZtOdPdsDisplaySet::Release() {
    if (--refCount_ == 0)
        delete this;
}

int ZtOdPdsDisplaySet::Begin() {
    state_ = kHeaderExpected;
    return 1;
}

int ZtOdPdsDisplaySet::Line(ZtUWideStringBuffer& line) {
    ZtOdPdsRuleReporter* reporter = Reporter();
    if (ZtOdPdsIsAngleLine(line)) {
        const int before = state_;
        state_ = line == L"<Definition>" ? kDefinition : kIgnoring;
        if (reporter)
            ReportAngleLine(*reporter, line, before);
        return 1;
    }
    if (reporter) {
        if (state_ == kIgnoring && LeadingBlanks(line) < line.GetLength())
            reporter->IgnoredLine();
        else if (state_ != kDefinition)
            reporter->NearMiss(line, L"<Definition>", ZtOdPdsCheck::kMarkerLine);
    }
    switch (state_) {
    case kHeaderExpected:
        ReadHeader(line);
        break;
    case kComment:
        AppendComment(line);
        break;
    case kDefinition:
        ParseStatement(line);
        break;
    default:
        break;
    }
    return 1;
}

void ZtOdPdsDisplaySet::ReportAngleLine(ZtOdPdsRuleReporter& reporter,
                                        const ZtUWideStringBuffer& line, int before) {
    if (before == kHeaderExpected)
        reporter.Report(ZtOdPdsCheck::kSetName, reporter.At(), {}, 2);
    if (state_ == kDefinition) {
        reporter.EndIgnoring();
        reporter.DefinitionRead();
    } else {
        reporter.NearMiss(line, L"<Definition>", ZtOdPdsCheck::kMarkerLine);
        reporter.BeginIgnoring();
    }
}

void ZtOdPdsDisplaySet::ReadHeader(ZtUWideStringBuffer& line) {
    ZtOdPdsRuleReporter* reporter = Reporter();
    const std::size_t lead = reporter ? LeadingBlanks(line) : 0;
    line.Trim();
    const wchar_t* blank = line.Find(L" ", 0);
    number_ = ZtOdPdsParseInt32(line.GetString());
    if (blank) {
        ZtUWideStringBuffer name(blank);
        name.Trim();
        name_.SetString(name.GetString());
    }
    if (reporter)
        ReportHeader(*reporter, line, lead);
    ZtOdPdsDisplaySetDict::Instance()->Add(this);
    state_ = kComment;
}

void ZtOdPdsDisplaySet::ReportHeader(ZtOdPdsRuleReporter& reporter, const ZtUWideStringBuffer& line,
                                     std::size_t lead) {
    const ZtOdPdsSourcePosition at = reporter.At(lead);
    reporter.SetNamed(name_.Str());
    wchar_t* end = nullptr;
    std::wcstol(line.GetString(), &end, 10);
    if (end == line.GetString())
        reporter.Report(ZtOdPdsCheck::kSetName, at, line.Str(), 0);
    if (name_.IsEmpty())
        reporter.Report(ZtOdPdsCheck::kSetName, at, line.Str(), 1);
    const ZtOdPdsDisplaySet* displaced = ZtOdPdsDisplaySetDict::Instance()->Find(name_.GetString());
    if (displaced && displaced != this)
        reporter.Report(ZtOdPdsCheck::kSetName, at, name_.Str(), 3, 0, reporter.SetAt(displaced));
}

void ZtOdPdsDisplaySet::AppendComment(ZtUWideStringBuffer& line) {
    if (!comment_.IsEmpty())
        comment_.Append(L"\n\r");
    comment_.Append(line.GetString());
}

void ZtOdPdsDisplaySet::ParseStatement(ZtUWideStringBuffer& line) {
    ZtOdPdsRuleReporter* reporter = Reporter();
    const std::size_t lead = reporter ? LeadingBlanks(line) : 0;
    line.Trim();
    const Keyword* keyword = nullptr;
    unsigned int length = 0;
    for (const Keyword& candidate : kKeywords)
        if (ZtOdPdsLineStartsWith(line, candidate.text, &length)) {
            keyword = &candidate;
            break;
        }
    // Once the root scope is closed, no statement has a scope to go to.
    if (!keyword || scopes_.IsEmpty()) {
        // A line meant as "<Display Set>" is reported as such where the section reads it.
        if (reporter && !line.IsEmpty() &&
            !ZtOdPdsRuleReporter::IsNearMiss(line.Str(), L"<Display Set>"))
            reporter->Report(keyword ? ZtOdPdsCheck::kNoScope : ZtOdPdsCheck::kNotStatement,
                             reporter->At(lead), line.Str(),
                             keyword && keyword->statement == kEndFind);
        return;
    }
    auto* scope = static_cast<ZtOdPdsCompModifier*>(scopes_.Back());
    if (keyword->statement == kEndFind) {
        const std::wstring_view rest = std::wstring_view(line.Str()).substr(length);
        const std::size_t text = rest.find_first_not_of(L" \t");
        if (reporter && text != std::wstring_view::npos)
            reporter->Report(ZtOdPdsCheck::kEndFindText, reporter->At(lead + length + text),
                             rest.substr(text));
        scopes_.PopBack();
        return;
    }
    // One character behind the keyword is skipped unread, whatever it is.
    const std::size_t textStart = length < line.GetLength() ? length + 1 : length;
    // Each piece is held until its owner takes it, so that running out of memory on the
    // way frees what was made.
    const ZtOdPdsCriterionSpot spot{reporter, lead + textStart};
    std::unique_ptr<ZtOdPdsCriterion> criterion(
        ZtOdPdsMakeCriterion(line.GetString() + textStart, reporter ? &spot : nullptr));
    const bool usable = criterion && criterion->GetKind() != ZtOdPdsCriterion::kUnknown;
    // What a reporting read says of a statement it drops (why), or takes (its separator).
    auto dropped = [&](ZtOdPdsCheck why, std::int64_t figure) {
        if (reporter)
            reporter->Report(why, reporter->At(spot.offset), line.Str().substr(textStart), figure,
                             0,
                             why == ZtOdPdsCheck::kSecondFind ? reporter->FindAt(scope)
                                                              : ZtOdPdsSourcePosition{});
    };
    auto taken = [&]() {
        if (reporter && length < line.GetLength() && line.CharAtPos(length) != L' ')
            reporter->Report(ZtOdPdsCheck::kSeparator, reporter->At(lead + length),
                             line.Str().substr(length, 1));
    };
    if (keyword->statement == kFind) {
        if (scope->GetFind())
            return dropped(ZtOdPdsCheck::kSecondFind, 0);
        if (!usable)
            return dropped(ZtOdPdsCheck::kCriterion, criterion ? 1 : 0);
        std::unique_ptr<ZtOdPdsFindClause> find(new ZtOdPdsFindClause(keyword->number));
        find->SetCriterion(criterion.release());
        scope->SetFind(find.release());
        if (reporter)
            reporter->FindRead(scope);
        return taken();
    }
    if (!criterion) {
        // A bare modifier keyword opens a nested scope, up to its END FIND.
        auto* nested = new ZtOdPdsCompModifier(keyword->number);
        scope->AddModifier(nested);
        scopes_.PushBack(nested);
        if (scopes_.Size() > deepestScopes_)
            deepestScopes_ = scopes_.Size();
        return;
    }
    if (!usable)
        return dropped(ZtOdPdsCheck::kCriterion, 1);
    std::unique_ptr<ZtOdPdsModifier> modifier(new ZtOdPdsModifier(keyword->number));
    modifier->SetCriterion(criterion.release());
    scope->AddModifier(modifier.release());
    taken();
}

int ZtOdPdsDisplaySet::End() {
    if (ZtOdPdsRuleReporter* reporter = Reporter())
        reporter->EndIgnoring();
    // Nesting that deep is not evaluated at all.
    if (deepestScopes_ > kZtOdPdsMaxScopeDepth)
        return Yields(kZtOdPdsSetScopeDepth, 0);
    tree_ = root_.Evaluate(GetContext());
    if (!tree_)
        return Yields(EmptyReason(), 1);
    tree_->AddRef();
    if (!tree_->IsComplete())
        return Abandon(kZtOdPdsSetIncomplete);
    const ZtOdPdsTreeSize size = ZtOdPdsMeasureTree(tree_, kZtOdPdsMaxConditions + 1);
    if (size.depth > kZtOdPdsMaxTreeDepth)
        return Abandon(kZtOdPdsSetTreeDepth);
    if (size.conditions > kZtOdPdsMaxConditions)
        return Abandon(kZtOdPdsSetConditions);
    tree_->PushNegation();
    ZtOdPdsRewriteBudget budget;
    if (!tree_->Flatten(budget))
        return Abandon(kZtOdPdsSetRewrite);
    ZtOdPdsDstContext* context = GetContext();
    const std::uint64_t fileLeft = context ? context->conditionsLeft : kZtOdPdsMaxConditions;
    ZtOdPdsFindSpecBuilder builder(name_.GetString(), std::min(kZtOdPdsMaxConditions, fileLeft));
    ZtOdPdsDisplaySetDict* dict = ZtOdPdsDisplaySetDict::Instance();
    builder.Follow(dict->GetLastFindSpec());
    tree_->Emit(builder);
    if (builder.HasOverflowed()) {
        const bool fileBudget = context && fileLeft < kZtOdPdsMaxConditions;
        if (fileBudget)
            context->conditionsLeft = 0;
        return Abandon(fileBudget ? kZtOdPdsSetFileBudget : kZtOdPdsSetConditions);
    }
    if (context)
        context->conditionsLeft -= builder.GetFindSpec().GetNumConditions();
    dict->SetLastFindSpec(builder.GetFindSpec());
    builder.SetComment(comment_.GetString());
    // The builder holds the comment now; its memory goes before the set's comment is made
    // of it, so that a long comment is not held three times.
    {
        ZtUWideStringBuffer released;
        std::swap(comment_, released);
    }
    builder.AddSelectionSet(GetContext());
    return 1;
}

int ZtOdPdsDisplaySet::Abandon(int why) {
    tree_->Release();
    tree_ = nullptr;
    return Yields(why, 0);
}

int ZtOdPdsDisplaySet::Yields(int why, int result) const {
    if (ZtOdPdsRuleReporter* reporter = Reporter())
        reporter->SetYieldsNothing(this, name_.Str(), why);
    return result;
}

int ZtOdPdsDisplaySet::EmptyReason() const {
    const ZtOdPdsRuleReporter* reporter = Reporter();
    if (reporter && !reporter->WasDefined())
        return kZtOdPdsSetNoDefinition;
    return root_.GetFind() ? kZtOdPdsSetNothing : kZtOdPdsSetNoFind;
}

ZtOdPdsRuleReporter* ZtOdPdsDisplaySet::Reporter() const {
    const ZtOdPdsDstContext* context = GetContext();
    return context ? context->reporter : nullptr;
}
