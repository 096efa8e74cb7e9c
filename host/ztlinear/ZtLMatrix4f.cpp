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
