#include "ztobject/ZtOaAttribute.h"

#include "ztobject/ZtOaNode.h"
#include "ztutil/ZtUName.h"

ZtOaPropertyAttribute::ZtOaPropertyAttribute(ZtUName* category)
    : ZtOaAttribute(category ? category->GetInternal().GetString() : "", kPropertyAttribute),
      category_(category) {}

void ZtOaAttributeList::Add(ZtOaAttribute* attribute) {
    // Taken with the call: an add that fails frees the attribute.
    std::unique_ptr<ZtOaAttribute> owned(attribute);
    if (owned)
        attributes_.push_back(std::move(owned));
}

const ZtOaAttribute* ZtOaAttributeList::Find(const char* name) const {
    if (!name)
        return nullptr;
    for (const auto& attribute : attributes_)
        if (attribute->GetName().Equal(name))
            return attribute.get();
    return nullptr;
}

const ZtOaAttribute* ZtOaAttributeList::Get(int index) const {
    return index >= 0 && index < Size() ? attributes_[static_cast<std::size_t>(index)].get()
                                        : nullptr;
}

void ZtOaAttributeList::VisitProperties(ZtOaPropertyVisitor& visitor) const {
    for (const auto& attribute : attributes_) {
        if (attribute->GetKind() != ZtOaAttribute::kPropertyAttribute)
            continue;
        const auto& properties = static_cast<const ZtOaPropertyAttribute&>(*attribute);
        const ZtOaPropertyVector& vector = properties.GetPropertyVector();
        for (int i = 0; i < vector.Size(); ++i)
            visitor.Visit(properties.GetCategory(), *vector.Get(i));
    }
}
