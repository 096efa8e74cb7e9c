#pragma once
#include "ztplugin/ZtOpProgress.h"

#include <cstdio>
#include <string>

// The reference host's progress display: one bar on standard error, redrawn only when
// the shown percentage changes, and only while enabled (a terminal, no --quiet).
class ProgressBar : public ZtOpProgress {
public:
    ProgressBar(std::FILE* out, bool enabled) : out_(out), enabled_(enabled) {}

    // Starts a bar for one step.
    void Start(const std::string& label);
    // Removes the bar from the terminal; the next progress draws it anew.
    void Finish();

protected:
    void OnProgress(double overall) override;

private:
    std::FILE* out_;
    bool enabled_;
    bool shown_ = false;
    int lastPercent_ = -1;
    std::string label_;
};
