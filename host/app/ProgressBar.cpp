#include "app/ProgressBar.h"

void ProgressBar::Start(const std::string& label) {
    label_ = label;
    lastPercent_ = -1;
}

void ProgressBar::OnProgress(double overall) {
    if (!enabled_)
        return;
    const int percent = static_cast<int>(overall * 100.0);
    if (percent == lastPercent_)
        return;
    lastPercent_ = percent;
    constexpr int kWidth = 30;
    const int filled = percent * kWidth / 100;
    std::fprintf(out_, "\r%s [%.*s%*s] %3d%%", label_.c_str(), filled,
                 "##############################", kWidth - filled, "", percent);
    std::fflush(out_);
    shown_ = true;
}

void ProgressBar::Finish() {
    if (shown_) {
        std::fprintf(out_, "\r\033[K");
        std::fflush(out_);
    }
    shown_ = false;
    lastPercent_ = -1;
}
