#include "ztlinear/ZtLMatrix4f.h"

ZtLMatrix4f ZtLMatrix4f::operator*(const ZtLMatrix4f& other) const {
    ZtLMatrix4f product;
    for (int r = 0; r < 4; ++r)
        for (int k = 0; k < 4; ++k) {
            double sum = 0;
            for (int i = 0; i < 4; ++i)
                sum += m_[r][i] * other.m_[i][k];
            product.m_[r][k] = sum;
        }
    return product;
}

ZtLPos3f operator*(const ZtLPos3f& p, const ZtLMatrix4f& m) {
    double out[4];
    for (int k = 0; k < 4; ++k)
        out[k] = p.x * m.Get(0, k) + p.y * m.Get(1, k) + p.z * m.Get(2, k) + m.Get(3, k);
    return {out[0] / out[3], out[1] / out[3], out[2] / out[3]};
}
