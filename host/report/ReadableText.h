#pragma once
#include "ztlinear/ZtLAffine3f.h"
#include "ztobject/ZtOaUnit.h"

#include <string>

// A number in `digits` significant digits, the one format of the readable summary and the
// page: ten are enough to read, without the noise of a unit conversion's last bits (the JSON
// has the exact values).
std::string ReadableNumber(double value, int digits = 10);
// A linear unit's short name ("m"), or "unit N" for a value outside the enumeration.
std::string UnitName(ZtOaUnit::Linear unit);
// A reference's placement in words, as the summary, the JSON and the page give it:
// "scaled from ft to m, turned 90° about Z, moved by (2.54, 1.27, 0) m". `transform` is
// the reference's; its model counts in `from`, the scene in `to`.
std::string PlacementWords(const ZtLAffine3f& transform, ZtOaUnit::Linear from,
                           ZtOaUnit::Linear to);
