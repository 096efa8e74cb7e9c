#pragma once

// A colour of three components from 0 to 1: red, green, blue.
class ZtLColor3f {
public:
    double r = 0, g = 0, b = 0;

    constexpr ZtLColor3f() = default;
    constexpr ZtLColor3f(double r_, double g_, double b_) : r(r_), g(g_), b(b_) {}

    void SetValue(double r_, double g_, double b_) { r = r_, g = g_, b = b_; }
    constexpr bool operator==(const ZtLColor3f& o) const = default;
};
