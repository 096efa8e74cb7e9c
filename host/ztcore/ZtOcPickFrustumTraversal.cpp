#include "ztcore/ZtOcPickFrustumTraversal.h"

#include "ztcore/ZtOcContext.h"
#include "ztcore/ZtOcGeometryIndex.h"
#include "ztobject/ZtOaNode.h"
#include "ztobject/ZtOaPartition.h"

#include <limits>

ZtOaTraversal::Result ZtOcPickFrustumTraversal::VisitNode(const ZtOaPathLink& link) {
    if (!link.GetParent()) {
        ClearPicked();
        bestDepth_ = std::numeric_limits<double>::infinity();
    }
    if (!frustum_ || (render_ && pickLastRendered_))
        return kStop;
    const ZtOaNode* node = link.GetNode();
    ZtLBox3f box;
    if (node->GetBoundingBox(&box)) {
        if (GetContext())
            GetContext()->AddBoxTests(1);
        box = link.MapBox(box);
        if (IsCandidate(node->GetPropertyBits(), box))
            Offer(frustum_->Depth(box), link);
    }
    if (node->IsPartition() && (!GetContext() || GetContext()->GetUseIndex())) {
        SearchPartition(*static_cast<const ZtOaPartition*>(node), link);
        return kSkipChildren;
    }
    return kContinue;
}

bool ZtOcPickFrustumTraversal::IsCandidate(std::uint32_t propertyBits, const ZtLBox3f& box) const {
    if ((propertyBits & requiredBits_) != requiredBits_ || (propertyBits & pickBits_) != 0)
        return false;
    return containedOnly_ ? frustum_->Contains(box) : frustum_->Intersects(box);
}

void ZtOcPickFrustumTraversal::Offer(double depth, const ZtOaPathLink& link) {
    if (!(depth < bestDepth_))
        return;
    bestDepth_ = depth;
    SetPicked(link);
}

void ZtOcPickFrustumTraversal::SearchPartition(const ZtOaPartition& partition,
                                               const ZtOaPathLink& link) {
    ZtOcGeometryIndex::Of(partition).Search(*this, link, GetContext());
}
