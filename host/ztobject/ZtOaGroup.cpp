#include "ztobject/ZtOaGroup.h"

#include <atomic>

namespace {

std::atomic<std::uint64_t> editCount{0};

} // namespace

std::uint64_t ZtOaGroup::GetEditCount() {
    return editCount.load(std::memory_order_relaxed);
}

void ZtOaGroup::NoteEdit() {
    editCount.fetch_add(1, std::memory_order_relaxed);
}

ZtOaGroup::ZtOaGroup(std::uint32_t flags, Ownership ownership)
    : ZtOaNode(flags | kGroupFlag), ownsChildren_(ownership == Ownership::kOwnsChildren) {}

// Owned subtrees are taken apart with a work list, not by recursion, so that no depth of
// nesting can exhaust the call stack.
ZtOaGroup::~ZtOaGroup() {
    if (!ownsChildren_)
        return;
    std::vector<ZtOaNode*> pending = std::move(children_);
    while (!pending.empty()) {
        ZtOaNode* node = pending.back();
        pending.pop_back();
        if (node->IsGroup()) {
            auto* group = static_cast<ZtOaGroup*>(node);
            if (group->ownsChildren_) {
                pending.insert(pending.end(), group->children_.begin(), group->children_.end());
                group->children_.clear();
            }
        }
        delete node;
    }
}

ZtOaNode* ZtOaGroup::GetChild(int index) const {
    return index >= 0 && index < GetNumChildren() ? children_[static_cast<std::size_t>(index)]
                                                  : nullptr;
}

const ZtOaAttribute* ZtOaGroup::FindAttribute(const char* name) const {
    return attributes_.Find(name);
}

void ZtOaGroup::VisitProperties(ZtOaPropertyVisitor& visitor) const {
    attributes_.VisitProperties(visitor);
}
