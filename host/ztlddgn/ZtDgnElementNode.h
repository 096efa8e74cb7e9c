#pragma once
#include "ztobject/ZtOaGroup.h"
#include "ztobject/ZtOaNode.h"

#include <cstdint>

class ZtDgnModel;

// The node of a simple graphic element: a geometry leaf whose data lies in its model's
// element store (at `slot`). Nodes live in the model's storage and die with it.
class ZtDgnElementNode : public ZtOaNode {
public:
    ZtDgnElementNode(const ZtDgnModel* model, std::uint32_t slot)
        : ZtOaNode(kGeometryBit), slot_(slot), model_(model) {}

    std::uint32_t GetSlot() const { return slot_; }
    const ZtDgnModel* GetModel() const { return model_; }

    const ZtOaAttribute* FindAttribute(const char* name) const override;
    void VisitProperties(ZtOaPropertyVisitor& visitor) const override;
    int GetBoundingBox(ZtLBox3f* box) const override;
    std::int64_t GetElementIndex() const override;

private:
    std::uint32_t slot_;
    const ZtDgnModel* model_;
};

// The node of a cell or complex element, with its components as children.
class ZtDgnGroupNode : public ZtOaGroup {
public:
    ZtDgnGroupNode(const ZtDgnModel* model, std::uint32_t slot)
        : ZtOaGroup(0, Ownership::kBorrowsChildren), slot_(slot), model_(model) {}

    std::uint32_t GetSlot() const { return slot_; }
    const ZtDgnModel* GetModel() const { return model_; }
    // For the loader, while the model is being built.
    void AddComponent(ZtOaNode* component) { AppendChild(component); }

    const ZtOaAttribute* FindAttribute(const char* name) const override;
    void VisitProperties(ZtOaPropertyVisitor& visitor) const override;
    int GetBoundingBox(ZtLBox3f* box) const override;
    std::int64_t GetElementIndex() const override;

private:
    std::uint32_t slot_;
    const ZtDgnModel* model_;
};
