#pragma once
#include "ztplugin/ZtOpAnonView.h"
#include "ztplugin/ZtOpElement.h"

// The properties of a scene being built from a file: its document elements (saved views,
// selection sets and the like, which the host takes into the document afterwards) and its
// current view.
class ZtOpSceneProps : public ZtOpElementList {
public:
    const ZtOpAnonView* GetCurrentView() const { return &currentView_; }
    ZtOpAnonView* EditCurrentView() { return &currentView_; }

private:
    ZtOpAnonView currentView_;
};
