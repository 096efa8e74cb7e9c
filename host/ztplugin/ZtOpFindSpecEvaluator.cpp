#include "ztplugin/ZtOpFindSpecEvaluator.h"

#include <algorithm>
#include <unordered_map>

namespace {

using Op = ZtOpFindConditionOp;

bool IsComparison(Op::Enum op) {
    switch (op) {
    case Op::kEqual:
    case Op::kNotEqual:
    case Op::kLess:
    case Op::kLessEqual:
    case Op::kGreaterEqual:
    case Op::kGreater:
    case Op::kWildcard:
        return true;
    default:
        return false;
    }
}

// Whether the property is one that `condition` names: its name, in its category if it
// has one.
bool Names(const ZtOpFindCondition& condition, const ZtUName* category, const ZtUName* name) {
    return (!condition.GetCategory() || ZtOpSameName(category, condition.GetCategory())) &&
           ZtOpSameName(name, condition.GetProperty());
}

// Whether the conditions hold on the same objects: all alike but the flags that do not
// bear on a condition's own evaluation.
bool SameEvaluation(const ZtOpFindCondition& a, const ZtOpFindCondition& b) {
    constexpr unsigned kInert = ZtOpFindConditionFlags::kNewAlternative |
                                ZtOpFindConditionFlags::kFlag4 | ZtOpFindConditionFlags::kFlag8;
    return a.GetCategory() == b.GetCategory() && a.GetProperty() == b.GetProperty() &&
           a.GetCondition() == b.GetCondition() &&
           (a.GetFlags() & ~kInert) == (b.GetFlags() & ~kInert) && a.GetValue() == b.GetValue();
}

std::vector<ZtOpFindProperty> PropertiesOf(const ZtOpFindTarget& target) {
    std::vector<ZtOpFindProperty> properties;
    for (std::size_t i = 0; i < target.GetNumFindProperties(); ++i)
        properties.push_back(target.GetFindProperty(i));
    return properties;
}

bool MatchesOnce(const ZtOpFindSpec& spec, const ZtOpFindTarget& target) {
    ZtOpFindSpecEvaluator evaluator({&spec});
    const std::vector<ZtOpFindProperty> properties = PropertiesOf(target);
    evaluator.SetObject(properties.data(), properties.size());
    return evaluator.Matches(0);
}

} // namespace

bool ZtOpFindConditionMatches(const ZtOpFindCondition& condition, const ZtOpFindTarget& target) {
    ZtOpFindSpec spec;
    spec.AddCondition(condition);
    return MatchesOnce(spec, target);
}

bool ZtOpFindSpecMatches(const ZtOpFindSpec& spec, const ZtOpFindTarget& target) {
    return MatchesOnce(spec, target);
}

ZtOpFindSpecEvaluator::ZtOpFindSpecEvaluator(const std::vector<const ZtOpFindSpec*>& specs) {
    // Find queries built on others share their conditions' storage, or repeat them with another
    // flag of alternatives: one evaluation serves all of them.
    std::unordered_map<const ZtOpFindCondition*, std::uint32_t> known;
    std::unordered_map<const ZtUName*, std::vector<std::uint32_t>> byProperty;
    for (const ZtOpFindSpec* spec : specs) {
        specStart_.push_back(steps_.size());
        for (std::size_t k = 0; k < spec->GetNumConditions(); ++k) {
            const ZtOpFindCondition& condition = spec->GetCondition(k);
            const auto [at, added] =
                known.emplace(&condition, static_cast<std::uint32_t>(conditions_.size()));
            if (added) {
                std::vector<std::uint32_t>& alike = byProperty[condition.GetProperty()];
                // A bounded search, so that thousands of conditions on one property cost no
                // square of their number.
                const std::size_t from = alike.size() > kMaxAlike ? alike.size() - kMaxAlike : 0;
                for (std::size_t a = from; a < alike.size() && at->second == conditions_.size();
                     ++a)
                    if (SameEvaluation(*conditions_[alike[a]].source, condition))
                        at->second = alike[a];
                if (at->second == conditions_.size()) {
                    alike.push_back(at->second);
                    conditions_.push_back({&condition, ZtOpFindComparison(condition),
                                           IsComparison(condition.GetCondition()),
                                           condition.HasFlags(ZtOpFindConditionFlags::kNegate)});
                }
            }
            steps_.push_back(
                {at->second, condition.HasFlags(ZtOpFindConditionFlags::kNewAlternative)});
        }
    }
    specStart_.push_back(steps_.size());
}

void ZtOpFindSpecEvaluator::SetObject(const ZtOpFindProperty* properties, std::size_t count) {
    properties_ = properties;
    ++object_;
    bool same = resolved_ && count == layout_.size();
    for (std::size_t i = 0; same && i < count; ++i)
        same =
            layout_[i].first == properties[i].category && layout_[i].second == properties[i].name;
    layoutLasts_ = same;
    if (same)
        return;
    layout_.clear();
    for (std::size_t i = 0; i < count; ++i)
        layout_.emplace_back(properties[i].category, properties[i].name);
    rowAt_.assign(count, ZtOpFindTextRows::kNoRow);
    rowFor_.assign(count, 0);
    Resolve();
}

