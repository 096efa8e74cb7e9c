#pragma once
#include <cstdint>

// Something that host code derives from a node's subtree and keeps with the node, such
// as an index of its geometry. A cache records the tree's edit count at the time it was
// made (ZtOaGroup::GetEditCount) and is stale once that count has moved on.
class ZtOaNodeCache {
public:
    explicit ZtOaNodeCache(std::uint64_t editCount) : editCount_(editCount) {}
    virtual ~ZtOaNodeCache() = default;
    ZtOaNodeCache(const ZtOaNodeCache&) = delete;
    ZtOaNodeCache& operator=(const ZtOaNodeCache&) = delete;

    std::uint64_t GetEditCount() const { return editCount_; }

private:
    std::uint64_t editCount_;
};
