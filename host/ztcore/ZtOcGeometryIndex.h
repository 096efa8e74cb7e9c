#pragma once
#include "ztcore/ZtOcBoxHierarchy.h"
#include "ztlinear/ZtLAffine3f.h"
#include "ztlinear/ZtLBox3f.h"
#include "ztobject/ZtOaNodeCache.h"
#include "ztobject/ZtOaPartition.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class ZtOaNode;
class ZtOaPathLink;
class ZtOcContext;
class ZtOcPickFrustumTraversal;

// The boxes of a partition's subtree in a bounding-volume hierarchy, kept with the
// partition (ZtOaPartition::GetCache) until the tree is edited. Partitions inside the
// subtree are entries of their own with an index of their own, so that each model is
// indexed once, whatever is added beside it.
//
// Every node below the partition is listed in depth-first order, its position in that
// order being its ordinal; the nodes with a box are the hierarchy's items
// (ZtOcBoxHierarchy), in the coordinates of the partition's children: a search fetches
// the exact boxes of the few items in the leaves that its nodes leave in question. Boxes the
// hierarchy can't hold (reaching to infinity, say) are tested one by one in every search. A nested
// partition's bounds are placed by its transform. A search reports to the pick exactly what a walk
// of the subtree would, boxes placed by the transforms above included: the nearest candidate, of
// equally near ones the one first in depth-first order.
class ZtOcGeometryIndex : public ZtOaNodeCache {
public:
    // The partition's index, made now if it has none or a stale one.
    static const ZtOcGeometryIndex& Of(const ZtOaPartition& partition);

    explicit ZtOcGeometryIndex(const ZtOaPartition& partition);

    // The union of every box below the partition, nested partitions' included, in the
    // coordinates of the partition's children.
    const ZtLBox3f& GetBounds() const { return bounds_; }
    // Nodes with a box, nested partitions' not counted.
    std::size_t GetNumItems() const { return hierarchy_.GetNumItems() + odd_.size(); }
    // Bytes held by this index, nested partitions' not counted.
    std::size_t GetMemoryBytes() const;

    // Makes the indexes of `partitions` at once, on `threads` threads (0: one a core), so
    // that Of finds them made. Each is made as Of would make it; the partitions
    // must be distinct, none below another, and untouched by other threads meanwhile.
    // An exception on a worker thread comes out here, after every thread has ended.
    static void MakeAll(const std::vector<const ZtOaPartition*>& partitions,
                        std::size_t threads = 0);

    // Offers the candidates of the subtree to `pick`, as a walk from `link` (the
    // partition's own link, with the transform that places the partition's children in
    // the pick's coordinates) would, skipping what cannot beat the pick's present best.
    void Search(ZtOcPickFrustumTraversal& pick, const ZtOaPathLink& link,
                ZtOcContext* context) const;

private:
    static constexpr std::uint32_t kNone = 0xFFFFFFFFu;

    struct Nested {
        std::uint32_t ordinal;
        const ZtOcGeometryIndex* index;
        const ZtLAffine3f* transform; // the partition's own; null for the identity
        ZtLBox3f bounds;              // the index's bounds, placed by the transform
    };

    void Collect(const ZtOaPartition& partition);
    // The ordinal of the own item nearest to the eye, of equally near ones the first, of
    // those that the pick's present best leaves possible; kNone if there is none.
    // `link` is the partition's, as in Search.
    std::uint32_t FindBest(const ZtOcPickFrustumTraversal& pick, const ZtOaPathLink& link,
                           ZtOcContext* context, double* depth) const;
    // Builds the links from the node of `ordinal` up to `top` into `links` (sized here to
    // the whole chain first, since each link points at the one before it) and returns
    // the node's own link, which gets the transform `own`; the links between share top's.
    const ZtOaPathLink& LinkPath(std::uint32_t ordinal, const ZtOaPathLink& top,
                                 const ZtLAffine3f* own, std::vector<ZtOaPathLink>& links) const;

    // The node of an ordinal, and its parent's ordinal (kNone for a child of the
    // partition).
    const ZtOaNode* NodeAt(std::uint32_t ordinal) const {
        return flat_ ? flat_->GetChild(static_cast<int>(ordinal)) : nodes_[ordinal];
    }
    std::uint32_t ParentOf(std::uint32_t ordinal) const {
        return flat_ ? kNone : parents_[ordinal];
    }

    // The partition, where it HasFlatBoxes: its children are the nodes, ordinals their
    // places, and the two lists below stay empty.
    const ZtOaPartition* flat_ = nullptr;
    std::vector<const ZtOaNode*> nodes_;
    std::vector<std::uint32_t> parents_; // by ordinal; kNone below the partition itself
    ZtOcBoxHierarchy hierarchy_;
    std::vector<std::uint32_t> odd_; // ordinals of boxes the hierarchy can't hold
    std::vector<Nested> nested_;
    ZtLBox3f bounds_;
};
