#include "ztplugin/ZtOpState.h"

ZtOpState::ZtOpState() {
    currentView_.SetWorldUp(ZtLVec3f(0, 0, 1));
}

ZtOpState::~ZtOpState() = default;
