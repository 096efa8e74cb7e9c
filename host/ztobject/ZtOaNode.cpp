#include "ztobject/ZtOaNode.h"

#include "ztobject/ZtOaGroup.h"
#include "ztobject/ZtOaPartition.h"
#include "ztobject/ZtOaTraversal.h"

#include <deque>
#include <vector>

const ZtOaAttribute* ZtOaNode::FindAttribute(const char*) const {
    return nullptr;
}

void ZtOaNode::VisitProperties(ZtOaPropertyVisitor&) const {}

int ZtOaNode::GetBoundingBox(ZtLBox3f*) const {
    return 0;
}

namespace {

// The transform of a link to `node`, below a link whose transform is `above`: a
// partition that moves its nodes composes its own transform under the one above, which
// goes into `composed` where both move something.
const ZtLAffine3f* TransformBelow(const ZtOaNode* node, const ZtLAffine3f* above,
                                  std::deque<ZtLAffine3f>& composed) {
    if (!node->IsPartition())
        return above;
    const ZtLAffine3f& own = static_cast<const ZtOaPartition*>(node)->GetTransform();
    if (own.IsIdentity())
        return above;
    if (!above)
        return &own;
    composed.push_back(*above);
    composed.back().MultRight(own);
    return &composed.back();
}

} // namespace

// The walk keeps its own stack rather than recursing, so that no depth of nesting can
// exhaust the call stack. links[i] is the link of the group in frames[i]; deques keep the
// links and the composed transforms where they are while the walk pushes and pops at
// their ends.
void ZtOaNode::ApplyTraversal(ZtOaTraversal* traversal) const {
    if (!traversal)
        return;
    struct Frame {
        const ZtOaGroup* group;
        int next;
        bool composed; // pushed a transform onto `composed`
    };
    std::deque<ZtOaPathLink> links;
    std::deque<ZtLAffine3f> composed;
    std::vector<Frame> frames;

    links.emplace_back(this, nullptr, TransformBelow(this, nullptr, composed));
    const ZtOaTraversal::Result first = traversal->VisitNode(links.back());
    if (first != ZtOaTraversal::kContinue || !IsGroup())
        return;
    frames.push_back({static_cast<const ZtOaGroup*>(this), 0, false});

    while (!frames.empty()) {
        Frame& frame = frames.back();
        if (frame.next >= frame.group->GetNumChildren()) {
            if (frame.composed)
                composed.pop_back();
            frames.pop_back();
            links.pop_back();
            continue;
        }
        const ZtOaNode* child = frame.group->GetChild(frame.next++);
        const std::size_t before = composed.size();
        const ZtLAffine3f* transform = TransformBelow(child, links.back().GetTransform(), composed);
        const bool pushed = composed.size() != before;
        links.emplace_back(child, &links.back(), transform);
        const ZtOaTraversal::Result result = traversal->VisitNode(links.back());
        if (result == ZtOaTraversal::kStop)
            return;
        if (result == ZtOaTraversal::kContinue && child->IsGroup()) {
            frames.push_back({static_cast<const ZtOaGroup*>(child), 0, pushed});
        } else {
            if (pushed)
                composed.pop_back();
            links.pop_back();
        }
    }
}
