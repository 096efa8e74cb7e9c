#include "ztplugin/ZtOpNextCommentIdElement.h"

#include "ztplugin/ZtOpLock.h"
#include "ztplugin/ZtOpState.h"

const ZtOpElementClass* ZtOpNextCommentIdElement::GetClass() {
    static const ZtOpElementClass elementClass{"ZtOpNextCommentIdElement"};
    return &elementClass;
}

ZtOpNextCommentIdElement* ZtOpNextCommentIdElement::Require(ZtOpElementList& list) {
    if (ZtOpElement* element = list.Find(GetClass()))
        return static_cast<ZtOpNextCommentIdElement*>(element);
    auto* element = new ZtOpNextCommentIdElement;
    list.Add(element);
    return element;
}

const ZtOpNextCommentIdElement* ZtOpNextCommentIdElement::Get(const ZtOpElementList& list) {
    return static_cast<const ZtOpNextCommentIdElement*>(list.Find(GetClass()));
}

ZtOpNextCommentIdElement* ZtOpNextCommentIdElement::Edit(ZtOpState* state, ZtOpLock* lock) {
    if (!state || !lock || !lock->Covers(GetClass(), state))
        return nullptr;
    return static_cast<ZtOpNextCommentIdElement*>(state->EditElementList().Find(GetClass()));
}
