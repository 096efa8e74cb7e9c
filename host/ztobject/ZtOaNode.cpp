#include "ztobject/ZtOaNode.h"

#include "ztobject/ZtOaGroup.h"
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

// The walk keeps its own stack rather than recursing, so that no depth of nesting can
// exhaust the call stack. links[i] is the link of the group in frames[i]; a deque keeps
// the links where they are while the walk pushes and pops at its end.
void ZtOaNode::ApplyTraversal(ZtOaTraversal* traversal) const {
    if (!traversal)
        return;
    struct Frame {
        const ZtOaGroup* group;
        int next;
    };
    std::deque<ZtOaPathLink> links;
    std::vector<Frame> frames;

    links.emplace_back(this, nullptr);
    const ZtOaTraversal::Result first = traversal->VisitNode(links.back());
    if (first != ZtOaTraversal::kContinue || !IsGroup())
        return;
    frames.push_back({static_cast<const ZtOaGroup*>(this), 0});

    while (!frames.empty()) {
        Frame& frame = frames.back();
        if (frame.next >= frame.group->GetNumChildren()) {
            frames.pop_back();
            links.pop_back();
            continue;
        }
        const ZtOaNode* child = frame.group->GetChild(frame.next++);
        links.emplace_back(child, &links.back());
        const ZtOaTraversal::Result result = traversal->VisitNode(links.back());
        if (result == ZtOaTraversal::kStop)
            return;
        if (result == ZtOaTraversal::kContinue && child->IsGroup())
            frames.push_back({static_cast<const ZtOaGroup*>(child), 0});
        else
            links.pop_back();
    }
}
