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

// Owned subtrees are taken apart without recursion, so that no depth of nesting can
// exhaust the call stack, and without allocating, so that freeing cannot fail: the group
// being descended into keeps the rest of the level above in its own child list, with the
// group above it in the slot where it stood.
ZtOaGroup::~ZtOaGroup() {
    if (!ownsChildren_)
        return;
    std::vector<ZtOaNode*> pending = std::move(children_);
    ZtOaGroup* frame = nullptr; // the group whose children `pending` holds, below this one
    for (;;) {
        if (pending.empty()) {
            if (!frame)
                break;
            ZtOaGroup* done = frame;
            pending.swap(done->children_);
            frame = static_cast<ZtOaGroup*>(pending.back());
            pending.pop_back();
            delete done;
            continue;
        }
        ZtOaNode* node = pending.back();
        auto* group = node->IsGroup() ? static_cast<ZtOaGroup*>(node) : nullptr;
        if (group && group->ownsChildren_ && !group->children_.empty()) {
            pending.back() = frame;
            pending.swap(group->children_);
            frame = group;
            continue;
        }
        pending.pop_back();
        delete node;
    }
}

void ZtOaGroup::AddChild(ZtOaNode* child) {
    if (!child)
        return;
    try {
        children_.push_back(child);
    } catch (...) {
        if (ownsChildren_)
            delete child;
        throw;
    }
    NoteEdit();
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
