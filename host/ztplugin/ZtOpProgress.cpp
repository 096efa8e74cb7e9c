#include "ztplugin/ZtOpProgress.h"

#include <algorithm>
#include <cmath>

namespace {
double Clamp(double fraction) {
    return std::clamp(fraction, 0.0, 1.0);
}
} // namespace

double ZtOpProgress::Map(double fraction) const {
    if (stretches_.empty())
        return fraction;
    const Stretch& s = stretches_.back();
    return s.begin + (s.end - s.begin) * fraction;
}

void ZtOpProgress::SetProgress(double fraction) {
    if (!std::isfinite(fraction))
        return;
    overall_ = Map(Clamp(fraction));
    OnProgress(overall_);
}

void ZtOpProgress::BeginSubOperation(double end) {
    if (!std::isfinite(end))
        end = 1.0;
    const double mappedEnd = Map(Clamp(end));
    stretches_.push_back({overall_, std::max(overall_, mappedEnd)});
}

void ZtOpProgress::EndSubOperation() {
    if (stretches_.empty())
        return;
    overall_ = stretches_.back().end;
    stretches_.pop_back();
    OnProgress(overall_);
}
