#include "app/SelectStep.h"

#include "app/JsonWriter.h"
#include "app/ReportStream.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztobject/ZtOaPartition.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpSelectionSet.h"
#include "ztplugin/ZtOpState.h"
#include "ztplugin/ZtOpTreeSelection.h"
#include "ztutil/ZtUSysString.h"

namespace {

// The selection sets below `folder`, depth first.
std::vector<const ZtOpSelectionSet*> SelectionSets(const ZtOpFolderItem& folder) {
    std::vector<const ZtOpSelectionSet*> sets;
    std::vector<const ZtOpSavedItem*> pending;
    for (std::size_t i = folder.GetNumChildren(); i-- > 0;)
        pending.push_back(folder.GetChild(i));
    while (!pending.empty()) {
        const ZtOpSavedItem* item = pending.back();
        pending.pop_back();
        if (item->GetType() == ZtOpSavedItem::kTypeSelectionSet)
            sets.push_back(static_cast<const ZtOpSelectionSet*>(item));
        if (item->IsGroup()) {
            const auto& group = static_cast<const ZtOpGroupItem&>(*item);
            for (std::size_t i = group.GetNumChildren(); i-- > 0;)
                pending.push_back(group.GetChild(i));
        }
    }
    return sets;
}

} // namespace

std::vector<const ZtOpSelectionSet*> DocumentSelectionSets(const ZtOpState& state) {
    const ZtOpSelectionSetsElement* element = ZtOpSelectionSetsElement::Get(&state);
    return element ? SelectionSets(*element->Get()) : std::vector<const ZtOpSelectionSet*>();
}

std::vector<SelectionResult> ComputeSelections(const ZtOpState& state, ZtOpProgress* progress) {
    const std::vector<const ZtOpSelectionSet*> sets = DocumentSelectionSets(state);
    // A set without a find spec selects nothing; an empty spec stands in for it.
    const ZtOpFindSpec none;
    std::vector<const ZtOpFindSpec*> specs;
    for (const ZtOpSelectionSet* set : sets) {
        const ZtOpFindSpec* spec = set->GetImplicitSelection().GetImplicitFindSpec();
        specs.push_back(spec ? spec : &none);
    }
    std::vector<std::vector<ZtOpSelectedElement>> selected;
    if (const ZtOaPartition* root = state.GetRootNode()) {
        std::size_t elements = 0;
        for (int i = 0; i < root->GetNumChildren(); ++i)
            if (const auto* model = dynamic_cast<const ZtDgnModel*>(root->GetChild(i)))
                elements += model->GetNumElements();
        selected = ZtOpSelectInTree(*root, specs, progress, elements);
    }
    std::vector<SelectionResult> results;
    for (std::size_t i = 0; i < sets.size(); ++i) {
        SelectionResult result{sets[i]->GetName().Str(), {}};
        if (i < selected.size())
            for (const ZtOpSelectedElement& e : selected[i])
                result.elements.push_back(
                    {e.model ? e.model->GetName().Str() : std::wstring(), e.index});
        results.push_back(std::move(result));
    }
    return results;
}

void WriteSelectionsJson(JsonWriter& json, const std::vector<SelectionResult>& results) {
    json.BeginArray();
    for (const SelectionResult& result : results) {
        json.BeginObject();
        json.Key("name");
        json.WideString(result.name);
        json.Key("count");
        json.UInt(result.elements.size());
        json.Key("elements");
        json.BeginArray();
        for (const SelectedElement& element : result.elements) {
            json.BeginObject(true);
            json.Key("model");
            json.WideString(element.model);
            json.Key("index");
            json.Int(element.index);
            json.EndObject();
        }
        json.EndArray();
        json.EndObject();
    }
    json.EndArray();
}

void AppendSelectionsTable(ReportStream& out, const std::vector<SelectionResult>& results) {
    out += "Selections:\n";
    for (const SelectionResult& result : results) {
        const std::size_t count = result.elements.size();
        out += "  ";
        out += ZtUSysString::WideToUtf8(result.name);
        out += ": " + std::to_string(count) + (count == 1 ? " element\n" : " elements\n");
        // Runs of elements of one model share a line.
        for (std::size_t i = 0; i < count; ++i) {
            const SelectedElement& element = result.elements[i];
            if (i == 0 || element.model != result.elements[i - 1].model)
                out += (i == 0 ? "" : "\n") + std::string("    ") +
                       ZtUSysString::WideToUtf8(element.model) + ":";
            out += " " + std::to_string(element.index);
        }
        if (count > 0)
            out += "\n";
    }
}
