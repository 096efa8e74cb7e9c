#include "rules/ZtOdPdsFindSpecBuilder.h"

#include "plugin/ZtOdPdsComponents.h"
#include "readers/ZtOdPdsDstContext.h"
#include "ztplugin/ZtOpComment.h"
#include "ztplugin/ZtOpSavedItem.h"
#include "ztplugin/ZtOpSelectionSet.h"

#include <memory>

// The file's budget of conditions bounds its memory only while each condition is small:
// names and value texts are shared, not held by each condition.
static_assert(sizeof(ZtOpFindCondition) <= 64);

ZtOdPdsFindSpecBuilder::ZtOdPdsFindSpecBuilder(const wchar_t* name, std::uint64_t maxConditions)
    : name_(name), findSpec_(new ZtOpFindSpec), maxConditions_(maxConditions) {}

ZtOdPdsFindSpecBuilder::~ZtOdPdsFindSpecBuilder() {
    delete findSpec_;
}

int ZtOdPdsFindSpecBuilder::AddCondition(ZtOpFindCondition& condition) {
    if (overflowed_ || findSpec_->GetNumConditions() >= maxConditions_) {
        overflowed_ = 1;
        return 0;
    }
    if (nextOpensAlternative_)
        condition.AddFlags(ZtOpFindConditionFlags::kNewAlternative);
    findSpec_->AddCondition(condition);
    nextOpensAlternative_ = 0;
    return 1;
}

void ZtOdPdsFindSpecBuilder::AddSelectionSet(ZtOdPdsDstContext* context) {
    if (!context || !context->folder)
        return;
    // Held until the folder takes it, so that running out of memory on the way frees it.
    std::unique_ptr<ZtOpSelectionSet> set(new ZtOpSelectionSet);
    findSpec_->SelectAll();
    set->SetName(name_.GetString());
    set->EditImplicitSelection().SetImplicitFindSpec(*findSpec_);
    if (!comment_.IsEmpty()) {
        std::unique_ptr<ZtOpComment> comment(new ZtOpComment(0));
        comment->SetBody(comment_.GetString());
        set->EditComments().PushBack(comment.release());
    }
    context->folder->AddChild(set.release());
}

ZtUComponent& ZtOdPdsFindSpecBuilder::GetComponent() {
    static ZtUComponent component;
    return component;
}

int ZtOdPdsFindSpecBuilder::StartComponent() {
    return ZtOdPdsStartComponents({{&GetComponent(), "ZtOdPdsFindSpecBuilder"}});
}

int ZtOdPdsFindSpecBuilder::EndComponent() {
    return ZtOdPdsEndComponents({&GetComponent()});
}
