#include "tags/ZtOdPdsUnits.h"

#include <cmath>
#include <limits>

namespace {

// The conversion of a double to an integer type is undefined where the cut value falls
// outside the type's range. The lowest value is a power of two, exact as a double, and
// so is the bound above the range, its negative.
template <class Int> Int CutTowardsZero(double value) {
    constexpr double kLowest = static_cast<double>(std::numeric_limits<Int>::min());
    if (std::isnan(value))
        return 0;
    if (value >= -kLowest)
        return std::numeric_limits<Int>::max();
    if (value <= kLowest)
        return std::numeric_limits<Int>::min();
    return static_cast<Int>(value);
}

constexpr double kRadiansPerDegree = 0.017453292519943295;
constexpr double kDegreesPerRadian = 57.29577951308232;

} // namespace

double ZtOdPdsUorsToMaster(std::int64_t uors, double uorsPerMaster) {
    return static_cast<double>(uors) / uorsPerMaster;
}

std::int64_t ZtOdPdsMasterToUors(double master, double uorsPerMaster) {
    return CutTowardsZero<std::int64_t>(master * uorsPerMaster);
}

double ZtOdPdsDegreesToRadians(std::int32_t degrees) {
    return static_cast<double>(degrees) * kRadiansPerDegree;
}

std::int32_t ZtOdPdsRadiansToDegrees(double radians) {
    return CutTowardsZero<std::int32_t>(radians * kDegreesPerRadian);
}
