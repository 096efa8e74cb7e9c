#include "ztcore/ZtOcGeometryIndex.h"

#include "ztcore/ZtOcContext.h"
#include "ztcore/ZtOcPickFrustumTraversal.h"
#include "ztobject/ZtOaGroup.h"
#include "ztobject/ZtOaPartition.h"
#include "ztobject/ZtOaTraversal.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <memory>
#include <utility>

namespace {

// Lists the nodes below a partition in walk order with their parents' ordinals. Nested
// partitions are listed but not entered. `stack` holds the chain of groups above the node
// being visited, as (link, ordinal); links that the walk has left are popped as soon as a
// node with another parent comes.
class Collector : public ZtOaTraversal {
public:
    Collector(std::vector<const ZtOaNode*>& nodes, std::vector<std::uint32_t>& parents)
        : nodes_(nodes), parents_(parents) {}

    Result VisitNode(const ZtOaPathLink& link) override {
        const ZtOaPathLink* parent = link.GetParent();
        if (!parent) {
            stack_.push_back({&link, kTop});
            return kContinue;
        }
        while (!stack_.empty() && stack_.back().first != parent)
            stack_.pop_back();
        const ZtOaNode* node = link.GetNode();
        const auto ordinal = static_cast<std::uint32_t>(nodes_.size());
        nodes_.push_back(node);
        parents_.push_back(stack_.empty() ? kTop : stack_.back().second);
        // A parent is listed before its children: LinkPath climbs to ever smaller ordinals.
        assert(parents_.back() == kTop || parents_.back() < ordinal);
        if (node->IsPartition())
            return kSkipChildren;
        if (node->IsGroup())
            stack_.push_back({&link, ordinal});
        return kContinue;
    }

