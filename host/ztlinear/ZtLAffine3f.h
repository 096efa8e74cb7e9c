#pragma once
#include "ztlinear/ZtLMatrix3f.h"
#include "ztlinear/ZtLVec3f.h"

// An affine map of 3D space: p goes to M p + t.
class ZtLAffine3f {
public:
    // A new map is the identity.
    ZtLAffine3f() = default;
    ZtLAffine3f(const ZtLMatrix3f& matrix, const ZtLVec3f& translation)
        : matrix_(matrix), translation_(translation) {}

    const ZtLMatrix3f& GetMatrix() const { return matrix_; }
    const ZtLVec3f& GetTranslation() const { return translation_; }

    // Makes this map X into X after A: A acts first, then the old X.
    void MultRight(const ZtLAffine3f& a);

    ZtLPos3f Transform(const ZtLPos3f& p) const { return matrix_ * p + translation_; }

    bool operator==(const ZtLAffine3f& other) const = default;

private:
    ZtLMatrix3f matrix_;
    ZtLVec3f translation_;
};
