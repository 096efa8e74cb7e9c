#include "ztplugin/ZtOpState.h"

#include "ztplugin/ZtOpSavedItemsElement.h"

ZtOpState::ZtOpState() {
    currentView_.SetWorldUp(ZtLVec3f(0, 0, 1));
    ZtOpSelectionSetsElement::Require(elements_);
}

ZtOpState::~ZtOpState() = default;