    static constexpr std::uint32_t kTop = 0xFFFFFFFFu;

private:
    std::vector<const ZtOaNode*>& nodes_;
    std::vector<std::uint32_t>& parents_;
    std::vector<std::pair<const ZtOaPathLink*, std::uint32_t>> stack_;
};

// A box's centre on one axis, for splitting; a box reaching to infinity sorts as 0, so
// that the order stays a strict one.
double Centre(const ZtLBox3f& box, int axis) {
    const double centre = box.GetMin()[axis] * 0.5 + box.GetMax()[axis] * 0.5;
    return std::isfinite(centre) ? centre : 0.0;
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

ZtOcGeometryIndex::ZtOcGeometryIndex(const ZtOaPartition& partition)
    : ZtOaNodeCache(ZtOaGroup::GetEditCount()) {
    Collect(partition);
    if (!items_.empty()) {
        hierarchy_.reserve(2 * (items_.size() / kLeafSize + 1));
        Build(0, static_cast<std::uint32_t>(items_.size()));
        bounds_ = hierarchy_.front().box;
    }
    for (const Nested& nested : nested_)
        bounds_.Extend(nested.bounds);
}

void ZtOcGeometryIndex::Collect(const ZtOaPartition& partition) {
    Collector collector(nodes_, parents_);
    partition.ApplyTraversal(&collector);
    // Ordinals are 32 bits wide, with one value kept for "none": a subtree beyond that
    // is indexed as far as it goes.
    if (nodes_.size() >= kNone) {
        nodes_.resize(kNone - 1);
        parents_.resize(kNone - 1);
    }
    for (std::uint32_t ordinal = 0; ordinal < nodes_.size(); ++ordinal) {
        const ZtOaNode* node = nodes_[ordinal];
        ZtLBox3f box;
        if (node->GetBoundingBox(&box) && !box.IsEmpty())
            items_.push_back({box, ordinal, node->GetPropertyBits()});
        if (node->IsPartition()) {
            const auto& partition = *static_cast<const ZtOaPartition*>(node);
            const ZtLAffine3f& transform = partition.GetTransform();
            const ZtOcGeometryIndex& index = Of(partition);
            // In walk order, which Search offers them in.
            assert(nested_.empty() || nested_.back().ordinal < ordinal);
            nested_.push_back({ordinal, &index, transform.IsIdentity() ? nullptr : &transform,
                               transform.TransformBox(index.GetBounds())});
        }
    }
}

std::uint32_t ZtOcGeometryIndex::Build(std::uint32_t first, std::uint32_t count) {
    assert(count > 0 && first + count <= items_.size());
    const auto at = static_cast<std::uint32_t>(hierarchy_.size());
    hierarchy_.push_back({});
    ZtLBox3f box;
    ZtLBox3f centres;
    std::uint32_t minOrdinal = kNone;
    for (std::uint32_t i = first; i < first + count; ++i) {
        box.Extend(items_[i].box);
        centres.Extend(
            ZtLPos3f(Centre(items_[i].box, 0), Centre(items_[i].box, 1), Centre(items_[i].box, 2)));
        minOrdinal = std::min(minOrdinal, items_[i].ordinal);
    }
    if (count <= kLeafSize) {
        hierarchy_[at] = {box, first, count, 0, minOrdinal};
        return at;
    }
    // Halves by count along the axis on which the centres spread widest: the depth stays
    // logarithmic whatever the boxes are like.
    const ZtLVec3f spread = centres.GetSize();
    const int axis = spread.x >= spread.y && spread.x >= spread.z ? 0
                     : spread.y >= spread.z                       ? 1
                                                                  : 2;
    const std::uint32_t half = count / 2;
    const auto begin = items_.begin() + first;
    std::nth_element(begin, begin + half, begin + count, [axis](const Item& a, const Item& b) {
        const double ca = Centre(a.box, axis), cb = Centre(b.box, axis);
        return ca < cb || (ca == cb && a.ordinal < b.ordinal);
    });
    // FindBest finds the first child right behind its parent.
    [[maybe_unused]] const std::uint32_t left = Build(first, half);
    assert(left == at + 1);
    const std::uint32_t second = Build(first + half, count - half);
    hierarchy_[at] = {box, 0, 0, second, minOrdinal};
    return at;
}

std::uint32_t ZtOcGeometryIndex::FindBest(const ZtOcPickFrustumTraversal& pick,
                                          const ZtOaPathLink& link, ZtOcContext* context,
                                          double* depth) const {
    if (hierarchy_.empty())
        return kNone;
    const ZtLPickFrustum3f& frustum = pick.GetFrustum();
    // Boxes are tested where the transforms above the partition place them: a placed box
    // holds the placed boxes of what it holds, so the hierarchy prunes as it does unplaced.
    auto placed = [&link](const ZtLBox3f& box) { return link.MapBox(box); };
    // A candidate must come below the pick's present best; of own items, below the best
    // so far or as near and earlier.
    double bestDepth = pick.GetBound();
    std::uint32_t best = kNone;
    // Items as near as the best may still win if they come before it; none may before an
    // own best is found, since the pick keeps the earlier of equals.
    std::uint32_t tieLimit = 0;
    std::uint64_t tests = 0;

    struct Pending {
        std::uint32_t node;
        double depth;
    };
    // Each step pops one node and pushes at most two, so the stack never holds more than
    // the hierarchy's depth plus one; halving by count keeps that depth below 64.
    constexpr int kStackSize = 72;
    Pending stack[kStackSize];
    int top = 0;
    stack[top++] = {0, frustum.Depth(placed(hierarchy_[0].box))};
    while (top > 0) {
        const Pending pending = stack[--top];
        const Node& node = hierarchy_[pending.node];
        if (!(pending.depth < bestDepth ||
              (pending.depth == bestDepth && node.minOrdinal < tieLimit)))
            continue;
        ++tests;
        if (!frustum.Intersects(placed(node.box)))
            continue;
        if (node.count == 0) {
            assert(top + 2 <= kStackSize);
            const std::uint32_t a = pending.node + 1, b = node.second;
            const double da = frustum.Depth(placed(hierarchy_[a].box));
            const double db = frustum.Depth(placed(hierarchy_[b].box));
            // The nearer child goes on top, so that it is searched first.
            if (da <= db) {
                stack[top++] = {b, db};
                stack[top++] = {a, da};
            } else {
                stack[top++] = {a, da};
                stack[top++] = {b, db};
            }
            continue;
        }
        for (std::uint32_t i = node.first; i < node.first + node.count; ++i) {
            const Item& item = items_[i];
            // The tie test above pruned by this.
            assert(node.minOrdinal <= item.ordinal);
            ++tests;
            const ZtLBox3f box = placed(item.box);
            if (!pick.IsCandidate(item.propertyBits, box))
                continue;
            const double d = frustum.Depth(box);
            if (d < bestDepth || (d == bestDepth && item.ordinal < tieLimit)) {
                bestDepth = d;
                best = tieLimit = item.ordinal;
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
    std::vector<std::uint32_t> chain;
    for (std::uint32_t at = ordinal; at != kNone; at = parents_[at]) {
        assert(chain.empty() || at < chain.back());
        chain.push_back(at);
    }
    links.clear();
    links.reserve(chain.size());
    const ZtOaPathLink* parent = &top;
    for (auto at = chain.rbegin(); at != chain.rend(); ++at) {
        links.emplace_back(nodes_[*at], parent, at + 1 == chain.rend() ? own : top.GetTransform());
        parent = &links.back();
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
