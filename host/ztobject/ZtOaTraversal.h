#pragma once
#include "ztlinear/ZtLAffine3f.h"
#include "ztlinear/ZtLBox3f.h"

#include <cstddef>
#include <vector>

class ZtOaNode;

// One step of a path through the scene tree: a node, the link of its parent, up to the
// node where the walk began, whose parent is null, and the transform that the partitions
// on the path compose.
class ZtOaPathLink {
public:
    // `transform` must outlive the link; null stands for the identity.
    ZtOaPathLink(const ZtOaNode* node, const ZtOaPathLink* parent,
                 const ZtLAffine3f* transform = nullptr)
        : node_(node), parent_(parent), transform_(transform) {}

    const ZtOaNode* GetNode() const { return node_; }
    const ZtOaPathLink* GetParent() const { return parent_; }
    // The map from the node's coordinates (a partition's: those of the nodes below it)
    // to the coordinates of the walk's first node's parent: the transforms of every
    // partition on the path, the node's own included, composed from the top down. Null
    // while every one of them is the identity.
    const ZtLAffine3f* GetTransform() const { return transform_; }
    // A box of the node's, such as its bounding box, in the walk's coordinates.
    ZtLBox3f MapBox(const ZtLBox3f& box) const {
        return transform_ ? transform_->TransformBox(box) : box;
    }

private:
    const ZtOaNode* node_;
    const ZtOaPathLink* parent_;
    const ZtLAffine3f* transform_;
};

// A walk over a node tree (ZtOaNode::ApplyTraversal). The links handed to VisitNode live
// only during the call: a traversal that keeps a path copies it into a ZtOaFragment.
class ZtOaTraversal {
public:
    enum Result { kContinue, kSkipChildren, kStop };

    virtual ~ZtOaTraversal() = default;
    // Called for each node reached; `link` holds the node and the path above it.
    virtual Result VisitNode(const ZtOaPathLink& link) = 0;
};

// A node together with the path that led to it and the path's transforms, kept beyond
// the walk.
class ZtOaFragment {
public:
    // Copies the path from `leaf` up to the top of its walk.
    explicit ZtOaFragment(const ZtOaPathLink& leaf);
    ZtOaFragment(const ZtOaFragment& other);
    ZtOaFragment& operator=(const ZtOaFragment& other);
    // Copies the path from `leaf` up in place of the one held, in the room it held: a
    // pick that finds nearer and nearer nodes keeps one fragment.
    void Assign(const ZtOaPathLink& leaf);

    // The link of the node itself; GetParent leads up to the root of the walk.
    const ZtOaPathLink* GetFragPath() const { return &links_.front(); }
    const ZtOaNode* GetNode() const { return links_.front().GetNode(); }
    // The number of links, the node's own included.
    int GetDepth() const { return static_cast<int>(links_.size()); }

private:
    static constexpr std::size_t kIdentity = static_cast<std::size_t>(-1);

    void Link();

    // The node's link first; each link's parent is the next one.
    std::vector<ZtOaPathLink> links_;
    // By link, the place of its transform in `transforms_`, or kIdentity.
    std::vector<std::size_t> transformOf_;
    // Each distinct transform of the path once: links between two partitions share one.
    std::vector<ZtLAffine3f> transforms_;
};
