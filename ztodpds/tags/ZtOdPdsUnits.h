#pragma once
#include <cstdint>

// Conversions between the integer units of the files and the doubles of the scene. Files
// count lengths in a model's units of resolution (UORs) and angles in whole degrees; the
// scene counts in master units and radians. Towards the file every value is cut towards
// zero and never rounded, so that a value read and written back may lose one unit: 1001
// UORs at 1000 UORs a master unit come back as 1000, and 30 degrees as 29.

// UORs to master units: the integer divided by the factor.
double ZtOdPdsUorsToMaster(std::int64_t uors, double uorsPerMaster);
// Master units to UORs: the value times the factor, cut towards zero. Values beyond the
// range of the result give its nearest end, and a value that is not a number gives 0.
std::int64_t ZtOdPdsMasterToUors(double master, double uorsPerMaster);

double ZtOdPdsDegreesToRadians(std::int32_t degrees);
// Cut towards zero; out of range and not-a-number as for ZtOdPdsMasterToUors.
std::int32_t ZtOdPdsRadiansToDegrees(double radians);
