#pragma once
#include "ztplugin/ZtOpProgress.h"

#include <functional>
#include <vector>

// A progress that keeps every overall fraction it is told, in order, and runs `onReport`
// (if set) at each.
class ZtTestRecordingProgress : public ZtOpProgress {
public:
    std::vector<double> seen;
    std::function<void()> onReport;

protected:
    void OnProgress(double overall) override {
        seen.push_back(overall);
        if (onReport)
            onReport();
    }
};
