#pragma once
#include "ztplugin/ZtOpFindSpec.h"
#include "ztplugin/ZtOpSavedItem.h"

// What a selection set selects when it is applied: the objects that its find query finds.
class ZtOpImplicitSelection {
public:
    // Keeps a copy of `spec`; the caller keeps its own.
    void SetImplicitFindSpec(const ZtOpFindSpec& spec) {
        spec_ = spec;
        hasSpec_ = true;
    }
    // The spec, or null while none was given.
    const ZtOpFindSpec* GetImplicitFindSpec() const { return hasSpec_ ? &spec_ : nullptr; }

private:
    ZtOpFindSpec spec_;
    bool hasSpec_ = false;
};

// A saved selection: a named rule that selects objects of the document's models.
class ZtOpSelectionSet : public ZtOpSavedItem {
public:
    Type GetType() const override { return kTypeSelectionSet; }

    const ZtOpImplicitSelection& GetImplicitSelection() const { return implicit_; }
    ZtOpImplicitSelection& EditImplicitSelection() { return implicit_; }

private:
    ZtOpImplicitSelection implicit_;
};
