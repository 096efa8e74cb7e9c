#pragma once
#include "ztlinear/ZtLVec3f.h"

// A 4x4 matrix of doubles for projective maps, kept by rows. Points are row vectors
// here, as `p * M` reads: (x y z 1) M gives (X Y Z W), and the point is (X Y Z) / W.
// The translation of an affine map therefore lies in the last row.
class ZtLMatrix4f {
public:
    // A new matrix is the identity.
    constexpr ZtLMatrix4f() = default;

    void MakeIdentity() { *this = ZtLMatrix4f(); }
    double Get(int row, int column) const { return m_[row][column]; }
    void Set(int row, int column, double value) { m_[row][column] = value; }

    // This map followed by `other`: p (A B) = (p A) B.
    ZtLMatrix4f operator*(const ZtLMatrix4f& other) const;
    bool operator==(const ZtLMatrix4f& other) const = default;

private:
    double m_[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
};

// The position through the matrix, divided by W. A point that W takes to 0 (one in the
// eye's own plane, for a perspective matrix) gives components that are not finite. Inline,
// forced where the compiler would stop short: pictures and camera maps place points by
// the million.
[[gnu::always_inline]] inline ZtLPos3f operator*(const ZtLPos3f& p, const ZtLMatrix4f& m) {
    double out[4];
    for (int k = 0; k < 4; ++k)
        out[k] = p.x * m.Get(0, k) + p.y * m.Get(1, k) + p.z * m.Get(2, k) + m.Get(3, k);
    return {out[0] / out[3], out[1] / out[3], out[2] / out[3]};
}
