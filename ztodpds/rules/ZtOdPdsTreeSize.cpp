#include "rules/ZtOdPdsTreeSize.h"

#include "rules/ZtOdPdsOperation.h"
#include "rules/ZtOdPdsStatement.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

namespace {

// The flat form of a node under a negation carried from above: how many AND groups it
// has and how many conditions they hold.
struct Flat {
    std::uint64_t groups;
    std::uint64_t conditions;
};

struct Measure {
    std::size_t depth;
    Flat flat[2]; // [carried negation]
};

std::uint64_t Add(std::uint64_t a, std::uint64_t b, std::uint64_t cap) {
    return std::min(a + b, cap);
}

// Both factors are at most `cap`, so the product can't overflow for any sane cap.
std::uint64_t Multiply(std::uint64_t a, std::uint64_t b, std::uint64_t cap) {
    return std::min(a * b, cap);
}

Measure MeasureStatement(const ZtOdPdsStatement& statement) {
    Measure measure{1, {}};
    for (int carried = 0; carried < 2; ++carried) {
        const bool negated = (carried ^ statement.IsNegated()) != 0;
        ZtOpFindConditionOp::Enum complement;
        const bool twice =
            statement.GetExtraCondition().GetCondition() != ZtOpFindConditionOp::kNone ||
            (negated &&
             !ZtOdPdsStatement::Complement(statement.GetCondition().GetCondition(), &complement));
        measure.flat[carried] = {1, twice ? 2u : 1u};
    }
    return measure;
}

Measure MeasureOperation(const ZtOdPdsOperation& operation, const Measure& left,
                         const Measure& right, std::uint64_t cap) {
    Measure measure{1 + std::max(left.depth, right.depth), {}};
    for (int carried = 0; carried < 2; ++carried) {
        // De Morgan: a negation turns AND into OR and goes on to both operands.
        const int negated = carried ^ operation.IsNegated();
        const bool isAnd = (operation.GetKind() ^ negated) == ZtOdPdsOperation::kAnd;
        const Flat& l = left.flat[negated];
        const Flat& r = right.flat[negated];
        if (isAnd)
            measure.flat[carried] = {Multiply(l.groups, r.groups, cap),
                                     Add(Multiply(l.conditions, r.groups, cap),
                                         Multiply(r.conditions, l.groups, cap), cap)};
        else
            measure.flat[carried] = {Add(l.groups, r.groups, cap),
                                     Add(l.conditions, r.conditions, cap)};
    }
    return measure;
}

} // namespace

ZtOdPdsTreeSize ZtOdPdsMeasureTree(const ZtOdPdsNode* root, std::uint64_t cap) {
    std::unordered_map<const ZtOdPdsNode*, Measure> measured;
    // Post-order with an explicit stack: a node is measured once its operands are.
    std::vector<const ZtOdPdsNode*> pending{root};
    while (!pending.empty()) {
        const ZtOdPdsNode* node = pending.back();
        if (measured.count(node)) {
            pending.pop_back();
            continue;
        }
        if (node->IsStatement()) {
            measured.emplace(node, MeasureStatement(static_cast<const ZtOdPdsStatement&>(*node)));
            pending.pop_back();
            continue;
        }
        const auto& operation = static_cast<const ZtOdPdsOperation&>(*node);
        const auto left = measured.find(operation.GetLeft());
        const auto right = measured.find(operation.GetRight());
        if (left != measured.end() && right != measured.end()) {
            measured.emplace(node, MeasureOperation(operation, left->second, right->second, cap));
            pending.pop_back();
            continue;
        }
        if (right == measured.end())
            pending.push_back(operation.GetRight());
        if (left == measured.end())
            pending.push_back(operation.GetLeft());
    }
    const Measure& whole = measured.at(root);
    return {whole.depth, whole.flat[0].conditions};
}
