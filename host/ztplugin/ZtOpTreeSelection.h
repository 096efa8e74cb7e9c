#pragma once
#include "ztplugin/ZtOpFindSpec.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class ZtOaNode;
class ZtOaPartition;
class ZtOpProgress;

// An element that a find spec selected: the model (the nearest partition above it) and
// the element's index in its model's file.
struct ZtOpSelectedElement {
    const ZtOaPartition* model;
    std::int64_t index;
};

// Evaluates each of `specs` on every node below `root` (itself included) that stands for
// an element, in depth-first order. The result holds, for each spec in its order, the
// elements it selected in that order. A node's properties are gathered once for all specs.
// With a progress, the walk reports now and then the share of `elements` (the number of
// element nodes expected) it has passed.
std::vector<std::vector<ZtOpSelectedElement>>
ZtOpSelectInTree(const ZtOaNode& root, const std::vector<const ZtOpFindSpec*>& specs,
                 ZtOpProgress* progress = nullptr, std::size_t elements = 0);
