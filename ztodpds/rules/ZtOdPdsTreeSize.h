#pragma once
#include <cstddef>
#include <cstdint>

class ZtOdPdsNode;

// The size of a complete expression before its negations are pushed down, measured
// without changing it.
struct ZtOdPdsTreeSize {
    // Nodes on the longest path from the root; a lone statement has depth 1.
    std::size_t depth = 0;
    // Conditions that its flat form would hold if every shared subtree were a copy of its
    // own: negations carried down each path by de Morgan's law, and a statement counted
    // twice where it carries an extra condition already, or where its negation meets an
    // operator without complement. Counts stop growing at `cap`.
    std::uint64_t conditions = 0;
};

// Measures the expression below `root`, in time linear in its distinct nodes. Counts
// above `cap` are given as `cap`.
ZtOdPdsTreeSize ZtOdPdsMeasureTree(const ZtOdPdsNode* root, std::uint64_t cap);
