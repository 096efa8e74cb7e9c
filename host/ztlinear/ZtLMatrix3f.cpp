#include "ztlinear/ZtLMatrix3f.h"

void ZtLMatrix3f::SetValue(double a, double b, double c, double d, double e, double f, double g,
                           double h, double i) {
    const double rows[3][3] = {{a, b, c}, {d, e, f}, {g, h, i}};
    for (int r = 0; r < 3; ++r)
        for (int k = 0; k < 3; ++k)
            m_[r][k] = rows[r][k];
}

ZtLVec3f ZtLMatrix3f::operator*(const ZtLVec3f& v) const {
    return {m_[0][0] * v.x + m_[0][1] * v.y + m_[0][2] * v.z,
            m_[1][0] * v.x + m_[1][1] * v.y + m_[1][2] * v.z,
            m_[2][0] * v.x + m_[2][1] * v.y + m_[2][2] * v.z};
}

ZtLMatrix3f ZtLMatrix3f::operator*(const ZtLMatrix3f& other) const {
    ZtLMatrix3f product;
    for (int r = 0; r < 3; ++r)
        for (int k = 0; k < 3; ++k)
            product.m_[r][k] =
                m_[r][0] * other.m_[0][k] + m_[r][1] * other.m_[1][k] + m_[r][2] * other.m_[2][k];
    return product;
}
