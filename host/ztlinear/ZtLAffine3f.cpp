#include "ztlinear/ZtLAffine3f.h"

void ZtLAffine3f::MultRight(const ZtLAffine3f& a) {
    // X(A p) = Mx (Ma p + ta) + tx.
    translation_ = matrix_ * a.translation_ + translation_;
    matrix_ = matrix_ * a.matrix_;
}
