#pragma once
#include "ztlinear/ZtLBox3f.h"
#include "ztobject/ZtOaAttribute.h"
#include "ztobject/ZtOaNode.h"

#include <cstdint>

// A geometry leaf made in memory: a bounding box, attributes, and optionally the index
// of the element it stands for.
class ZtOaShape : public ZtOaNode {
public:
    explicit ZtOaShape(const ZtLBox3f& box, std::int64_t elementIndex = -1)
        : ZtOaNode(kGeometryBit), box_(box), elementIndex_(elementIndex) {}

    // Takes ownership.
    void AddAttribute(ZtOaAttribute* attribute) { attributes_.Add(attribute); }
    const ZtOaAttributeList& GetAttributes() const { return attributes_; }

    const ZtOaAttribute* FindAttribute(const char* name) const override {
        return attributes_.Find(name);
    }
    void VisitProperties(ZtOaPropertyVisitor& visitor) const override;
    int GetBoundingBox(ZtLBox3f* box) const override;
    std::int64_t GetElementIndex() const override { return elementIndex_; }

private:
    ZtLBox3f box_;
    std::int64_t elementIndex_;
    ZtOaAttributeList attributes_;
};
