#include "ztplugin/ZtOpLock.h"

#include "ztplugin/ZtOpState.h"

#include <cassert>

ZtOpAutoLock::ZtOpAutoLock(const ZtOpElementClass* elementClass, ZtOpState* state, int)
    : lock_(elementClass, state) {
    if (!state || !elementClass)
        return;
    held_ = state->EditElementList().Lock(elementClass);
    assert(held_ && "element class locked twice");
}

ZtOpAutoLock::~ZtOpAutoLock() {
    if (held_)
        lock_.GetState()->EditElementList().Unlock(lock_.GetClass());
}
