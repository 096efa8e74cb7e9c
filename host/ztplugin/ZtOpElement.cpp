#include "ztplugin/ZtOpElement.h"

#include <algorithm>

ZtOpElement* ZtOpElementList::Find(const ZtOpElementClass* elementClass) const {
    for (const auto& element : elements_)
        if (element->GetElementClass() == elementClass)
            return element.get();
    return nullptr;
}

void ZtOpElementList::Add(ZtOpElement* element) {
    if (!element)
        return;
    for (auto& listed : elements_)
        if (listed->GetElementClass() == element->GetElementClass()) {
            listed.reset(element);
            return;
        }
    elements_.emplace_back(element);
}

bool ZtOpElementList::Lock(const ZtOpElementClass* elementClass) {
    if (IsLocked(elementClass))
        return false;
    locked_.push_back(elementClass);
    return true;
}

void ZtOpElementList::Unlock(const ZtOpElementClass* elementClass) {
    locked_.erase(std::remove(locked_.begin(), locked_.end(), elementClass), locked_.end());
}

bool ZtOpElementList::IsLocked(const ZtOpElementClass* elementClass) const {
    return std::find(locked_.begin(), locked_.end(), elementClass) != locked_.end();
}
