#include "ztutil/ZtUOptionSet.h"

#include <string>

void ZtUOptionSet::Define(int id, const wchar_t* name, const ZtUData& defaultValue) {
    Option& option = options_[id];
    option.name.SetString(name);
    option.defaultValue = defaultValue;
    option.value = defaultValue;
}

int ZtUOptionSet::GetValue(int id, ZtUData* out) const {
    auto at = options_.find(id);
    if (at == options_.end())
        return 0;
    if (out)
        *out = at->second.value;
    return 1;
}

int ZtUOptionSet::SetValue(int id, const ZtUData& value, ZtUWideStringBuffer* error) {
    auto at = options_.find(id);
    if (at == options_.end()) {
        if (error)
            error->SetString((L"no option " + std::to_wstring(id)).c_str());
        return 0;
    }
    if (value.GetType() != at->second.defaultValue.GetType()) {
        if (error)
            error->SetString(
                (L"option " + std::to_wstring(id) + L" takes another kind of value").c_str());
        return 0;
    }
    at->second.value = value;
    return 1;
}

void ZtUOptionSet::Reset() {
    for (auto& entry : options_)
        entry.second.value = entry.second.defaultValue;
}
