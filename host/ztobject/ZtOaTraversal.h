#pragma once
#include <vector>

class ZtOaNode;

// One step of a path through the scene tree: a node and the link of its parent, up to
// the node where the walk began, whose parent is null.
class ZtOaPathLink {
public:
    ZtOaPathLink(const ZtOaNode* node, const ZtOaPathLink* parent) : node_(node), parent_(parent) {}

    const ZtOaNode* GetNode() const { return node_; }
    const ZtOaPathLink* GetParent() const { return parent_; }

private:
    const ZtOaNode* node_;
    const ZtOaPathLink* parent_;
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

// A node together with the path that led to it, kept beyond the walk.
class ZtOaFragment {
public:
    // Copies the path from `leaf` up to the top of its walk.
    explicit ZtOaFragment(const ZtOaPathLink& leaf);
    ZtOaFragment(const ZtOaFragment& other);
    ZtOaFragment& operator=(const ZtOaFragment& other);

    // The link of the node itself; GetParent leads up to the root of the walk.
    const ZtOaPathLink* GetFragPath() const { return &links_.front(); }
    const ZtOaNode* GetNode() const { return links_.front().GetNode(); }
    // The number of links, the node's own included.
    int GetDepth() const { return static_cast<int>(links_.size()); }

private:
    void Link();

    // The node's link first; each link's parent is the next one.
    std::vector<ZtOaPathLink> links_;
};
