#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

class ZtOaPartition;
class ZtOpProgress;
class ZtOpSelectionSet;
class ZtOpState;

// Consecutive elements that a selection set selected in one model: the model's name, and
// its partition itself, which tells apart two placements of one file.
struct SelectedRun {
    std::wstring model;
    const ZtOaPartition* partition;
    // The run's elements are those of `indices` from the end of the run before (or 0) up to
    // here.
    std::size_t end;
};

// What one selection set selected over the loaded models, in the depth-first order of the
// scene: each element's index in its model, and the models as runs. Millions of selected
// elements cost their indices' memory, not a model's name each.
struct SelectionResult {
    std::wstring name;
    std::vector<SelectedRun> runs;
    std::vector<std::int64_t> indices;
    // Whether its find query looks at element attributes (a display set's Data criteria).
    bool usesAttributes = false;
};

// The document's selection sets, those in folders too, depth first: the order of the
// `select` step's results.
std::vector<const ZtOpSelectionSet*> DocumentSelectionSets(const ZtOpState& state);

// The `select` step: evaluates every selection set of the document (those in folders
// too, depth first) over the models of its scene, reporting how far the walk got.
std::vector<SelectionResult> ComputeSelections(const ZtOpState& state,
                                               ZtOpProgress* progress = nullptr);
