#pragma once
#include "ztlinear/ZtLVec3f.h"

#include <cstdint>

// A point in a model's units of resolution, as the tag files write it.
struct ZtOdPdsUorVector {
    std::int64_t x = 0;
    std::int64_t y = 0;
    std::int64_t z = 0;

    bool operator==(const ZtOdPdsUorVector& other) const = default;

    // Each component divided by the factor.
    ZtLPos3f ToMaster(double uorsPerMaster) const;
    // Each component of `position` times the factor, cut towards zero.
    void FromMaster(const ZtLPos3f& position, double uorsPerMaster);
};
