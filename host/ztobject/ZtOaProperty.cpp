#include "ztobject/ZtOaProperty.h"

#include "ztutil/ZtUName.h"

#include <cstring>

const char* ZtOaProperty::GetInternalName() const {
    return name_ ? name_->GetInternal().GetString() : nullptr;
}

const ZtOaProperty* ZtOaPropertyVector::Get(int index) const {
    return index >= 0 && index < Size() ? &properties_[static_cast<std::size_t>(index)] : nullptr;
}

ZtOaProperty* ZtOaPropertyVector::Edit(int index) {
    return index >= 0 && index < Size() ? &properties_[static_cast<std::size_t>(index)] : nullptr;
}

const ZtOaProperty* ZtOaPropertyVector::Find(const char* internalName) const {
    if (!internalName)
        return nullptr;
    for (const ZtOaProperty& property : properties_) {
        const char* name = property.GetInternalName();
        if (name && std::strcmp(name, internalName) == 0)
            return &property;
    }
    return nullptr;
}
