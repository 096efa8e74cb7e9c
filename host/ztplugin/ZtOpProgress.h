#pragma once
#include <vector>

// The host's progress object. Callers report the fraction of their work done, 0 to 1;
// sub-operations map a caller's 0..1 onto a stretch of the enclosing one. Fractions are
// clamped to 0..1 and a non-finite fraction is ignored.
class ZtOpProgress {
public:
    virtual ~ZtOpProgress() = default;

    void SetProgress(double fraction);
    // The next 0..1 covers the stretch from the present point to `end` of the enclosing
    // 0..1.
    void BeginSubOperation(double end);
    // Returns to the enclosing stretch, standing at the end of the one that closes.
    void EndSubOperation();

    // The overall fraction done, 0 to 1.
    double GetOverall() const { return overall_; }

protected:
    // Called with the overall fraction after each change.
    virtual void OnProgress(double) {}

private:
    struct Stretch {
        double begin;
        double end;
    };
    double Map(double fraction) const;

    std::vector<Stretch> stretches_;
    double overall_ = 0.0;
};
