#pragma once
#include "ztutil/ZtUString.h"

// A named unit of start-up and shut-down work. Initialise and Terminate nest: a
// component is live while it has been initialised more often than terminated.
class ZtUComponent {
public:
    // Always succeeds: 1.
    int Initialise(const char* name);
    // 1, or 0 for a component that is not live.
    int Terminate();

    bool IsLive() const { return starts_ > 0; }
    const ZtUString& GetName() const { return name_; }

private:
    ZtUString name_;
    int starts_ = 0;
};
