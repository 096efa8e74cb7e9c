#pragma once
#include "ztobject/ZtOaUnit.h"

#include <string>

// A number in `digits` significant digits, the one format of the readable summary and the
// page: ten are enough to read, without the noise of a unit conversion's last bits (the JSON
// has the exact values).
std::string ReadableNumber(double value, int digits = 10);
// A linear unit's short name ("m"), or "unit N" for a value outside the enumeration.
std::string UnitName(ZtOaUnit::Linear unit);
