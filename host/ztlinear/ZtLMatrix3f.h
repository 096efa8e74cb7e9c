#pragma once
#include "ztlinear/ZtLVec3f.h"

// A 3x3 matrix of doubles, kept by rows. It acts on column vectors: M v.
class ZtLMatrix3f {
public:
    // A new matrix is the identity.
    constexpr ZtLMatrix3f() = default;

    void MakeIdentity() { *this = ZtLMatrix3f(); }
    // Fills the rows in reading order: (a b c) is the first row, (g h i) the last.
    void SetValue(double a, double b, double c, double d, double e, double f, double g, double h,
                  double i);

    double Get(int row, int column) const { return m_[row][column]; }
    void Set(int row, int column, double value) { m_[row][column] = value; }

    ZtLVec3f operator*(const ZtLVec3f& v) const;
    ZtLMatrix3f operator*(const ZtLMatrix3f& other) const;
    bool operator==(const ZtLMatrix3f& other) const = default;

private:
    double m_[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
};
