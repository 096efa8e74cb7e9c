#include "ztplugin/ZtOpState.h"

#include "ztplugin/ZtOpNextCommentIdElement.h"
#include "ztplugin/ZtOpSavedItemsElement.h"

ZtOpState::ZtOpState() : root_(std::make_unique<ZtOaPartition>(L"Untitled")) {
    EditCurrentViewPoint().SetWorldUp(ZtLVec3f(0, 0, 1));
    ZtOpSavedViewsElement::Require(sceneProps_);
    ZtOpSelectionSetsElement::Require(sceneProps_);
    ZtOpNextCommentIdElement::Require(sceneProps_);
}

ZtOpState::~ZtOpState() = default;

void ZtOpState::SetNextTagId(std::uint64_t id) {
    ZtOpNextCommentIdElement::Require(sceneProps_)->EditTagId() = id;
}

void ZtOpState::SetNextCommentId(std::uint64_t id) {
    ZtOpNextCommentIdElement::Require(sceneProps_)->EditCommentId() = id;
}
