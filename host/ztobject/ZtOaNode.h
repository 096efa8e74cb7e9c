#pragma once
#include <cstdint>

class ZtLBox3f;
class ZtOaAttribute;
class ZtOaProperty;
class ZtOaTraversal;
class ZtUName;

// Receives the properties of a node, each with the category it belongs to.
class ZtOaPropertyVisitor {
public:
    virtual ~ZtOaPropertyVisitor() = default;
    // `property` lives as long as the node that hands it out.
    virtual void Visit(ZtUName* category, const ZtOaProperty& property) = 0;
};

// A node of the host's scene tree. The flags word holds the node's nature in its top
// byte and its property bits in the low 16 bits.
class ZtOaNode {
public:
    // Property bit of a geometry leaf: a node with a bounding box that picks can hit.
    static constexpr std::uint32_t kGeometryBit = 16;
    static constexpr std::uint32_t kGroupFlag = 1u << 24;
    static constexpr std::uint32_t kPartitionFlag = 1u << 25;

    virtual ~ZtOaNode() = default;
    ZtOaNode(const ZtOaNode&) = delete;
    ZtOaNode& operator=(const ZtOaNode&) = delete;

    std::uint32_t GetFlags() const { return flags_; }
    std::uint32_t GetPropertyBits() const { return flags_ & 0xFFFFu; }
    // Nonzero for a ZtOaGroup (bit 24 of the flags word).
    int IsGroup() const { return static_cast<int>((flags_ >> 24) & 1u); }
    // Nonzero for a ZtOaPartition (bit 25).
    int IsPartition() const { return static_cast<int>((flags_ >> 25) & 1u); }

    // The node's attribute of that name, or null. The attribute lives as long as the node.
    virtual const ZtOaAttribute* FindAttribute(const char* name) const;
    // Hands every property of the node to `visitor`, category by category.
    virtual void VisitProperties(ZtOaPropertyVisitor& visitor) const;
    // Writes the node's bounding box and returns 1; 0 for a node without one. Geometry
    // leaves always have one.
    virtual int GetBoundingBox(ZtLBox3f* box) const;
    // The position of the element this node stands for in its model's source file, or -1
    // for a node that stands for no element.
    virtual std::int64_t GetElementIndex() const { return -1; }

    // Walks the tree below this node, this node first, depth first in the order of the
    // children (see ZtOaTraversal).
    virtual void ApplyTraversal(ZtOaTraversal* traversal) const;

protected:
    explicit ZtOaNode(std::uint32_t flags) : flags_(flags) {}

    void SetPropertyBits(std::uint32_t bits) { flags_ = (flags_ & ~0xFFFFu) | (bits & 0xFFFFu); }

private:
    std::uint32_t flags_;
};
