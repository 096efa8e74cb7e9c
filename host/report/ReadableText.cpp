#include "report/ReadableText.h"

#include <cstdio>

std::string ReadableNumber(double value, int digits) {
    char text[32];
    std::snprintf(text, sizeof text, "%.*g", digits, value);
    return text;
}

std::string UnitName(ZtOaUnit::Linear unit) {
    const char* name = ZtOaUnit::Abbreviation(unit);
    return *name ? name : "unit " + std::to_string(static_cast<int>(unit));
}
