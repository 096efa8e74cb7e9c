#include "app/RedlineOptions.h"

#include "app/OptionValue.h"
#include "ztplugin/ZtOpState.h"

#include <cmath>

namespace {

bool ParseComponent(const std::string& text, double* value) {
    return ParseWhole(text, value) && std::isfinite(*value) && *value >= 0.0 && *value <= 1.0;
}

constexpr int kMaxThickness = 1000;

} // namespace

bool ParseRedlineColor(const std::string& text, ZtLColor3f* color, std::string* error) {
    const std::size_t first = text.find(',');
    const std::size_t second = first == std::string::npos ? first : text.find(',', first + 1);
    double r = 0, g = 0, b = 0;
    if (second == std::string::npos || !ParseComponent(text.substr(0, first), &r) ||
        !ParseComponent(text.substr(first + 1, second - first - 1), &g) ||
        !ParseComponent(text.substr(second + 1), &b)) {
        *error = "--redline-color takes three numbers from 0 to 1, R,G,B, not '" + text + "'";
        return false;
    }
    color->SetValue(r, g, b);
    return true;
}

bool ParseRedlineThickness(const std::string& text, int* thickness, std::string* error) {
    int value = 0;
    if (!ParseWhole(text, &value) || value < 1 || value > kMaxThickness) {
        *error = "--redline-thickness takes a whole number from 1 to " +
                 std::to_string(kMaxThickness) + ", not '" + text + "'";
        return false;
    }
    *thickness = value;
    return true;
}

void ApplyRedlineOptions(ZtOpState& state, const std::optional<ZtLColor3f>& color,
                         const std::optional<int>& thickness) {
    ZtOpRedlineTool* tool = state.GetRedlineTool();
    if (color)
        tool->SetCurLineColor(*color);
    if (thickness)
        tool->SetCurLineThickness(*thickness);
}
