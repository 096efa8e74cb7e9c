#include "review/SavedItems.h"

#include "ztplugin/ZtOpComment.h"
#include "ztplugin/ZtOpRedlineTag.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpView.h"

namespace {

void CountItem(SavedItemCounts& counts, const ZtOpSavedItem& item) {
    if (item.IsGroup())
        return;
    counts.comments += item.GetComments().Size();
    if (item.GetType() == ZtOpSavedItem::kTypeSelectionSet)
        ++counts.selectionSets;
    if (item.GetType() != ZtOpSavedItem::kTypeView)
        return;
    ++counts.views;
    const auto& redlines = static_cast<const ZtOpView&>(item).GetRedlines();
    for (std::size_t i = 0; i < redlines.Size(); ++i)
        counts.tags += redlines[i]->GetRedlineType() == ZtOpRedline::kTypeTag;
}

} // namespace

const ZtOpFolderItem* SavedItemTreeRoot(const ZtOpState& state, SavedItemTree tree) {
    if (tree == SavedItemTree::kSavedViews) {
        const ZtOpSavedViewsElement* element = ZtOpSavedViewsElement::Get(&state);
        return element ? element->Get() : nullptr;
    }
    const ZtOpSelectionSetsElement* element = ZtOpSelectionSetsElement::Get(&state);
    return element ? element->Get() : nullptr;
}

SavedItemCounts CountSavedItems(const ZtOpState& state) {
    SavedItemCounts counts;
    const auto count = [&counts](const ZtOpSavedItem& item, int) { CountItem(counts, item); };
    for (SavedItemTree tree : {SavedItemTree::kSavedViews, SavedItemTree::kSelectionSets})
        WalkSavedItems(state, tree, count);
    return counts;
}

std::unordered_map<std::uint64_t, const ZtOpComment*> CommentsById(const ZtOpView& view) {
    std::unordered_map<std::uint64_t, const ZtOpComment*> byId;
    const auto& comments = view.GetComments();
    byId.reserve(comments.Size());
    // The first of a repeated identifier stays.
    for (std::size_t i = 0; i < comments.Size(); ++i)
        byId.emplace(comments[i]->GetId(), comments[i]);
    return byId;
}
