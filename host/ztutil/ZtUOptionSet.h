#pragma once
#include "ztutil/ZtUData.h"
#include "ztutil/ZtURefCounted.h"
#include "ztutil/ZtUWideString.h"

#include <map>

// A plug-in's options: numbered values, each of a fixed kind with a default.
class ZtUOptionSet : public ZtURefCounted {
public:
    // Declares option `id` with its display name; its kind is that of `defaultValue`.
    void Define(int id, const wchar_t* name, const ZtUData& defaultValue);

    // Writes the option's value to `out`; 0 for an unknown option.
    int GetValue(int id, ZtUData* out) const;
    // Sets the option; 0 with a reason in `error` (if given) for an unknown option or a
    // value of another kind.
    int SetValue(int id, const ZtUData& value, ZtUWideStringBuffer* error);
    // Puts every option back to its default.
    void Reset();

private:
    struct Option {
        ZtUWideString name;
        ZtUData defaultValue;
        ZtUData value;
    };
    std::map<int, Option> options_;
};