// Compares names by text, which is the costly part of an evaluation; done again only when
// the objects' layout changes.
void ZtOpFindSpecEvaluator::Resolve() {
    positions_.clear();
    for (Condition& c : conditions_) {
        const ZtOpFindCondition& condition = *c.source;
        c.constant = false;
        c.first = static_cast<std::uint32_t>(positions_.size());
        switch (condition.GetCondition()) {
        case Op::kHasCategory:
        case Op::kHasNotCategory:
            for (std::size_t i = 0; i < layout_.size() && condition.GetCategory() && !c.constant;
                 ++i)
                c.constant = ZtOpSameName(layout_[i].first, condition.GetCategory());
            c.constant = c.constant == (condition.GetCondition() == Op::kHasCategory);
            break;
        case Op::kHasProperty:
        case Op::kHasNotProperty:
            for (std::size_t i = 0; i < layout_.size() && !c.constant; ++i)
                c.constant = Names(condition, layout_[i].first, layout_[i].second);
            c.constant = c.constant == (condition.GetCondition() == Op::kHasProperty);
            break;
        default:
            if (c.isComparison)
                for (std::size_t i = 0; i < layout_.size(); ++i)
                    if (Names(condition, layout_[i].first, layout_[i].second))
                        positions_.push_back(static_cast<std::uint32_t>(i));
            break;
        }
        c.last = static_cast<std::uint32_t>(positions_.size());
    }
    read_.assign(positions_.begin(), positions_.end());
    std::sort(read_.begin(), read_.end());
    read_.erase(std::unique(read_.begin(), read_.end()), read_.end());
    keyed_ = read_.size() <= ZtOpFindRowTuples::kWidth;
    if (tuples_.GetNumTuples() > 0) {
        tuples_.Clear();
        specResults_.clear();
    }
    resolved_ = true;
}

// Inline, as the others below: the hot loop of a walk makes no call through the library's
// symbols.
inline std::uint32_t ZtOpFindSpecEvaluator::RowAt(std::uint32_t position, const ZtUData& value) {
    if (rowFor_[position] != object_) {
        rowAt_[position] = texts_.RowOf(value);
        rowFor_[position] = object_;
        const std::size_t results = std::size_t{texts_.GetNumRows()} * conditions_.size();
        if (remembered_.size() < results)
            remembered_.resize(results);
    }
    return rowAt_[position];
}

inline bool ZtOpFindSpecEvaluator::HoldsAt(Condition& c, std::uint32_t position,
                                           const ZtUData& value) {
    if (value.GetType() != ZtUData::kWideString)
        return c.comparison.Holds(value);
    const std::uint32_t row = RowAt(position, value);
    if (row == ZtOpFindTextRows::kNoRow)
        return c.comparison.Holds(value);
    std::uint8_t& result =
        remembered_[row * conditions_.size() + static_cast<std::size_t>(&c - conditions_.data())];
    if (result == 0)
        result = c.comparison.Holds(value) ? 2 : 1;
    return result == 2;
}

inline bool ZtOpFindSpecEvaluator::Evaluate(Condition& c) {
    if (!c.isComparison)
        return c.constant;
    if (c.evaluatedFor == object_)
        return c.result;
    // Over every property of the condition's name until one holds. With kNegate the object
    // must have the property and it must hold for none.
    bool found = false;
    bool holds = false;
    for (std::uint32_t p = c.first; p < c.last && !holds; ++p) {
        const ZtUData* value = properties_[positions_[p]].value;
        if (!value)
            continue;
        found = true;
        holds = HoldsAt(c, positions_[p], *value);
    }
    c.result = c.negate ? found && !holds : holds;
    c.evaluatedFor = object_;
    return c.result;
}

// The number of the rows of the texts at the positions read, or kNoTuple where one holds
// no text or past the bounds. A missing value has a row of its own.
inline std::uint32_t ZtOpFindSpecEvaluator::TupleOfObject() {
    constexpr std::uint32_t kMissing = ZtOpFindTextRows::kNoRow - 1;
    ZtOpFindRowTuples::Key key{};
    for (std::size_t i = 0; i < read_.size(); ++i) {
        const ZtUData* value = properties_[read_[i]].value;
        if (value && value->GetType() != ZtUData::kWideString)
            return ZtOpFindRowTuples::kNoTuple;
        key[i] = value ? RowAt(read_[i], *value) : kMissing;
        if (key[i] == ZtOpFindTextRows::kNoRow)
            return ZtOpFindRowTuples::kNoTuple;
    }
    const std::uint32_t tuple = tuples_.TupleOf(key);
    const std::size_t results = std::size_t{tuples_.GetNumTuples()} * (specStart_.size() - 1);
    if (specResults_.size() < results)
        specResults_.resize(results);
    return tuple;
}

// The find query's result on the object depends on the layout and on the texts at the positions
// read alone, so that it is kept by their rows' key while the layout lasts.
bool ZtOpFindSpecEvaluator::Matches(std::size_t index) {
    if (!keyed_ || !layoutLasts_)
        return EvaluateSpec(index);
    if (tupleFor_ != object_) {
        tuple_ = TupleOfObject();
        tupleFor_ = object_;
    }
    if (tuple_ == ZtOpFindRowTuples::kNoTuple)
        return EvaluateSpec(index);
    std::uint8_t& result = specResults_[tuple_ * (specStart_.size() - 1) + index];
    if (result == 0)
        result = EvaluateSpec(index) ? 2 : 1;
    return result == 2;
}

inline bool ZtOpFindSpecEvaluator::EvaluateSpec(std::size_t index) {
    const std::size_t first = specStart_[index];
    const std::size_t last = specStart_[index + 1];
    if (first == last)
        return false;
    // Alternatives: each condition that opens one ends the one before.
    bool meetsAll = true;
    for (std::size_t k = first; k < last; ++k) {
        if (k > first && steps_[k].opensAlternative) {
            if (meetsAll)
                return true;
            meetsAll = true;
        }
        if (meetsAll)
            meetsAll = Evaluate(conditions_[steps_[k].condition]);
    }
    return meetsAll;
}
