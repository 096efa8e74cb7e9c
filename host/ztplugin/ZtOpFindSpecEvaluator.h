#pragma once
#include "ztplugin/ZtOpFindComparison.h"
#include "ztplugin/ZtOpFindRowTuples.h"
#include "ztplugin/ZtOpFindSpec.h"
#include "ztplugin/ZtOpFindTextRows.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

// One property of an object as a find query sees it. `category` may be null.
struct ZtOpFindProperty {
    const ZtUName* category;
    const ZtUName* name;
    const ZtUData* value;
};

// An object that find queries are evaluated on: its properties, in any order.
class ZtOpFindTarget {
public:
    virtual std::size_t GetNumFindProperties() const = 0;
    virtual ZtOpFindProperty GetFindProperty(std::size_t index) const = 0;

protected:
    ~ZtOpFindTarget() = default;
};

// True if `target` meets `condition`, with the operators and flags of
// ZtOpFindConditionOp and ZtOpFindConditionFlags:
// - Names are the same as ZtOpSameName tells.
// - A value comparison looks at every property of the condition's name (in its category,
//   or in any category if it has none) and holds if it holds for one of them, as
//   ZtOpFindComparison compares.
// - kNegate on a value comparison: the target must have the property, and the comparison
//   must hold for none of its values.
bool ZtOpFindConditionMatches(const ZtOpFindCondition& condition, const ZtOpFindTarget& target);

// True if `target` meets every condition of at least one alternative of `spec`. An empty
// find query matches nothing.
bool ZtOpFindSpecMatches(const ZtOpFindSpec& spec, const ZtOpFindTarget& target);

// Evaluates a list of find queries over many objects, object after object, with the results
// of ZtOpFindSpecMatches. What each condition reads is resolved from the objects' property
// names once for a run of objects that name their properties alike (the same name objects
// in the same order, as the elements of one model do), not object by object; a condition
// that several find queries share is evaluated once an object; a comparison's wanted side is read
// once, and its result on a text value is kept for the next object with that text; and
// where every property the conditions read holds a text, the find queries' results are kept for
// the next object with those texts there (a model's elements repeat a few levels, colours
// and files by the million). The find queries must
// outlive the evaluator, and the names of the objects' properties must not die while it is
// in use (a tree holds them for its walk).
class ZtOpFindSpecEvaluator {
public:
    explicit ZtOpFindSpecEvaluator(const std::vector<const ZtOpFindSpec*>& specs);

    // The object that the next calls of Matches look at: its `count` properties, which stay
    // where they are until the next call of SetObject.
    void SetObject(const ZtOpFindProperty* properties, std::size_t count);
    // Whether the object meets find query `index` (below the number of find queries given).
    bool Matches(std::size_t index);

private:
    struct Condition {
        const ZtOpFindCondition* source;
        ZtOpFindComparison comparison;
        bool isComparison;
        bool negate;
        // Resolved with the layout: the result of a test of category or property, or the
        // positions (in positions_) of the properties that a comparison reads.
        bool constant = false;
        std::uint32_t first = 0;
        std::uint32_t last = 0;
        // The object whose result `result` is.
        std::uint64_t evaluatedFor = 0;
        bool result = false;
    };
    struct Step {
        std::uint32_t condition;
        bool opensAlternative;
    };

    // How many earlier conditions on the same property a new one is compared with.
    static constexpr std::size_t kMaxAlike = 32;

    void Resolve();
    bool Evaluate(Condition& condition);
    std::uint32_t RowAt(std::uint32_t position, const ZtUData& value);
    bool HoldsAt(Condition& condition, std::uint32_t position, const ZtUData& value);
    std::uint32_t TupleOfObject();
    bool EvaluateSpec(std::size_t index);

    std::vector<Condition> conditions_;
    std::vector<Step> steps_;
    // Find query i's steps are steps_[specStart_[i], specStart_[i + 1]).
    std::vector<std::size_t> specStart_;
    // The category and name of each property that the resolution was made for.
    std::vector<std::pair<const ZtUName*, const ZtUName*>> layout_;
    bool resolved_ = false;
    std::vector<std::uint32_t> positions_;
    const ZtOpFindProperty* properties_ = nullptr;
    std::uint64_t object_ = 0;
    // The text values met, and for each of their rows a result a condition: 0 not worked
    // out yet, 1 fails, 2 holds.
    ZtOpFindTextRows texts_;
    std::vector<std::uint8_t> remembered_;
    // For each position of the layout, the row of the object's text there, where
    // rowFor_ is the object.
    std::vector<std::uint32_t> rowAt_;
    std::vector<std::uint64_t> rowFor_;
    // The positions that comparisons read, where they are few enough for a key; the keys
    // of the rows there, and for each key a result a find query (0, 1 or 2 as above). Kept for
    // one layout, and only while it lasts from object to object.
    std::vector<std::uint32_t> read_;
    bool keyed_ = false;
    bool layoutLasts_ = false;
    ZtOpFindRowTuples tuples_;
    std::vector<std::uint8_t> specResults_;
    std::uint32_t tuple_ = ZtOpFindRowTuples::kNoTuple;
    std::uint64_t tupleFor_ = 0;
};
