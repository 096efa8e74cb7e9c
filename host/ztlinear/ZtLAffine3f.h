#pragma once
#include "ztlinear/ZtLBox3f.h"
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
    // The smallest axis-aligned box that holds the image of `box`; an empty box stays
    // empty. Each bound is summed term by term from the corner coordinates that make it
    // least or greatest, in the order Transform sums, so that the box of a box inside
    // another never reaches beyond the other's, even after rounding. A zero coefficient
    // contributes nothing, so that an unbounded box keeps its infinities where the map
    // does not mix them in.
    ZtLBox3f TransformBox(const ZtLBox3f& box) const;

    bool IsIdentity() const { return *this == ZtLAffine3f(); }
    bool operator==(const ZtLAffine3f& other) const = default;

private:
    ZtLMatrix3f matrix_;
    ZtLVec3f translation_;
};
