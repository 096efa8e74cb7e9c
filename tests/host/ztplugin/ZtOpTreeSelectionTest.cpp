#include "ztplugin/ZtOpTreeSelection.h"
#include "support/ZtTestRecordingProgress.h"
#include "ztobject/ZtOaPartition.h"
#include "ztobject/ZtOaProperty.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using Properties = std::vector<std::pair<ZtUName*, ZtOaProperty>>;

// A node that stands for element `index`, with the given properties: an element on a
// ZtOaNode, a cell (an element that is a group of elements) on a ZtOaGroup.
template <class Base> class Indexed : public Base {
public:
    template <class... Args>
    Indexed(std::int64_t index, Properties properties, Args... args)
        : Base(args...), index_(index), properties_(std::move(properties)) {}
    void VisitProperties(ZtOaPropertyVisitor& visitor) const override {
        for (const auto& [category, property] : properties_)
            visitor.Visit(category, property);
    }
    std::int64_t GetElementIndex() const override { return index_; }

private:
    std::int64_t index_;
    Properties properties_;
};

ZtOaNode* Element(std::int64_t index, Properties properties) {
    return new Indexed<ZtOaNode>(index, std::move(properties), ZtOaNode::kGeometryBit);
}

TEST(ZtOpSelectInTree, EvaluatesEverySpecOnEveryElementNode) {
    ZtUNameDict names;
    ZtUName* element = names.Find(L"Element", "ZtDgnElement");
    ZtUName* level = ZtUName::StandardName(17, &names);
    auto text = [](const wchar_t* text) {
        ZtUData value;
        value.SetWideString(text);
        return value;
    };
    auto levelProperty = [&](const wchar_t* value) {
        return Properties{{element, ZtOaProperty(level, text(value))}};
    };
    ZtOaPartition root(L"document");
    auto* first = new ZtOaPartition(L"a.dgn");
    first->AddChild(Element(1, levelProperty(L"Level 3")));
    auto* cell = new Indexed<ZtOaGroup>(2, levelProperty(L"Level 4"));
    cell->AddChild(Element(3, levelProperty(L"Level 3")));
    first->AddChild(cell);
    // A node that stands for no element is not evaluated, whatever it holds.
    first->AddChild(Element(-1, levelProperty(L"Level 3")));
    root.AddChild(first);
    auto* second = new ZtOaPartition(L"b.dgn");
    second->AddChild(Element(1, levelProperty(L"Level 3")));
    root.AddChild(second);

    ZtOpFindSpec three, four;
    const ZtOpFindSpec none;
    for (auto [spec, value] : {std::pair{&three, L"Level 3"}, {&four, L"level 4"}})
        spec->AddCondition(ZtOpFindCondition(nullptr, level, ZtOpFindConditionFlags::kIgnoreCase,
                                             ZtOpFindConditionOp::kEqual, text(value)));
    std::vector<std::string> got;
    for (const ZtOpTreeSelection& selection : ZtOpSelectInTree(root, {&three, &four, &none})) {
        got.emplace_back();
        std::size_t at = 0;
        for (const ZtOpTreeSelection::Run& run : selection.runs) {
            const std::wstring model = run.model->GetName().Str();
            got.back() += std::string(model.begin(), model.end()) + ":";
            for (; at < run.end; ++at)
                got.back() += " " + std::to_string(selection.indices[at]);
            got.back() += " ";
        }
    }
    // One run a model, however many elements it has.
    EXPECT_EQ(got, (std::vector<std::string>{"a.dgn: 1 3 b.dgn: 1 ", "a.dgn: 2 ", ""}));
    EXPECT_TRUE(ZtOpSelectInTree(root, {}).empty());
}

// A long walk tells how far it got now and then, not at every element, and ends at 1.
TEST(ZtOpSelectInTree, ReportsProgressOverTheExpectedElements) {
    ZtTestRecordingProgress progress;
    ZtOaPartition root(L"document");
    for (int i = 0; i < 10000; ++i)
        root.AddChild(Element(i, {}));
    const ZtOpFindSpec none;
    ZtOpSelectInTree(root, {&none}, &progress, 10000);
    EXPECT_EQ(progress.seen, (std::vector<double>{0.4096, 0.8192, 1.0}));
}

} // namespace
