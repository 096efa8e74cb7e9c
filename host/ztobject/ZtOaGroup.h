#pragma once
#include "ztobject/ZtOaAttribute.h"
#include "ztobject/ZtOaNode.h"

#include <cstddef>
#include <vector>

// A node with children, in their order. A group made with the public constructor owns
// the children added to it; trees whose nodes live in storage of their own (a loaded
// model) borrow theirs.
class ZtOaGroup : public ZtOaNode {
public:
    ZtOaGroup() : ZtOaGroup(0, Ownership::kOwnsChildren) {}
    ~ZtOaGroup() override;

    int GetNumChildren() const { return static_cast<int>(children_.size()); }
    // The child at `index`, or null outside the group.
    ZtOaNode* GetChild(int index) const;
    // Appends `child`; a group that owns its children takes ownership with the call, and
    // frees the child if the append fails.
    void AddChild(ZtOaNode* child);

    // Takes ownership.
    void AddAttribute(ZtOaAttribute* attribute) { attributes_.Add(attribute); }
    const ZtOaAttributeList& GetAttributes() const { return attributes_; }

    const ZtOaAttribute* FindAttribute(const char* name) const override;
    void VisitProperties(ZtOaPropertyVisitor& visitor) const override;

    // A count that moves on whenever a child is added to any group, so that what was
    // derived from a tree (ZtOaNodeCache) can tell that it may have changed since.
    static std::uint64_t GetEditCount();

protected:
    enum class Ownership { kOwnsChildren, kBorrowsChildren };
    // `flags` are further flags beside the group flag.
    ZtOaGroup(std::uint32_t flags, Ownership ownership);
    // Moves the edit count on. Out of line, so that every tree in the process shares the
    // one count.
    static void NoteEdit();
    // For a tree built in bulk before anything can derive from it (a model being loaded):
    // room for `count` children, and a child added without noting an edit, which the
    // builder notes once at the end.
    void ReserveChildren(std::size_t count) { children_.reserve(count); }
    void AppendChild(ZtOaNode* child) { children_.push_back(child); }
    // The children's array, for advice on its memory.
    ZtOaNode* const* GetChildArray() const { return children_.data(); }

private:
    std::vector<ZtOaNode*> children_;
    ZtOaAttributeList attributes_;
    bool ownsChildren_;
};
