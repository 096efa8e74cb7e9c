#include "rules/ZtOdPdsDisplaySet.h"

#include "readers/ZtOdPdsDstContext.h"
#include "readers/ZtOdPdsLineTests.h"
#include "rules/ZtOdPdsCriterion.h"
#include "rules/ZtOdPdsDisplaySetDict.h"
#include "rules/ZtOdPdsFindSpecBuilder.h"
#include "rules/ZtOdPdsLimits.h"
#include "rules/ZtOdPdsNode.h"
#include "rules/ZtOdPdsTreeSize.h"

#include <algorithm>
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
    if (ZtOdPdsIsAngleLine(line)) {
        state_ = line == L"<Definition>" ? kDefinition : kIgnoring;
        return 1;
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

void ZtOdPdsDisplaySet::ReadHeader(ZtUWideStringBuffer& line) {
    line.Trim();
    const wchar_t* blank = line.Find(L" ", 0);
    number_ = ZtOdPdsParseInt32(line.GetString());
    if (blank) {
        ZtUWideStringBuffer name(blank);
        name.Trim();
        name_.SetString(name.GetString());
    }
    ZtOdPdsDisplaySetDict::Instance()->Add(this);
    state_ = kComment;
}

void ZtOdPdsDisplaySet::AppendComment(ZtUWideStringBuffer& line) {
    if (!comment_.IsEmpty())
        comment_.Append(L"\n\r");
    comment_.Append(line.GetString());
}

void ZtOdPdsDisplaySet::ParseStatement(ZtUWideStringBuffer& line) {
    line.Trim();
    const Keyword* keyword = nullptr;
    unsigned int length = 0;
    for (const Keyword& candidate : kKeywords)
        if (ZtOdPdsLineStartsWith(line, candidate.text, &length)) {
            keyword = &candidate;
            break;
        }
    // Once the root scope is closed, no statement has a scope to go to.
    if (!keyword || scopes_.IsEmpty())
        return;
    auto* scope = static_cast<ZtOdPdsCompModifier*>(scopes_.Back());
    if (keyword->statement == kEndFind) {
        scopes_.PopBack();
        return;
    }
    // One character behind the keyword is skipped unread, whatever it is.
    const std::size_t textStart = length < line.GetLength() ? length + 1 : length;
    // Each piece is held until its owner takes it, so that running out of memory on the
    // way frees what was made.
    std::unique_ptr<ZtOdPdsCriterion> criterion(ZtOdPdsMakeCriterion(line.GetString() + textStart));
    const bool usable = criterion && criterion->GetKind() != ZtOdPdsCriterion::kUnknown;
    if (keyword->statement == kFind) {
        if (scope->GetFind() || !usable)
            return;
        std::unique_ptr<ZtOdPdsFindClause> find(new ZtOdPdsFindClause(keyword->number));
        find->SetCriterion(criterion.release());
        scope->SetFind(find.release());
        return;
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
        return;
    std::unique_ptr<ZtOdPdsModifier> modifier(new ZtOdPdsModifier(keyword->number));
    modifier->SetCriterion(criterion.release());
    scope->AddModifier(modifier.release());
}

int ZtOdPdsDisplaySet::End() {
    // Nesting that deep is not evaluated at all.
    if (deepestScopes_ > kZtOdPdsMaxScopeDepth)
        return 0;
    tree_ = root_.Evaluate(GetContext());
    if (!tree_)
        return 1;
    tree_->AddRef();
    if (!tree_->IsComplete())
        return Abandon();
    const ZtOdPdsTreeSize size = ZtOdPdsMeasureTree(tree_, kZtOdPdsMaxConditions + 1);
    if (size.depth > kZtOdPdsMaxTreeDepth || size.conditions > kZtOdPdsMaxConditions)
        return Abandon();
    tree_->PushNegation();
    ZtOdPdsRewriteBudget budget;
    if (!tree_->Flatten(budget))
        return Abandon();
    ZtOdPdsDstContext* context = GetContext();
    const std::uint64_t fileLeft = context ? context->conditionsLeft : kZtOdPdsMaxConditions;
    ZtOdPdsFindSpecBuilder builder(name_.GetString(), std::min(kZtOdPdsMaxConditions, fileLeft));
    ZtOdPdsDisplaySetDict* dict = ZtOdPdsDisplaySetDict::Instance();
    builder.Follow(dict->GetLastFindSpec());
    tree_->Emit(builder);
    if (builder.HasOverflowed()) {
        if (context && fileLeft < kZtOdPdsMaxConditions)
            context->conditionsLeft = 0;
        return Abandon();
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

int ZtOdPdsDisplaySet::Abandon() {
    tree_->Release();
    tree_ = nullptr;
    return 0;
}
