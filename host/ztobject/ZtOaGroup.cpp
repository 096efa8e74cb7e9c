#include "ztobject/ZtOaGroup.h"

ZtOaGroup::ZtOaGroup(std::uint32_t flags, Ownership ownership)
    : ZtOaNode(flags | kGroupFlag), ownsChildren_(ownership == Ownership::kOwnsChildren) {}

ZtOaGroup::~ZtOaGroup() {
    if (ownsChildren_)
        for (ZtOaNode* child : children_)
            delete child;
}

ZtOaNode* ZtOaGroup::GetChild(int index) const {
    return index >= 0 && index < GetNumChildren() ? children_[static_cast<std::size_t>(index)]
                                                  : nullptr;
}

void ZtOaGroup::AddChild(ZtOaNode* child) {
    if (child)
        children_.push_back(child);
}

const ZtOaAttribute* ZtOaGroup::FindAttribute(const char* name) const {
    return attributes_.Find(name);
}

void ZtOaGroup::VisitProperties(ZtOaPropertyVisitor& visitor) const {
    attributes_.VisitProperties(visitor);
}
