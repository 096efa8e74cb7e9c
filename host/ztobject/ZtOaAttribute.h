#pragma once
#include "ztobject/ZtOaProperty.h"
#include "ztutil/ZtUString.h"

#include <cstdint>
#include <memory>
#include <vector>

class ZtOaPropertyVisitor;
class ZtUName;

// A piece of data attached to a node, found by its name.
class ZtOaAttribute {
public:
    enum Kind { kNat64Attribute, kPropertyAttribute };

    virtual ~ZtOaAttribute() = default;
    ZtOaAttribute(const ZtOaAttribute&) = delete;
    ZtOaAttribute& operator=(const ZtOaAttribute&) = delete;

    const ZtUString& GetName() const { return name_; }
    Kind GetKind() const { return kind_; }

protected:
    ZtOaAttribute(const char* name, Kind kind) : name_(name), kind_(kind) {}

private:
    ZtUString name_;
    Kind kind_;
};

// An unsigned 64-bit value.
class ZtOaNat64Attribute : public ZtOaAttribute {
public:
    ZtOaNat64Attribute(const char* name, std::uint64_t value)
        : ZtOaAttribute(name, kNat64Attribute), value_(value) {}

    std::uint64_t GetValue() const { return value_; }
    void SetValue(std::uint64_t value) { value_ = value; }

private:
    std::uint64_t value_;
};

// The properties of one category. The attribute is found by the category's internal name.
class ZtOaPropertyAttribute : public ZtOaAttribute {
public:
    explicit ZtOaPropertyAttribute(ZtUName* category);

    ZtUName* GetCategory() const { return category_; }
    const ZtOaPropertyVector& GetPropertyVector() const { return properties_; }
    ZtOaPropertyVector& EditPropertyVector() { return properties_; }

private:
    ZtUName* category_;
    ZtOaPropertyVector properties_;
};

// The attributes of a node, owned, in the order they were added.
class ZtOaAttributeList {
public:
    // Takes ownership with the call, and frees the attribute if the add fails.
    void Add(ZtOaAttribute* attribute);
    // The first attribute of that name, or null.
    const ZtOaAttribute* Find(const char* name) const;
    int Size() const { return static_cast<int>(attributes_.size()); }
    const ZtOaAttribute* Get(int index) const;
    // Hands the properties of every property attribute to `visitor`, with its category.
    void VisitProperties(ZtOaPropertyVisitor& visitor) const;

private:
    std::vector<std::unique_ptr<ZtOaAttribute>> attributes_;
};
