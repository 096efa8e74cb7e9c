#include "ztplugin/ZtOpState.h"

#include "ztplugin/ZtOpNextCommentIdElement.h"
#include "ztplugin/ZtOpSavedItemsElement.h"

ZtOpState::ZtOpState() : root_(std::make_unique<ZtOaPartition>(L"Untitled")) {
    currentView_.SetWorldUp(ZtLVec3f(0, 0, 1));
    ZtOpSavedViewsElement::Require(elements_);
    ZtOpSelectionSetsElement::Require(elements_);
    ZtOpNextCommentIdElement::Require(elements_);
}

ZtOpState::~ZtOpState() = default;

void ZtOpState::SetNextTagId(std::uint64_t id) {
    ZtOpNextCommentIdElement::Require(elements_)->EditTagId() = id;
}

void ZtOpState::SetNextCommentId(std::uint64_t id) {
    ZtOpNextCommentIdElement::Require(elements_)->EditCommentId() = id;
}
