#include "ztobject/ZtOaUnit.h"

namespace {

struct UnitInfo {
    double metres;
    const char* abbreviation;
};

constexpr UnitInfo kUnits[ZtOaUnit::kNumLinear] = {
    {1.0, "m"},     {0.01, "cm"},     {0.001, "mm"},   {0.3048, "ft"},
    {0.0254, "in"}, {0.9144, "yd"},   {1000.0, "km"},  {1609.344, "mi"},
    {1e-6, "um"},   {2.54e-5, "mil"}, {2.54e-8, "ui"},
};

} // namespace

double ZtOaUnit::SizeInMetres(Linear unit) {
    return IsValid(unit) ? kUnits[unit].metres : 0.0;
}

double ZtOaUnit::ScaleFactor(Linear a, Linear b) {
    if (a == b || !IsValid(a) || !IsValid(b))
        return 1.0;
    return kUnits[a].metres / kUnits[b].metres;
}

const char* ZtOaUnit::Abbreviation(Linear unit) {
    return IsValid(unit) ? kUnits[unit].abbreviation : "";
}
