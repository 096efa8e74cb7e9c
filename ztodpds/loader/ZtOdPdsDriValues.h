#pragma once
#include "ztlinear/ZtLMatrix3f.h"
#include "ztlinear/ZtLVec3f.h"
#include "ztobject/ZtOaUnit.h"

class ZtUWideStringBuffer;

// The values of a control file's transform and unit blocks. Numbers are read with the C
// library's wide scan, under the process's numeric locale: optionally signed, in any
// form the conversion takes, separated by any white space; text behind the last number
// needed is ignored.

// A `transform` value: nine numbers, the matrix's rows in reading order. Returns false
// and leaves `matrix` alone unless all nine were read.
bool ZtOdPdsScanTransform(const ZtUWideStringBuffer& value, ZtLMatrix3f* matrix);
// An `old_origin` or `new_origin` value: x, y and z. Returns false and leaves `point`
// alone unless all three were read.
bool ZtOdPdsScanPoint(const ZtUWideStringBuffer& value, ZtLPos3f* point);
// A `master_unit` value: a unit's abbreviation, with white space around it and capitals
// allowed. Anything else, the empty value too, means metres.
ZtOaUnit::Linear ZtOdPdsFindMasterUnit(const ZtUWideStringBuffer& value);
