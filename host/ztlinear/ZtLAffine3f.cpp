#include "ztlinear/ZtLAffine3f.h"

void ZtLAffine3f::MultRight(const ZtLAffine3f& a) {
    // X(A p) = Mx (Ma p + ta) + tx.
    translation_ = matrix_ * a.translation_ + translation_;
    matrix_ = matrix_ * a.matrix_;
}

ZtLBox3f ZtLAffine3f::TransformBox(const ZtLBox3f& box) const {
    if (box.IsEmpty())
        return box;
    const ZtLPos3f& lo = box.GetMin();
    const ZtLPos3f& hi = box.GetMax();
    double low[3] = {}, high[3] = {};
    for (int row = 0; row < 3; ++row) {
        double terms[2][3];
        for (int k = 0; k < 3; ++k) {
            const double m = matrix_.Get(row, k);
            const double a = m == 0 ? 0.0 : m * lo[k];
            const double b = m == 0 ? 0.0 : m * hi[k];
            terms[0][k] = m >= 0 ? a : b;
            terms[1][k] = m >= 0 ? b : a;
        }
        low[row] = terms[0][0] + terms[0][1] + terms[0][2] + translation_[row];
        high[row] = terms[1][0] + terms[1][1] + terms[1][2] + translation_[row];
    }
    return ZtLBox3f(ZtLPos3f(low[0], low[1], low[2]), ZtLPos3f(high[0], high[1], high[2]));
}
