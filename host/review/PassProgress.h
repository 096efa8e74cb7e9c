#pragma once
#include "ztplugin/ZtOpProgress.h"

#include <cstddef>

// Progress for a call that runs a known number of passes, each reporting its own 0 to 1
// (the loader imports each side file so): each pass gets its share of the target's
// present stretch, so that the target runs once from 0 to 1. A pass is known to begin
// when the fraction falls.
class PassProgress : public ZtOpProgress {
public:
    PassProgress(ZtOpProgress& target, std::size_t passes)
        : target_(target), passes_(passes == 0 ? 1 : passes) {}

protected:
    void OnProgress(double overall) override;

private:
    ZtOpProgress& target_;
    std::size_t passes_;
    std::size_t pass_ = 0;
    double last_ = 0.0;
};
