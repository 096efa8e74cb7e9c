#pragma once
#include "ztplugin/ZtOpSavedItem.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>

class ZtOpComment;
class ZtOpState;
class ZtOpView;

// The document's two trees of saved items.
enum class SavedItemTree { kSavedViews, kSelectionSets };

// The root folder of a tree, or null when the document has none.
const ZtOpFolderItem* SavedItemTreeRoot(const ZtOpState& state, SavedItemTree tree);

// The one walk over saved items, depth first: `enter` meets an item before the items of
// its folder, `leave` after them.
template <class Enter, class Leave>
void WalkSavedItem(const ZtOpSavedItem& item, int depth, const Enter& enter, const Leave& leave) {
    enter(item, depth);
    if (item.IsGroup()) {
        const auto& group = static_cast<const ZtOpGroupItem&>(item);
        for (std::size_t i = 0; i < group.GetNumChildren(); ++i)
            WalkSavedItem(*group.GetChild(i), depth + 1, enter, leave);
    }
    leave(item, depth);
}

// Walks the children of a tree's root folder, each from depth 0.
template <class Enter, class Leave = void (*)(const ZtOpSavedItem&, int)>
void WalkSavedItems(
    const ZtOpState& state, SavedItemTree tree, const Enter& enter,
    const Leave& leave = [](const ZtOpSavedItem&, int) {}) {
    const ZtOpFolderItem* root = SavedItemTreeRoot(state, tree);
    for (std::size_t i = 0; root && i < root->GetNumChildren(); ++i)
        WalkSavedItem(*root->GetChild(i), 0, enter, leave);
}

// How many items of each kind the document's saved views and selection sets hold, through
// their folders.
struct SavedItemCounts {
    std::size_t views = 0;
    std::size_t tags = 0;
    std::size_t comments = 0;
    std::size_t selectionSets = 0;
};
SavedItemCounts CountSavedItems(const ZtOpState& state);

// A view's comments by identifier, made once per view so that showing each tag with its
// comment takes time in proportion to the tags: a tag's comment is the first of its view
// with the tag's comment identifier.
std::unordered_map<std::uint64_t, const ZtOpComment*> CommentsById(const ZtOpView& view);
