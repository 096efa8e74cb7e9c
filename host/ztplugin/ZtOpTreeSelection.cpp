#include "ztplugin/ZtOpTreeSelection.h"

#include "ztobject/ZtOaNode.h"
#include "ztobject/ZtOaPartition.h"
#include "ztobject/ZtOaProperty.h"
#include "ztobject/ZtOaTraversal.h"
#include "ztplugin/ZtOpFindSpecEvaluator.h"
#include "ztplugin/ZtOpFindTupleSource.h"
#include "ztplugin/ZtOpProgress.h"

namespace {

// The properties of one node at a time, as find queries see them. The list is kept from
// node to node, so that the walk allocates only while it meets more properties than ever.
class NodeProperties : private ZtOaPropertyVisitor {
public:
    void Gather(const ZtOaNode& node) {
        properties_.clear();
        node.VisitProperties(*this);
    }
    void Gather(const ZtOpFindTupleSource& source, std::uint32_t tuple) {
        properties_.clear();
        source.VisitFindTuple(tuple, *this);
    }
    const ZtOpFindProperty* Data() const { return properties_.data(); }
    std::size_t Size() const { return properties_.size(); }

private:
    void Visit(ZtUName* category, const ZtOaProperty& property) override {
        properties_.push_back({category, property.GetName(), &property.GetValue()});
    }

    std::vector<ZtOpFindProperty> properties_;
};

class SelectTraversal : public ZtOaTraversal {
public:
    SelectTraversal(const std::vector<const ZtOpFindSpec*>& specs, ZtOpProgress* progress,
                    std::size_t elements)
        : evaluator_(specs), selected_(specs.size()), progress_(progress), elements_(elements) {}

    Result VisitNode(const ZtOaPathLink& link) override {
        const ZtOaNode* node = link.GetNode();
        if (node->IsPartition())
            EnterPartition(*node);
        const ZtOaPartition* model = nullptr;
        // A node with a tuple is an element: its index is asked only when a find query selects it.
        const std::uint32_t tuple =
            source_ ? source_->GetFindTuple(*node) : ZtOpFindTupleSource::kNoTuple;
        if (tuple != ZtOpFindTupleSource::kNoTuple) {
            CountElement();
            const std::uint8_t* results = TupleResults(tuple);
            if (!results)
                return kContinue;
            const std::int64_t index = node->GetElementIndex();
            for (std::size_t i = 0; i < selected_.size(); ++i)
                if (results[i] == kHolds)
                    Select(i, index, link, model);
            return kContinue;
        }
        const std::int64_t index = node->GetElementIndex();
        if (index < 0)
            return kContinue;
        CountElement();
        properties_.Gather(*node);
        evaluator_.SetObject(properties_.Data(), properties_.Size());
        for (std::size_t i = 0; i < selected_.size(); ++i)
            if (evaluator_.Matches(i))
                Select(i, index, link, model);
        return kContinue;
    }

    std::vector<ZtOpTreeSelection> Take() { return std::move(selected_); }

private:
    // A find query's result on a tuple of the current source: not worked out yet, fails, holds.
    static constexpr std::uint8_t kUnknown = 0;
    static constexpr std::uint8_t kFails = 1;
    static constexpr std::uint8_t kHolds = 2;

    // The partitions of a walk come before their elements; elements below a partition that
    // is not theirs are no tuple of its, and are looked at on their own.
    void EnterPartition(const ZtOaNode& node) {
        source_ = dynamic_cast<const ZtOpFindTupleSource*>(&node);
        tupleResults_.clear();
        if (source_)
            tupleResults_.assign(std::size_t{source_->GetNumFindTuples()} * (selected_.size() + 1),
                                 kUnknown);
    }

    // The find queries' results on `tuple`, worked out on its first element; null if none holds.
    // A tuple's row holds whether any does, then each find query's result.
    const std::uint8_t* TupleResults(std::uint32_t tuple) {
        std::uint8_t* row = tupleResults_.data() + std::size_t{tuple} * (selected_.size() + 1);
        if (row[0] == kUnknown) {
            properties_.Gather(*source_, tuple);
            evaluator_.SetObject(properties_.Data(), properties_.Size());
            row[0] = kFails;
            for (std::size_t i = 0; i < selected_.size(); ++i) {
                row[i + 1] = evaluator_.Matches(i) ? kHolds : kFails;
                if (row[i + 1] == kHolds)
                    row[0] = kHolds;
            }
        }
        return row[0] == kHolds ? row + 1 : nullptr;
    }

    void CountElement() {
        if (progress_ && ++visited_ % kReportEvery == 0 && elements_ > 0)
            progress_->SetProgress(static_cast<double>(visited_) / static_cast<double>(elements_));
    }

    // Adds the element to selection `i`; `model` is the element's, found on first need.
    void Select(std::size_t i, std::int64_t index, const ZtOaPathLink& link,
                const ZtOaPartition*& model) {
        if (!model)
            model = ModelOf(link);
        ZtOpTreeSelection& selection = selected_[i];
        selection.indices.push_back(index);
        if (selection.runs.empty() || selection.runs.back().model != model)
            selection.runs.push_back({model, 0});
        selection.runs.back().end = selection.indices.size();
    }

    static const ZtOaPartition* ModelOf(const ZtOaPathLink& link) {
        for (const ZtOaPathLink* at = &link; at; at = at->GetParent())
            if (at->GetNode()->IsPartition())
                return static_cast<const ZtOaPartition*>(at->GetNode());
        return nullptr;
    }

    // Elements between two reports: often enough for a bar, rare enough to cost nothing.
    static constexpr std::size_t kReportEvery = 4096;

    ZtOpFindSpecEvaluator evaluator_;
    std::vector<ZtOpTreeSelection> selected_;
    NodeProperties properties_;
    // The partition last entered, where it is a tuple source, and the find queries' results on its
    // tuples, a row a tuple (see TupleResults).
    const ZtOpFindTupleSource* source_ = nullptr;
    std::vector<std::uint8_t> tupleResults_;
    ZtOpProgress* progress_;
    std::size_t elements_;
    std::size_t visited_ = 0;
};

} // namespace

std::vector<ZtOpTreeSelection> ZtOpSelectInTree(const ZtOaNode& root,
                                                const std::vector<const ZtOpFindSpec*>& specs,
                                                ZtOpProgress* progress, std::size_t elements) {
    SelectTraversal traversal(specs, progress, elements);
    root.ApplyTraversal(&traversal);
    if (progress)
        progress->SetProgress(1.0);
    return traversal.Take();
}
