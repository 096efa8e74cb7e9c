#pragma once
#include "ztplugin/ZtOpProgress.h"

#include <vector>

// A progress that keeps every overall fraction it is told, in order.
class ZtTestRecordingProgress : public ZtOpProgress {
public:
    std::vector<double> seen;

protected:
    void OnProgress(double overall) override { seen.push_back(overall); }
};
