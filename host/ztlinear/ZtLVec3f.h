#pragma once
#include <cmath>

// Points and directions in 3D, in doubles despite the host's "3f" names: the host keeps
// model coordinates in master units, where float would lose UORs.

class ZtLVec {
public:
    // The absolute tolerance of the host's geometry.
    static constexpr double GetResabs() { return 1e-9; }
};

class ZtLVec3f {
public:
    double x = 0, y = 0, z = 0;

    constexpr ZtLVec3f() = default;
    constexpr ZtLVec3f(double x_, double y_, double z_) : x(x_), y(y_), z(z_) {}

    void SetValue(double x_, double y_, double z_) { x = x_, y = y_, z = z_; }
    double operator[](int i) const { return i == 0 ? x : i == 1 ? y : z; }
    double& operator[](int i) { return i == 0 ? x : i == 1 ? y : z; }

    constexpr ZtLVec3f operator+(const ZtLVec3f& o) const { return {x + o.x, y + o.y, z + o.z}; }
    constexpr ZtLVec3f operator-(const ZtLVec3f& o) const { return {x - o.x, y - o.y, z - o.z}; }
    constexpr ZtLVec3f operator-() const { return {-x, -y, -z}; }
    constexpr ZtLVec3f operator*(double s) const { return {x * s, y * s, z * s}; }
    constexpr ZtLVec3f operator/(double s) const { return {x / s, y / s, z / s}; }
    ZtLVec3f& operator+=(const ZtLVec3f& o) { return *this = *this + o; }
    ZtLVec3f& operator-=(const ZtLVec3f& o) { return *this = *this - o; }
    ZtLVec3f& operator*=(double s) { return *this = *this * s; }
    ZtLVec3f& operator/=(double s) { return *this = *this / s; }
    constexpr bool operator==(const ZtLVec3f& o) const = default;

    constexpr double Dot(const ZtLVec3f& o) const { return x * o.x + y * o.y + z * o.z; }
    constexpr ZtLVec3f Cross(const ZtLVec3f& o) const {
        return {y * o.z - z * o.y, z * o.x - x * o.z, x * o.y - y * o.x};
    }
    double Length() const { return std::sqrt(Dot(*this)); }
    // This vector scaled to length 1; the zero vector stays zero.
    ZtLVec3f Normalized() const {
        const double length = Length();
        return length > 0 ? *this / length : *this;
    }
};

// A position; it shares the vector's arithmetic.
using ZtLPos3f = ZtLVec3f;

// A direction of length 1.
class ZtLUnitVec3f : public ZtLVec3f {
public:
    constexpr ZtLUnitVec3f() : ZtLVec3f(0, 0, 1) {}
    // Normalises; a zero vector gives +Z.
    ZtLUnitVec3f(const ZtLVec3f& v) { SetValue(v.x, v.y, v.z); }
    ZtLUnitVec3f(double x_, double y_, double z_) { SetValue(x_, y_, z_); }

    void SetValue(double x_, double y_, double z_) {
        const ZtLVec3f n = ZtLVec3f(x_, y_, z_).Normalized();
        if (n.Length() == 0)
            ZtLVec3f::SetValue(0, 0, 1);
        else
            ZtLVec3f::SetValue(n.x, n.y, n.z);
    }
    static constexpr ZtLVec3f X() { return {1, 0, 0}; }
    static constexpr ZtLVec3f Y() { return {0, 1, 0}; }
    static constexpr ZtLVec3f Z() { return {0, 0, 1}; }
};

class ZtLPos2f {
public:
    double x = 0, y = 0;
    constexpr ZtLPos2f() = default;
    constexpr ZtLPos2f(double x_, double y_) : x(x_), y(y_) {}
    constexpr bool operator==(const ZtLPos2f& o) const = default;
};
