#pragma once
#include "ztplugin/ZtOpElement.h"
#include "ztplugin/ZtOpSavedItem.h"

class ZtOpLock;
class ZtOpState;

// A document element that keeps saved items under a root folder.
class ZtOpSavedItemsElement : public ZtOpElement {
public:
    const ZtOpFolderItem* Get() const { return &root_; }
    ZtOpFolderItem* Edit() { return &root_; }

    // Moves the children of `group` to the end of the root folder, which owns them from
    // here on; `group` is left empty. An item whose GUID is in the element already, or
    // earlier among the items moved, gets a fresh one; items within groups too.
    void AppendCreateGuidIfDuplicate(ZtOpGroupItem* group);

private:
    ZtOpFolderItem root_;
};

// The document's saved selection sets.
class ZtOpSelectionSetsElement : public ZtOpSavedItemsElement {
public:
    using ZtOpSavedItemsElement::Edit;
    using ZtOpSavedItemsElement::Get;

    static const ZtOpElementClass* GetClass();
    const ZtOpElementClass* GetElementClass() const override { return GetClass(); }

    // The element in `list`, made there if it is missing.
    static ZtOpSelectionSetsElement* Require(ZtOpElementList& list);
    // The document's element for reading, or null.
    static const ZtOpSelectionSetsElement* Get(const ZtOpState* state);
    // The document's element for writing, or null if there is none or `lock` does not
    // cover it.
    static ZtOpSelectionSetsElement* Edit(ZtOpState* state, ZtOpLock* lock);
};

// The document's saved views.
class ZtOpSavedViewsElement : public ZtOpSavedItemsElement {
public:
    using ZtOpSavedItemsElement::Edit;
    using ZtOpSavedItemsElement::Get;

    static const ZtOpElementClass* GetClass();
    const ZtOpElementClass* GetElementClass() const override { return GetClass(); }

    // The element in `list`, made there if it is missing.
    static ZtOpSavedViewsElement* Require(ZtOpElementList& list);
    // The document's element for reading, or null.
    static const ZtOpSavedViewsElement* Get(const ZtOpState* state);
    // The document's element for writing, or null if there is none or `lock` does not
    // cover it.
    static ZtOpSavedViewsElement* Edit(ZtOpState* state, ZtOpLock* lock);
};
