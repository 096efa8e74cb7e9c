#pragma once
#include <cstdint>
#include <string>
#include <vector>

class ZtOaPartition;
class ZtOpProgress;
class ZtOpSelectionSet;
class ZtOpState;

// An element that a selection set selected: its model's name and its index there, and
// the model's partition itself, which tells apart two placements of one file.
struct SelectedElement {
    std::wstring model;
    std::int64_t index;
    const ZtOaPartition* partition;
};

// What one selection set selected over the loaded models, in the depth-first order of the
// scene.
struct SelectionResult {
    std::wstring name;
    std::vector<SelectedElement> elements;
    // Whether its find spec looks at element attributes (a display set's Data criteria).
    bool usesAttributes = false;
};

// The document's selection sets, those in folders too, depth first: the order of the
// `select` step's results.
std::vector<const ZtOpSelectionSet*> DocumentSelectionSets(const ZtOpState& state);

// The `select` step: evaluates every selection set of the document (those in folders
// too, depth first) over the models of its scene, reporting how far the walk got.
std::vector<SelectionResult> ComputeSelections(const ZtOpState& state,
                                               ZtOpProgress* progress = nullptr);
