#include "review/SelectionEvaluation.h"

#include "review/ModelLoad.h"
#include "review/SavedItems.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztobject/ZtOaPartition.h"
#include "ztplugin/ZtOpSelectionSet.h"
#include "ztplugin/ZtOpState.h"
#include "ztplugin/ZtOpTreeSelection.h"

namespace {

bool UsesAttributes(const ZtOpFindSpec& spec) {
    for (std::size_t i = 0; i < spec.GetNumConditions(); ++i) {
        const ZtUName* category = spec.GetCondition(i).GetCategory();
        if (category && category->GetInternal().Equal("ZtDgnPDSAttributes"))
            return true;
    }
    return false;
}

} // namespace

std::vector<const ZtOpSelectionSet*> DocumentSelectionSets(const ZtOpState& state) {
    std::vector<const ZtOpSelectionSet*> sets;
    WalkSavedItems(state, SavedItemTree::kSelectionSets, [&sets](const ZtOpSavedItem& item, int) {
        if (item.GetType() == ZtOpSavedItem::kTypeSelectionSet)
            sets.push_back(static_cast<const ZtOpSelectionSet*>(&item));
    });
    return sets;
}

std::vector<SelectionResult> ComputeSelections(const ZtOpState& state, ZtOpProgress* progress) {
    const std::vector<const ZtOpSelectionSet*> sets = DocumentSelectionSets(state);
    // A set without a find query selects nothing; an empty query stands in for it.
    const ZtOpFindSpec none;
    std::vector<const ZtOpFindSpec*> specs;
    for (const ZtOpSelectionSet* set : sets) {
        const ZtOpFindSpec* spec = set->GetImplicitSelection().GetImplicitFindSpec();
        specs.push_back(spec ? spec : &none);
    }
    std::vector<ZtOpTreeSelection> selected;
    if (const ZtOaPartition* root = state.GetRootNode()) {
        std::size_t elements = 0;
        for (const ZtDgnModel* model : SceneModels(state))
            elements += model->GetNumElements();
        selected = ZtOpSelectInTree(*root, specs, progress, elements);
    }
    std::vector<SelectionResult> results;
    for (std::size_t i = 0; i < sets.size(); ++i) {
        SelectionResult result{sets[i]->GetName().Str(), {}, {}, UsesAttributes(*specs[i])};
        if (i < selected.size()) {
            for (const ZtOpTreeSelection::Run& run : selected[i].runs)
                result.runs.push_back(
                    {run.model ? run.model->GetName().Str() : std::wstring(), run.model, run.end});
            result.indices = std::move(selected[i].indices);
            result.indices.shrink_to_fit();
        }
        results.push_back(std::move(result));
    }
    return results;
}
