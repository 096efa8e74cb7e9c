#include "ztplugin/ZtOpSavedItemsElement.h"

#include "ztplugin/ZtOpLock.h"
#include "ztplugin/ZtOpState.h"

#include <set>
#include <vector>

namespace {

// Calls `visit` on every item of the trees below `group`, depth first, the group's own
// children in their order. Iterative, so that deep folders can't exhaust the stack.
template <class Visit> void ForEachItem(const ZtOpGroupItem& group, Visit visit) {
    std::vector<ZtOpSavedItem*> pending;
    for (std::size_t i = group.GetNumChildren(); i-- > 0;)
        pending.push_back(group.GetChild(i));
    while (!pending.empty()) {
        ZtOpSavedItem* item = pending.back();
        pending.pop_back();
        visit(*item);
        if (item->IsGroup()) {
            const auto& inner = static_cast<const ZtOpGroupItem&>(*item);
            for (std::size_t i = inner.GetNumChildren(); i-- > 0;)
                pending.push_back(inner.GetChild(i));
        }
    }
}

} // namespace

void ZtOpSavedItemsElement::AppendCreateGuidIfDuplicate(ZtOpGroupItem* group) {
    if (!group || group == &root_)
        return;
    std::set<ZtOpGuid> present;
    ForEachItem(root_, [&](const ZtOpSavedItem& item) { present.insert(item.GetGuid()); });
    ForEachItem(*group, [&](ZtOpSavedItem& item) {
        while (!present.insert(item.GetGuid()).second)
            item.SetGuid(ZtOpGuid::Create());
    });
    root_.Append(group);
    group->RemoveAllChildren();
}

const ZtOpElementClass* ZtOpSelectionSetsElement::GetClass() {
    static const ZtOpElementClass elementClass{"ZtOpSelectionSetsElement"};
    return &elementClass;
}

ZtOpSelectionSetsElement* ZtOpSelectionSetsElement::Require(ZtOpElementList& list) {
    if (ZtOpElement* element = list.Find(GetClass()))
        return static_cast<ZtOpSelectionSetsElement*>(element);
    auto* element = new ZtOpSelectionSetsElement;
    list.Add(element);
    return element;
}

const ZtOpSelectionSetsElement* ZtOpSelectionSetsElement::Get(const ZtOpState* state) {
    if (!state)
        return nullptr;
    return static_cast<const ZtOpSelectionSetsElement*>(state->GetElementList().Find(GetClass()));
}

ZtOpSelectionSetsElement* ZtOpSelectionSetsElement::Edit(ZtOpState* state, ZtOpLock* lock) {
    if (!state || !lock || !lock->Covers(GetClass(), state))
        return nullptr;
    return static_cast<ZtOpSelectionSetsElement*>(state->EditElementList().Find(GetClass()));
}

const ZtOpElementClass* ZtOpSavedViewsElement::GetClass() {
    static const ZtOpElementClass elementClass{"ZtOpSavedViewsElement"};
    return &elementClass;
}

ZtOpSavedViewsElement* ZtOpSavedViewsElement::Require(ZtOpElementList& list) {
    if (ZtOpElement* element = list.Find(GetClass()))
        return static_cast<ZtOpSavedViewsElement*>(element);
    auto* element = new ZtOpSavedViewsElement;
    list.Add(element);
    return element;
}

const ZtOpSavedViewsElement* ZtOpSavedViewsElement::Get(const ZtOpState* state) {
    if (!state)
        return nullptr;
    return static_cast<const ZtOpSavedViewsElement*>(state->GetElementList().Find(GetClass()));
}

ZtOpSavedViewsElement* ZtOpSavedViewsElement::Edit(ZtOpState* state, ZtOpLock* lock) {
    if (!state || !lock || !lock->Covers(GetClass(), state))
        return nullptr;
    return static_cast<ZtOpSavedViewsElement*>(state->EditElementList().Find(GetClass()));
}
