#pragma once
#include "ztplugin/ZtOpAnonView.h"
#include "ztplugin/ZtOpRedline.h"
#include "ztplugin/ZtOpSavedItem.h"
#include "ztutil/ZtUVector.h"

// A saved view: a viewpoint with its clip planes, and the comments and redlines made in
// it, which the view owns.
class ZtOpView : public ZtOpSavedItem {
public:
    Type GetType() const override { return kTypeView; }

    const ZtOpAnonView& AnonView() const { return anonView_; }
    ZtOpAnonView& AnonView() { return anonView_; }

    // The redlines, in their order; the view owns every redline in the list.
    const ZtUOwnPtrVector<ZtOpRedline>& GetRedlines() const { return redlines_; }
    ZtUOwnPtrVector<ZtOpRedline>& EditRedlines() { return redlines_; }

private:
    ZtOpAnonView anonView_;
    ZtUOwnPtrVector<ZtOpRedline> redlines_;
};
