#include "support/DgnTestModels.h"
#include "ztlddgn/ZtDgnAttributeBuilder.h"
#include "ztlddgn/ZtDgnTextPool.h"
#include "ztobject/ZtOaAttribute.h"
#include "ztplugin/ZtOpFindSpec.h"
#include "ztplugin/ZtOpTreeSelection.h"
#include "ztutil/ZtUResource.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

// Each element's PDS properties as "name=value", in the order they are visited.
std::vector<std::wstring> PdsProperties(const ZtOaNode& node) {
    struct Collect : ZtOaPropertyVisitor {
        std::vector<std::wstring> texts;
        void Visit(ZtUName* category, const ZtOaProperty& p) override {
            if (category->GetInternal().Str() != "ZtDgnPDSAttributes")
                return;
            EXPECT_EQ(std::string(p.GetInternalName()), "ZtDgnPDSAttribute");
            texts.push_back(p.GetName()->GetDisplay().Str() + L"=" + p.GetValue().GetWideString());
        }
    } collect;
    node.VisitProperties(collect);
    return collect.texts;
}

ZtTestDgnSymbology Linked(std::vector<std::uint16_t> linkage) {
    ZtTestDgnSymbology s;
    s.level = 1;
    s.linkages = {std::move(linkage)};
    return s;
}

TEST(ZtDgnAttributeKey, TakesEntityAndTheOccurrenceOfThreeBytes) {
    struct Case {
        std::uint64_t dmrs;
        std::uint64_t entity, occurrence;
    };
    const Case cases[] = {
        {0x0000000C00010000u, 12, 1},
        {0x0000000C11700001u, 12, 70000},       // bits 16-23 in the low byte of word 3
        {0x8000002200050000u, 34, 5},           // the first word does not count
        {0x0000FFFFFFFF00FFu, 65535, 16777215}, // the largest of each
        {0x0000000C0007AB01u, 12, 65536 + 7},   // the high byte of word 3 does not count
    };
    for (const Case& c : cases)
        EXPECT_EQ(ZtDgnAttributeKey(c.dmrs), c.entity << 24 | c.occurrence) << std::hex << c.dmrs;
}

TEST(ZtDgnTextPool, KeepsEachTextOnceThroughGrowthAndSealing) {
    ZtDgnTextPool pool;
    std::vector<std::string> texts = {"", std::string("a\0b", 3), "a"};
    for (int i = 0; i < 5000; ++i)
        texts.push_back("text " + std::to_string(i));
    for (int round = 0; round < 2; ++round)
        for (std::size_t i = 0; i < texts.size(); ++i)
            ASSERT_EQ(pool.Intern(texts[i]), i) << texts[i];
    EXPECT_EQ(pool.Size(), texts.size());
    pool.Seal();
    std::size_t bytes = 0;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(pool.Get(static_cast<std::uint32_t>(i)), texts[i]);
        bytes += texts[i].size();
    }
    EXPECT_EQ(pool.TextBytes(), bytes);
    EXPECT_EQ(pool.OverheadBytes(), texts.size() * sizeof(std::uint32_t));
}

TEST(ZtDgnNumberPool, NumbersEachValueOnceThroughGrowth) {
    ZtDgnNumberPool pool;
    for (int round = 0; round < 2; ++round)
        for (std::uint64_t i = 0; i < 3000; ++i)
            ASSERT_EQ(pool.Intern(i << 24 | 7), i);
    pool.Seal();
    EXPECT_EQ(pool.Size(), 3000u);
    EXPECT_EQ(pool.Get(2999), std::uint64_t{2999} << 24 | 7);
}

