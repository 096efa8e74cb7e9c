#include "loader/ZtOdPdsDriValues.h"

#include "ztutil/ZtUWideString.h"

#include <cwchar>

bool ZtOdPdsScanTransform(const ZtUWideStringBuffer& value, ZtLMatrix3f* matrix) {
    ZtUWideStringBuffer text = value;
    text.TrimLeft();
    double n[9];
    if (std::swscanf(text.GetString(), L"%lE %lE %lE %lE %lE %lE %lE %lE %lE", &n[0], &n[1], &n[2],
                     &n[3], &n[4], &n[5], &n[6], &n[7], &n[8]) != 9)
        return false;
    matrix->SetValue(n[0], n[1], n[2], n[3], n[4], n[5], n[6], n[7], n[8]);
    return true;
}

bool ZtOdPdsScanPoint(const ZtUWideStringBuffer& value, ZtLPos3f* point) {
    double x, y, z;
    if (std::swscanf(value.GetString(), L" %lE %lE %lE", &x, &y, &z) != 3)
        return false;
    point->SetValue(x, y, z);
    return true;
}

ZtOaUnit::Linear ZtOdPdsFindMasterUnit(const ZtUWideStringBuffer& value) {
    struct Abbreviation {
        const wchar_t* text;
        ZtOaUnit::Linear unit;
    };
    static constexpr Abbreviation kAbbreviations[] = {
        {L"m", ZtOaUnit::kMetres},       {L"cm", ZtOaUnit::kCentimetres},
        {L"mm", ZtOaUnit::kMillimetres}, {L"ft", ZtOaUnit::kFeet},
        {L"'", ZtOaUnit::kFeet},         {L"in", ZtOaUnit::kInches},
        {L"\"", ZtOaUnit::kInches},      {L"yd", ZtOaUnit::kYards},
        {L"km", ZtOaUnit::kKilometres},  {L"mi", ZtOaUnit::kMiles},
        {L"um", ZtOaUnit::kMicrometres}, {L"mil", ZtOaUnit::kMils},
        {L"ui", ZtOaUnit::kMicroinches},
    };
    ZtUWideStringBuffer text = value;
    text.Trim();
    text.LowerCase();
    for (const Abbreviation& a : kAbbreviations)
        if (text == a.text)
            return a.unit;
    return ZtOaUnit::kMetres;
}
