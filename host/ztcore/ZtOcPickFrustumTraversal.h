#pragma once
#include "ztcore/ZtOcPickTraversal.h"
#include "ztlinear/ZtLPickFrustum3f.h"

#include <cstdint>
#include <optional>

class ZtOaPartition;
class ZtOcGeometryIndex;
class ZtOcRenderTraversal;

// Picks the shape seen through a frustum. A candidate is a node that has every required
// property bit and none of the pick bits, and a bounding box that meets the frustum (near
// and far planes included) or, with contained-only, lies wholly inside it. The picked
// shape is the candidate whose box comes nearest the eye along the view direction; of
// candidates equally near, the one met first in depth-first order. The frustum is in the
// coordinates of the tree's root, and a node's box is taken there: the axis-aligned box
// about its own box placed by the transforms of the partitions above it
// (ZtOaPathLink::MapBox).
//
// Below a partition the pick answers from the partition's geometry index
// (ZtOcGeometryIndex) where the context allows it, with the same result as the walk.
class ZtOcPickFrustumTraversal : public ZtOcPickTraversal {
public:
    explicit ZtOcPickFrustumTraversal(ZtOcContext* context) : ZtOcPickTraversal(context) {}

    // With pick-last-rendered set, only what `render` drew last can be picked. This host
    // draws nothing, so such a pick with a render traversal given hits nothing.
    void SetRenderTraversal(ZtOcRenderTraversal* render) { render_ = render; }
    void SetPickLastRendered(int pickLastRendered) { pickLastRendered_ = pickLastRendered; }
    // Without a frustum nothing is picked.
    void SetFrustum(const ZtLPickFrustum3f& frustum) { frustum_.emplace(frustum); }
    void SetContainedOnly(int containedOnly) { containedOnly_ = containedOnly != 0; }
    void SetRequiredPropertyBits(std::uint32_t bits) { requiredBits_ = bits; }
    // Property bits that keep a node from being picked; 0 keeps none out.
    void SetPickBits(std::uint32_t bits) { pickBits_ = bits; }

    Result VisitNode(const ZtOaPathLink& link) override;

    // For the index: whether a node with these property bits and this box (in the root's
    // coordinates) is a candidate.
    bool IsCandidate(std::uint32_t propertyBits, const ZtLBox3f& box) const;
    const ZtLPickFrustum3f& GetFrustum() const { return *frustum_; }
    // For the index: the depth that a later candidate must come below to be picked, or
    // infinity while nothing is picked.
    double GetBound() const { return bestDepth_; }
    // Offers a candidate met after every one offered so far; it is picked if it is nearer.
    void Offer(double depth, const ZtOaPathLink& link);

private:
    void SearchPartition(const ZtOaPartition& partition, const ZtOaPathLink& link);

    ZtOcRenderTraversal* render_ = nullptr;
    int pickLastRendered_ = 0;
    std::optional<ZtLPickFrustum3f> frustum_;
    bool containedOnly_ = false;
    std::uint32_t requiredBits_ = 0;
    std::uint32_t pickBits_ = 0;
    double bestDepth_ = 0;
};
