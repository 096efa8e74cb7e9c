#include "ztlddgn/ZtDgnElementNode.h"

#include "ztlddgn/ZtDgnModel.h"

const ZtOaAttribute* ZtDgnElementNode::FindAttribute(const char* name) const {
    return model_->FindElementAttribute(slot_, name);
}

void ZtDgnElementNode::VisitProperties(ZtOaPropertyVisitor& visitor) const {
    model_->VisitElementProperties(slot_, visitor);
}

int ZtDgnElementNode::GetBoundingBox(ZtLBox3f* box) const {
    if (box)
        *box = model_->GetElementBox(slot_);
    return 1;
}

std::int64_t ZtDgnElementNode::GetElementIndex() const {
    return model_->GetElement(slot_).index;
}

const ZtOaAttribute* ZtDgnGroupNode::FindAttribute(const char* name) const {
    return model_->FindElementAttribute(slot_, name);
}

void ZtDgnGroupNode::VisitProperties(ZtOaPropertyVisitor& visitor) const {
    model_->VisitElementProperties(slot_, visitor);
}

int ZtDgnGroupNode::GetBoundingBox(ZtLBox3f* box) const {
    if (box)
        *box = model_->GetElementBox(slot_);
    return 1;
}

std::int64_t ZtDgnGroupNode::GetElementIndex() const {
    return model_->GetElement(slot_).index;
}
