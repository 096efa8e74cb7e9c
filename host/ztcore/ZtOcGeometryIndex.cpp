#include "ztcore/ZtOcGeometryIndex.h"

#include "ztcore/ZtOcContext.h"
#include "ztcore/ZtOcPickFrustumTraversal.h"
#include "ztobject/ZtOaGroup.h"
#include "ztobject/ZtOaPartition.h"
#include "ztobject/ZtOaTraversal.h"
#include "ztutil/ZtUParallel.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>

namespace {

// Walks the nodes below a partition in walk order, handing each to `visit` with its
// ordinal and its parent's (kTop for the partition's children), up to `limit` nodes.
// Nested partitions are visited but not entered. Keeps its own stack, so that no depth
// of nesting can exhaust the call stack.
template <class Visit>
void WalkBelow(const ZtOaPartition& partition, std::uint32_t limit, Visit&& visit) {
    constexpr std::uint32_t kTop = 0xFFFFFFFFu;
    struct Frame {
        const ZtOaGroup* group;
        int next;
        std::uint32_t ordinal;
    };
    std::vector<Frame> frames = {{&partition, 0, kTop}};
    std::uint32_t ordinal = 0;
    while (!frames.empty() && ordinal < limit) {
        Frame& frame = frames.back();
        if (frame.next >= frame.group->GetNumChildren()) {
            frames.pop_back();
            continue;
        }
        const ZtOaNode* node = frame.group->GetChild(frame.next++);
        const std::uint32_t parent = frame.ordinal;
        // A parent is listed before its children: LinkPath climbs to ever smaller ordinals.
        assert(parent == kTop || parent < ordinal);
        visit(node, ordinal, parent);
        if (node->IsGroup() && !node->IsPartition())
            frames.push_back({static_cast<const ZtOaGroup*>(node), 0, ordinal});
        ++ordinal;
    }
}

} // namespace

const ZtOcGeometryIndex& ZtOcGeometryIndex::Of(const ZtOaPartition& partition) {
    auto* index = dynamic_cast<ZtOcGeometryIndex*>(partition.GetCache());
    if (!index || index->GetEditCount() != ZtOaGroup::GetEditCount()) {
        auto made = std::make_unique<ZtOcGeometryIndex>(partition);
        index = made.get();
        partition.SetCache(std::move(made));
    }
    return *index;
}

void ZtOcGeometryIndex::MakeAll(const std::vector<const ZtOaPartition*>& partitions,
                                std::size_t threads) {
    // Which thread makes which index changes nothing in it.
    ZtUParallelFor(partitions.size(), ZtUThreadsFor(threads),
                   [&](std::size_t i) { Of(*partitions[i]); });
}

ZtOcGeometryIndex::ZtOcGeometryIndex(const ZtOaPartition& partition)
    : ZtOaNodeCache(ZtOaGroup::GetEditCount()) {
    Collect(partition);
    for (const Nested& nested : nested_)
        bounds_.Extend(nested.bounds);
}

std::size_t ZtOcGeometryIndex::GetMemoryBytes() const {
    return sizeof *this + nodes_.capacity() * sizeof(nodes_[0]) +
           parents_.capacity() * sizeof(parents_[0]) + hierarchy_.GetMemoryBytes() +
           odd_.capacity() * sizeof(odd_[0]) + nested_.capacity() * sizeof(nested_[0]);
}