class ZtDgnAttributeAttach : public ::testing::Test {
protected:
    void SetUp() override {
        ZtTestDgnWriter writer(3, {});
        writer.Line(Linked(ZtTestDmrsLinkage(12, 101)), {0, 0, 0}, {1, 0, 0});   // 0
        writer.Line(Linked(ZtTestDmrsLinkage(12, 70000)), {0, 1, 0}, {1, 1, 0}); // 1
        writer.Line(Linked(ZtTestDmrsLinkage(12, 101)), {0, 2, 0}, {1, 2, 0});   // 2: key of 0
        writer.Line(Linked(ZtTestDmrsLinkage(40, 7)), {0, 3, 0}, {1, 3, 0});     // 3: no rows
        writer.Line(ZtTestDgnSymbology(), {0, 4, 0}, {1, 4, 0});                 // 4: no linkage
        writer.Line(Linked(ZtTestDmrsLinkage(40, 7)), {0, 5, 0}, {1, 5, 0});     // 5: as 3
        writer.EndOfDesign();
        model = folder.Load(writer.Bytes());
        ASSERT_TRUE(model);
    }

    struct Row {
        std::int64_t entity, occurrence;
        std::string name, value;
    };

    std::unique_ptr<ZtDgnAttributeStore> Build(const std::vector<Row>& rows) {
        ZtDgnAttributeBuilder builder(*model);
        std::string why;
        for (const Row& row : rows)
            EXPECT_TRUE(builder.AddRow(row.entity, row.occurrence, row.name, row.value, &why));
        return builder.Finish("plant.db");
    }

    DgnTestFolder folder;
    std::unique_ptr<ZtDgnModel> model;
};

TEST_F(ZtDgnAttributeAttach, ElementsCarryTheRowsOfTheirKeyInTheSourcesOrder) {
    model->AttachAttributes(Build({
        {12, 101, "line_number", "P-101"},
        {12, 70000, "nps", "6"},
        {12, 101, "nps", "4"},
        {13, 101, "nps", "9"},             // no element has the key
        {12, 101 + (1 << 24), "nps", "9"}, // past 24 bits: not key 101
        {-1, 101, "nps", "9"},             // no entity
        {12, 70000, std::string("spec\0x", 6), std::string("A1\0junk", 7)},
        {12, 101, "line_number", "P-101"}, // repeated: a second attribute
    }));
    const ZtDgnAttributeStore* store = model->GetAttributeStore();
    ASSERT_TRUE(store);
    EXPECT_EQ(store->GetSource(), "plant.db");
    EXPECT_EQ(store->GetRowsRead(), 8u);
    EXPECT_EQ(store->GetElementsWithAttributes(), 3u);
    EXPECT_EQ(store->GetAttributeCount(), 3u + 2u + 3u);

    const std::vector<std::wstring> pipe = {L"line_number=P-101", L"nps=4", L"line_number=P-101"};
    EXPECT_EQ(PdsProperties(*model->GetChild(0)), pipe);
    EXPECT_EQ(PdsProperties(*model->GetChild(2)), pipe);
    EXPECT_EQ(PdsProperties(*model->GetChild(1)),
              (std::vector<std::wstring>{L"nps=6", L"spec=A1"}));
    for (int i : {3, 4, 5})
        EXPECT_TRUE(PdsProperties(*model->GetChild(i)).empty()) << i;
    // The texts as stored, up to their NUL.
    const auto valve = store->GetElementPairs(1);
    ASSERT_EQ(valve.size(), 2u);
    EXPECT_EQ(store->GetName(valve[1]), "spec");
    EXPECT_EQ(store->GetValue(valve[1]), "A1");
    // A pair is one property, whichever element shows it.
    const auto pairs = store->GetElementPairs(0);
    ASSERT_EQ(pairs.size(), 3u);
    EXPECT_EQ(pairs[0], pairs[2]);
    EXPECT_EQ(&store->GetProperty(pairs[0]), &store->GetProperty(store->GetElementPairs(2)[0]));

    // Key 40/7 is carried by two elements and found no rows.
    ASSERT_EQ(store->GetUnmatchedKeys().size(), 1u);
    EXPECT_EQ(store->GetUnmatchedKeys()[0].entity, 40u);
    EXPECT_EQ(store->GetUnmatchedKeys()[0].occurrence, 7u);
    EXPECT_EQ(store->GetUnmatchedKeys()[0].elements, 2u);
}

