#include "support/DgnTestModels.h"
#include "ztlddgn/ZtDgnAttributeBuilder.h"
#include "ztplugin/ZtOpFindSpecEvaluator.h"
#include "ztplugin/ZtOpTreeSelection.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

// A node's properties as it visits them: the very objects, in order.
struct Seen : ZtOaPropertyVisitor, ZtOpFindTarget {
    std::vector<std::pair<ZtUName*, const ZtOaProperty*>> properties;
    void Visit(ZtUName* category, const ZtOaProperty& property) override {
        properties.emplace_back(category, &property);
    }
    std::size_t GetNumFindProperties() const override { return properties.size(); }
    ZtOpFindProperty GetFindProperty(std::size_t i) const override {
        const auto& [category, property] = properties[i];
        return {category, property->GetName(), &property->GetValue()};
    }
};

// Element nodes below `node`, depth first.
void ElementNodes(const ZtOaNode& node, std::vector<const ZtOaNode*>& out) {
    if (node.GetElementIndex() >= 0)
        out.push_back(&node);
    if (const auto* group = dynamic_cast<const ZtOaGroup*>(&node))
        for (int i = 0; i < group->GetNumChildren(); ++i)
            ElementNodes(*group->GetChild(i), out);
}

class ZtDgnFindTuples : public ::testing::Test {
protected:
    void SetUp() override {
        ZtTestDgnWriter writer(3, {});
        // Each field of the tuple changed alone, repeats, and a cell with components.
        ZtTestDgnSymbology looks[8]; // level 1, the rest 0
        looks[1].level = 2;
        looks[2].colour = 3;
        looks[3].weight = 4;
        looks[4].style = 5;
        looks[5].graphicGroup = 600;
        looks[7].level = 2;
        for (const ZtTestDgnSymbology& look : looks)
            writer.Line(look, {0, 0, 0}, {1, 0, 0});
        writer.Shape(looks[1], {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 0, 0}});
        writer.BeginCell(looks[2]);
        writer.Line(looks[5], {0, 0, 0}, {1, 0, 0});
        writer.Line(looks[2], {0, 0, 0}, {1, 0, 0});
        writer.EndGroup();
        ZtTestDgnSymbology linked = looks[0];
        linked.linkages = {ZtTestDmrsLinkage(12, 101)};
        writer.Line(linked, {0, 0, 0}, {1, 0, 0});
        writer.EndOfDesign();
        model = folder.Load(writer.Bytes());
        ASSERT_TRUE(model);
        ElementNodes(*model, nodes);
        ASSERT_EQ(nodes.size(), 13u);
    }

    DgnTestFolder folder;
    std::unique_ptr<ZtDgnModel> model;
    std::vector<const ZtOaNode*> nodes;
};

// A tuple gives the very properties of each of its elements, elements alike in them share
// one, an element with attributes has none, and selecting by tuples selects what each
// element's own properties select (find queries on every property of three elements).
TEST_F(ZtDgnFindTuples, ATupleIsThePropertiesOfEachOfItsElements) {
    for (const bool attached : {false, true}) {
        if (attached) {
            ZtDgnAttributeBuilder builder(*model);
            std::string why;
            EXPECT_TRUE(builder.AddRow(12, 101, "nps", "6", &why));
            model->AttachAttributes(builder.Finish("plant.db"));
        }
        std::map<std::vector<std::pair<ZtUName*, const ZtOaProperty*>>, std::uint32_t> tupleOf;
        std::vector<Seen> own(nodes.size());
        std::size_t untupled = 0;
        for (std::size_t n = 0; n < nodes.size(); ++n) {
            nodes[n]->VisitProperties(own[n]);
            const std::uint32_t tuple = model->GetFindTuple(*nodes[n]);
            if (tuple == ZtOpFindTupleSource::kNoTuple) {
                ++untupled;
                continue;
            }
            ASSERT_LT(tuple, model->GetNumFindTuples());
            Seen shared;
            model->VisitFindTuple(tuple, shared);
            EXPECT_EQ(shared.properties, own[n].properties) << n;
            EXPECT_EQ(tupleOf.emplace(own[n].properties, tuple).first->second, tuple);
        }
        EXPECT_EQ(untupled, attached ? 1u : 0u);
        EXPECT_EQ(model->GetNumFindTuples(), 8u);
        EXPECT_EQ(tupleOf.size(), 8u);

        std::vector<ZtOpFindSpec> specs;
        for (const std::size_t n : {1, 5, 12})
            for (const auto& [category, property] : own[n].properties)
                specs.emplace_back().AddCondition(ZtOpFindCondition(
                    category, property->GetName(), ZtOpFindConditionFlags::kIgnoreCase,
                    ZtOpFindConditionOp::kEqual, property->GetValue()));
        std::vector<const ZtOpFindSpec*> pointers;
        for (const ZtOpFindSpec& spec : specs)
            pointers.push_back(&spec);
        const std::vector<ZtOpTreeSelection> selected = ZtOpSelectInTree(*model, pointers);
        for (std::size_t i = 0; i < specs.size(); ++i) {
            std::vector<std::int64_t> expected;
            for (std::size_t n = 0; n < nodes.size(); ++n)
                if (ZtOpFindSpecMatches(specs[i], own[n]))
                    expected.push_back(nodes[n]->GetElementIndex());
            EXPECT_EQ(selected.at(i).indices, expected) << i << " " << attached;
        }
    }
    // Nodes of another model, and the model itself, are no tuple of its.
    EXPECT_EQ(model->GetFindTuple(*model), ZtOpFindTupleSource::kNoTuple);
    ZtTestDgnWriter writer(3, {});
    writer.Line(ZtTestDgnSymbology(), {0, 0, 0}, {1, 0, 0});
    writer.EndOfDesign();
    const auto second = folder.Load(writer.Bytes(), nullptr, "other.dgn");
    ASSERT_TRUE(second);
    EXPECT_EQ(model->GetFindTuple(*second->GetChild(0)), ZtOpFindTupleSource::kNoTuple);
}

} // namespace
