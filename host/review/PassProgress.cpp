#include "review/PassProgress.h"

void PassProgress::OnProgress(double overall) {
    if (overall < last_ && pass_ + 1 < passes_)
        ++pass_;
    last_ = overall;
    target_.SetProgress((static_cast<double>(pass_) + overall) / static_cast<double>(passes_));
}
