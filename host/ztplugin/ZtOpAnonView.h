#pragma once
#include "ztnav/ZtNvViewPoint.h"

// A view that is not saved under a name: what the user looks at now.
class ZtOpAnonView {
public:
    const ZtNvViewPoint& GetViewPoint() const { return viewPoint_; }
    ZtNvViewPoint* EditViewPoint() { return &viewPoint_; }

private:
    ZtNvViewPoint viewPoint_;
};
