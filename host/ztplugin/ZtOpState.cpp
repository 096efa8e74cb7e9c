#include "ztplugin/ZtOpState.h"

#include "ztplugin/ZtOpSavedItemsElement.h"

ZtOpState::ZtOpState() : root_(std::make_unique<ZtOaPartition>(L"Untitled")) {
    currentView_.SetWorldUp(ZtLVec3f(0, 0, 1));
    ZtOpSelectionSetsElement::Require(elements_);
}

ZtOpState::~ZtOpState() = default;
