#pragma once
#include "ztutil/ZtUData.h"

#include <vector>

class ZtUName;

// A named value of a node. The name is an interned name of the document's dictionary,
// which outlives the properties that use it; a property holds no count on it.
class ZtOaProperty {
public:
    ZtOaProperty(ZtUName* name, const ZtUData& value) : name_(name), value_(value) {}

    ZtUName* GetName() const { return name_; }
    // The name's internal form, or null for a property without a name.
    const char* GetInternalName() const;
    const ZtUData& GetValue() const { return value_; }
    void SetValue(const ZtUData& value) { value_ = value; }

private:
    ZtUName* name_;
    ZtUData value_;
};

// Properties in their order.
class ZtOaPropertyVector {
public:
    int Size() const { return static_cast<int>(properties_.size()); }
    // The property at `index`, or null outside the vector.
    const ZtOaProperty* Get(int index) const;
    ZtOaProperty* Edit(int index);
    void PushBack(const ZtOaProperty& property) { properties_.push_back(property); }
    // The first property with this internal name, or null.
    const ZtOaProperty* Find(const char* internalName) const;

private:
    std::vector<ZtOaProperty> properties_;
};
