#pragma once
#include "ztlinear/ZtLVec3f.h"

#include <algorithm>
#include <limits>

// An axis-aligned box. A new box is empty: its low corner lies above its high corner, so
// that the first point it is extended by becomes both corners.
class ZtLBox3f {
public:
    constexpr ZtLBox3f() : min_(kHuge, kHuge, kHuge), max_(-kHuge, -kHuge, -kHuge) {}
    constexpr ZtLBox3f(const ZtLPos3f& low, const ZtLPos3f& high) : min_(low), max_(high) {}

    const ZtLPos3f& GetMin() const { return min_; }
    const ZtLPos3f& GetMax() const { return max_; }
    void SetBounds(const ZtLPos3f& low, const ZtLPos3f& high) { min_ = low, max_ = high; }
    void MakeEmpty() { *this = ZtLBox3f(); }

    // True while the box holds no point (a low corner above the high one on some axis).
    bool IsEmpty() const { return min_.x > max_.x || min_.y > max_.y || min_.z > max_.z; }

    void Extend(const ZtLPos3f& p) {
        min_.SetValue(std::min(min_.x, p.x), std::min(min_.y, p.y), std::min(min_.z, p.z));
        max_.SetValue(std::max(max_.x, p.x), std::max(max_.y, p.y), std::max(max_.z, p.z));
    }
    void Extend(const ZtLBox3f& box) {
        if (box.IsEmpty())
            return;
        Extend(box.min_);
        Extend(box.max_);
    }

    // Points on the faces count as inside.
    bool Contains(const ZtLPos3f& p) const {
        return p.x >= min_.x && p.x <= max_.x && p.y >= min_.y && p.y <= max_.y && p.z >= min_.z &&
               p.z <= max_.z;
    }
    // Boxes that only touch intersect; an empty box meets nothing.
    bool Intersects(const ZtLBox3f& o) const {
        return !IsEmpty() && !o.IsEmpty() && min_.x <= o.max_.x && o.min_.x <= max_.x &&
               min_.y <= o.max_.y && o.min_.y <= max_.y && min_.z <= o.max_.z && o.min_.z <= max_.z;
    }

    ZtLPos3f GetCenter() const { return (min_ + max_) * 0.5; }
    // The edge lengths; zero for an empty box.
    ZtLVec3f GetSize() const { return IsEmpty() ? ZtLVec3f() : max_ - min_; }

    constexpr bool operator==(const ZtLBox3f& o) const = default;

private:
    static constexpr double kHuge = std::numeric_limits<double>::max();

    ZtLPos3f min_;
    ZtLPos3f max_;
};