void ZtOcGeometryIndex::Collect(const ZtOaPartition& partition) {
    // Ordinals are 32 bits wide, with one value kept for "none": a subtree beyond that
    // is indexed as far as it goes. The lists are made for the partition's children, all
    // that a model of plain elements has; a deeper one grows them, and they are cut to
    // their size at the end.
    const auto guess = static_cast<std::size_t>(std::max(0, partition.GetNumChildren()));
    ZtOcBoxHierarchy::Builder builder(guess);
    std::size_t held = 0;
    auto take = [&](const ZtLBox3f& box, std::uint32_t ordinal) {
        if (box.IsEmpty())
            return;
        bounds_.Extend(box);
        if (ZtOcBoxHierarchy::Holds(box) && held < ZtOcBoxHierarchy::kMostItems) {
            builder.Add(box, ordinal);
            ++held;
        } else {
            odd_.push_back(ordinal);
        }
    };
    if (partition.HasFlatBoxes()) {
        flat_ = &partition;
        const std::size_t count = std::min<std::size_t>(guess, kNone - 1);
        constexpr std::size_t kBatch = 256;
        ZtLBox3f boxes[kBatch];
        for (std::size_t first = 0; first < count; first += kBatch) {
            const std::size_t n = std::min(kBatch, count - first);
            partition.FillChildBoxes(first, n, boxes);
            // As a rule every box of a run is held: the run goes to the builder at
            // once. Otherwise each box is taken alone.
            if (held + n <= ZtOcBoxHierarchy::kMostItems &&
                builder.AddRun(boxes, n, static_cast<std::uint32_t>(first), bounds_)) {
                held += n;
                continue;
            }
            for (std::size_t i = 0; i < n; ++i)
                take(boxes[i], static_cast<std::uint32_t>(first + i));
        }
        hierarchy_ = builder.Finish();
        return;
    }

    nodes_.reserve(guess);
    parents_.reserve(guess);
    WalkBelow(partition, kNone - 1,
              [&](const ZtOaNode* node, std::uint32_t ordinal, std::uint32_t parent) {
                  nodes_.push_back(node);
                  parents_.push_back(parent);
                  ZtLBox3f box;
                  if (node->GetBoundingBox(&box))
                      take(box, ordinal);
                  if (node->IsPartition()) {
                      const auto& nested = *static_cast<const ZtOaPartition*>(node);
                      const ZtLAffine3f& transform = nested.GetTransform();
                      const ZtOcGeometryIndex& index = Of(nested);
                      // In walk order, which Search offers them in.
                      assert(nested_.empty() || nested_.back().ordinal < ordinal);
                      nested_.push_back({ordinal, &index,
                                         transform.IsIdentity() ? nullptr : &transform,
                                         transform.TransformBox(index.GetBounds())});
                  }
              });
    nodes_.shrink_to_fit();
    parents_.shrink_to_fit();
    hierarchy_ = builder.Finish();
}

std::uint32_t ZtOcGeometryIndex::FindBest(const ZtOcPickFrustumTraversal& pick,
                                          const ZtOaPathLink& link, ZtOcContext* context,
                                          double* depth) const {
    const ZtLPickFrustum3f& frustum = pick.GetFrustum();
    // A candidate must come below the pick's present best; of own items, below the best
    // so far or as near and earlier.
    double bestDepth = pick.GetBound();
    std::uint32_t best = kNone;
    // Items as near as the best may still win if they come before it; none may before an
    // own best is found, since the pick keeps the earlier of equals.
    std::uint32_t tieLimit = 0;
    std::uint64_t tests = 0;
    auto mayBeat = [&](double d, std::uint32_t ordinal) {
        return d < bestDepth || (d == bestDepth && ordinal < tieLimit);
    };
    // The exact test of one item, its box placed by the transforms above the partition.
    auto consider = [&](std::uint32_t ordinal) {
        const ZtOaNode* node = NodeAt(ordinal);
        ZtLBox3f box;
        node->GetBoundingBox(&box);
        box = link.MapBox(box);
        ++tests;
        if (!pick.IsCandidate(node->GetPropertyBits(), box))
            return;
        const double d = frustum.Depth(box);
        if (mayBeat(d, ordinal)) {
            bestDepth = d;
            best = tieLimit = ordinal;
        }
    };
    for (std::uint32_t ordinal : odd_)
        consider(ordinal);

    if (!hierarchy_.IsEmpty()) {
        // Boxes are tested where the transforms above the partition place them: a placed
        // box holds the placed boxes of what it holds, so the hierarchy prunes as it
        // does unplaced.
        struct Pending {
            std::uint32_t node;
            double depth;
            ZtLBox3f placed;
        };
        auto pending = [&](std::uint32_t node) {
            const ZtLBox3f placed = link.MapBox(hierarchy_.GetNodeBox(node));
            return Pending{node, frustum.Depth(placed), placed};
        };
        // Each step pops one node and pushes at most two, so the stack never holds more
        // than the hierarchy's depth plus one. Each split of a range either lengthens the
        // common start of its 64-bit keys or halves it, so the depth stays below 100.
        constexpr int kStackSize = 100;
        Pending stack[kStackSize];
        int top = 0;
        stack[top++] = pending(ZtOcBoxHierarchy::kRoot);
        while (top > 0) {
            const Pending at = stack[--top];
            if (!(at.depth < bestDepth ||
                  (at.depth == bestDepth && hierarchy_.GetMinOrdinal(at.node) < tieLimit)))
                continue;
            ++tests;
            // A node only narrows the search, which the exact test of each item ends: the
            // frustum's chief axes turn away nearly all that the full test would.
            if (!frustum.MayIntersect(at.placed))
                continue;
            if (!hierarchy_.IsLeaf(at.node)) {
                assert(top + 2 <= kStackSize);
                const Pending a = pending(hierarchy_.GetFirstChild(at.node));
                const Pending b = pending(hierarchy_.GetSecondChild(at.node));
                // The nearer child goes on top, so that it is searched first; of equally
                // near ones the one with the earlier items, which wins ties.
                const bool aFirst = a.depth < b.depth ||
                                    (a.depth == b.depth && hierarchy_.GetMinOrdinal(a.node) <=
                                                               hierarchy_.GetMinOrdinal(b.node));
                stack[top++] = aFirst ? b : a;
                stack[top++] = aFirst ? a : b;
                continue;
            }
            const std::uint32_t first = hierarchy_.GetFirstItem(at.node);
            const std::uint32_t end = first + hierarchy_.GetNumLeafItems(at.node);
            for (std::uint32_t item = first; item < end; ++item) {
                // The tie test above pruned by this.
                assert(hierarchy_.GetMinOrdinal(at.node) <= hierarchy_.GetOrdinal(item));
                consider(hierarchy_.GetOrdinal(item));
            }
        }
    }
    if (context)
        context->AddBoxTests(tests);
    *depth = bestDepth;
    return best;
}

