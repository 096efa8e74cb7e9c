#pragma once
#include "ztobject/ZtOaClipPlane.h"

// The six clip planes of a view, by index 0 to 5. A new set has all six switched off.
class ZtOaClipPlaneSet {
public:
    static constexpr int kSize = 6;

    int Size() const { return kSize; }
    // The plane of `index`, or null outside 0..5.
    const ZtOaClipPlane* Get(int index) const {
        return index >= 0 && index < kSize ? &planes_[index] : nullptr;
    }
    ZtOaClipPlane* Edit(int index) {
        return index >= 0 && index < kSize ? &planes_[index] : nullptr;
    }

private:
    ZtOaClipPlane planes_[kSize];
};
