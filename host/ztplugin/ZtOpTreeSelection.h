#pragma once
#include "ztplugin/ZtOpFindSpec.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class ZtOaNode;
class ZtOaPartition;
class ZtOpProgress;

// The elements that a find query selected, in the walk's order: each element's index in its
// model's file, and the models (the nearest partition above each element) as runs of
// consecutive elements, so that a selection costs about its indices' memory.
struct ZtOpTreeSelection {
    struct Run {
        const ZtOaPartition* model;
        // The run's elements are indices[end of the run before (or 0), end).
        std::size_t end;
    };
    std::vector<Run> runs;
    std::vector<std::int64_t> indices;
};

// Evaluates each of `specs` on every node below `root` (itself included) that stands for
// an element, in depth-first order. The result holds, for each find query in its order, the
// elements it selected in that order. A node's properties are gathered once for all find queries,
// and the find queries are evaluated as ZtOpFindSpecEvaluator does.
// With a progress, the walk reports now and then the share of `elements` (the number of
// element nodes expected) it has passed.
std::vector<ZtOpTreeSelection> ZtOpSelectInTree(const ZtOaNode& root,
                                                const std::vector<const ZtOpFindSpec*>& specs,
                                                ZtOpProgress* progress = nullptr,
                                                std::size_t elements = 0);