const ZtOaPathLink& ZtOcGeometryIndex::LinkPath(std::uint32_t ordinal, const ZtOaPathLink& top,
                                                const ZtLAffine3f* own,
                                                std::vector<ZtOaPathLink>& links) const {
    std::size_t depth = 0;
    for (std::uint32_t at = ordinal; at != kNone; at = ParentOf(at)) {
        assert(ParentOf(at) == kNone || ParentOf(at) < at);
        ++depth;
    }
    // Each link is made where it stays, from the node up, pointing at the link before it.
    links.assign(depth, top);
    std::size_t i = depth;
    for (std::uint32_t at = ordinal; at != kNone; at = ParentOf(at)) {
        --i;
        links[i] = ZtOaPathLink(NodeAt(at), i > 0 ? &links[i - 1] : &top,
                                i + 1 == depth ? own : top.GetTransform());
    }
    return links.back();
}

void ZtOcGeometryIndex::Search(ZtOcPickFrustumTraversal& pick, const ZtOaPathLink& link,
                               ZtOcContext* context) const {
    double depth = 0;
    const std::uint32_t best = FindBest(pick, link, context, &depth);
    std::vector<ZtOaPathLink> links;
    // Own best and nested partitions in walk order; a nested partition's own node comes
    // before what lies below it.
    bool offered = best == kNone;
    for (const Nested& nested : nested_) {
        if (!offered && best <= nested.ordinal) {
            pick.Offer(depth, LinkPath(best, link, link.GetTransform(), links));
            offered = true;
        }
        if (context)
            context->AddBoxTests(1);
        const ZtLBox3f bounds = link.MapBox(nested.bounds);
        if (!(pick.GetFrustum().Depth(bounds) < pick.GetBound()) ||
            !pick.GetFrustum().Intersects(bounds))
            continue;
        // The nested partition's link places what lies below it as a walk would.
        const ZtLAffine3f* above = link.GetTransform();
        ZtLAffine3f composed;
        if (above && nested.transform) {
            composed = *above;
            composed.MultRight(*nested.transform);
        }
        const ZtLAffine3f* own = !nested.transform ? above : !above ? nested.transform : &composed;
        nested.index->Search(pick, LinkPath(nested.ordinal, link, own, links), context);
    }
    if (!offered)
        pick.Offer(depth, LinkPath(best, link, link.GetTransform(), links));
}