TEST_F(ZtDgnAttributeAttach, TheCategoryIsAnAttributeOfTheNodeAndReplacedByALaterSource) {
    EXPECT_FALSE(model->GetChild(0)->FindAttribute("ZtDgnPDSAttributes"));
    model->AttachAttributes(Build({{12, 101, "spec", "A1"}, {12, 101, "nps", "6"}}));
    const auto* attribute = static_cast<const ZtOaPropertyAttribute*>(
        model->GetChild(0)->FindAttribute("ZtDgnPDSAttributes"));
    ASSERT_TRUE(attribute);
    EXPECT_EQ(attribute->GetCategory(),
              folder.names.Find(ZtUResource::FindString("ztlddgn_pds_compdata", nullptr),
                                "ZtDgnPDSAttributes"));
    EXPECT_EQ(attribute->GetCategory()->GetDisplay().Str(), L"PDS");
    ASSERT_EQ(attribute->GetPropertyVector().Size(), 2);
    EXPECT_EQ(attribute->GetPropertyVector().Get(1)->GetName(),
              folder.names.Find(L"nps", "ZtDgnPDSAttribute"));
    // The element's own category keeps its seven properties.
    const auto* element = static_cast<const ZtOaPropertyAttribute*>(
        model->GetChild(0)->FindAttribute("ZtDgnElement"));
    ASSERT_TRUE(element);
    EXPECT_EQ(element->GetPropertyVector().Size(), 7);
    EXPECT_FALSE(model->GetChild(3)->FindAttribute("ZtDgnPDSAttributes"));

    model->AttachAttributes(Build({{40, 7, "grade", "S355"}}));
    EXPECT_FALSE(model->GetChild(0)->FindAttribute("ZtDgnPDSAttributes"));
    EXPECT_EQ(PdsProperties(*model->GetChild(5)), std::vector<std::wstring>{L"grade=S355"});
    model->AttachAttributes(nullptr);
    EXPECT_TRUE(PdsProperties(*model->GetChild(5)).empty());
}

// Data criteria come to the host as conditions on the category and a property named
// after the attribute, flags 9: numbers compare as numbers, texts ignore case.
TEST_F(ZtDgnAttributeAttach, FindSpecsSelectOnTheAttributes) {
    model->AttachAttributes(Build({
        {12, 101, "nps", "10"},
        {12, 101, "spec", "a1b"},
        {12, 70000, "nps", "6"},
        {12, 70000, "spec", "B2"},
    }));
    ZtUName* category = folder.names.Find(L"PDS", "ZtDgnPDSAttributes");
    auto condition = [&](const wchar_t* name, ZtOpFindConditionOp::Enum op, const wchar_t* value) {
        ZtUData data;
        data.SetWideString(value);
        return ZtOpFindCondition(category, folder.names.Find(name, "ZtDgnPDSAttribute"),
                                 static_cast<ZtOpFindConditionFlags::Enum>(9), op, data);
    };
    struct Case {
        ZtOpFindCondition condition;
        std::vector<std::int64_t> indexes;
    };
    const Case cases[] = {
        {condition(L"nps", ZtOpFindConditionOp::kGreaterEqual, L"6"), {1, 2, 3}},
        {condition(L"nps", ZtOpFindConditionOp::kGreater, L"9"), {1, 3}}, // not "10" < "9"
        {condition(L"spec", ZtOpFindConditionOp::kWildcard, L"A1*"), {1, 3}},
        {condition(L"spec", ZtOpFindConditionOp::kEqual, L"b2"), {2}},
        {condition(L"Spec", ZtOpFindConditionOp::kEqual, L"b2"), {}}, // names are exact
        {condition(L"grade", ZtOpFindConditionOp::kEqual, L"S355"), {}},
    };
    std::vector<ZtOpFindSpec> specs(std::size(cases));
    std::vector<const ZtOpFindSpec*> pointers;
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        specs[i].AddCondition(cases[i].condition);
        pointers.push_back(&specs[i]);
    }
    const auto selected = ZtOpSelectInTree(*model, pointers);
    for (std::size_t i = 0; i < std::size(cases); ++i)
        EXPECT_EQ(selected[i].indices, cases[i].indexes) << i;
}

} // namespace
