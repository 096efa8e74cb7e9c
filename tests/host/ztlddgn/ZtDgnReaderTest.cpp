#include "support/DgnTestModels.h"

#include "ztobject/ZtOaAttribute.h"
#include "ztobject/ZtOaProperty.h"
#include "ztobject/ZtOaTraversal.h"

#include <map>

namespace {

ZtTestDgnSymbology Sym(int level, int colour, int weight = 0, int style = 0, int group = 0) {
    ZtTestDgnSymbology s;
    s.level = level;
    s.colour = colour;
    s.weight = weight;
    s.style = style;
    s.graphicGroup = group;
    return s;
}

std::vector<std::int32_t> Range(const ZtDgnElement& e) {
    return {e.range, e.range + 6};
}

std::vector<std::int32_t> Ints(std::initializer_list<std::int32_t> values) {
    return values;
}

// The element index of each node below `root` in walk order, with its depth.
std::vector<std::pair<std::int64_t, int>> Walk(const ZtOaNode& root) {
    struct Collect : ZtOaTraversal {
        std::vector<std::pair<std::int64_t, int>> nodes;
        Result VisitNode(const ZtOaPathLink& link) override {
            int depth = 0;
            for (const ZtOaPathLink* up = link.GetParent(); up; up = up->GetParent())
                ++depth;
            if (depth > 0)
                nodes.emplace_back(link.GetNode()->GetElementIndex(), depth);
            return kContinue;
        }
    } collect;
    root.ApplyTraversal(&collect);
    return collect.nodes;
}

std::map<std::string, std::wstring> PropertyTexts(const ZtOaNode& node, std::string* category) {
    struct Collect : ZtOaPropertyVisitor {
        std::map<std::string, std::wstring> texts;
        std::string category;
        void Visit(ZtUName* c, const ZtOaProperty& p) override {
            category = c->GetInternal().Str();
            const ZtUData& v = p.GetValue();
            texts[p.GetInternalName()] = v.GetType() == ZtUData::kWideString
                                             ? std::wstring(v.GetWideString())
                                             : std::to_wstring(v.GetInt64());
        }
    } collect;
    node.VisitProperties(collect);
    *category = collect.category;
    return collect.texts;
}

TEST(ZtDgnReader, ControlBlockAndSimpleElementsReadBackExactly) {
    struct Case {
        int dimension;
        ZtTestDgnUnits units;
        double factor;
    };
    const Case cases[] = {
        {2, {1000, 10, "m", "mm", {0, 0, 0}}, 10000},
        {3, {12, 8000, "ft", "in", {-480000000, -288000000, 0}}, 96000},
        {3, {1, 1, "U", "S", {0, 0, 0}}, 1},
        {2, {1000, 8, "km", "m", {8004000, -16002000, 0.5}}, 8000},
    };
    ZtTestDgnSymbology a = Sym(1, 2, 3, 4, 5), b = Sym(63, 255, 31, 7, 65535);
    a.linkages = {ZtTestDmrsLinkage(12, 70000)};
    b.linkages = {ZtTestOdbcLinkage(0, 42)};
    const ZtTestDgnSymbology plain = Sym(0, 0);
    const std::int32_t big = 2147483647;
    for (const Case& c : cases) {
        DgnTestFolder folder;
        ZtTestDgnWriter writer(c.dimension, c.units);
        struct Written {
            std::uint32_t index;
            int type;
            const ZtTestDgnSymbology* s;
        };
        const Written written[] = {
            {writer.Line(a, {-10, 20, 30}, {40, -50, 60}), 3, &a},
            {writer.LineString(b, {{-big, 0, 5}, {big, 1, -5}, {0, -big, big}}), 4, &b},
            {writer.Shape(plain, {{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 0, 0}}), 6, &plain},
            {writer.Text(a, {100, 200, 300}, "V-22", 50), 17, &a},
        };
        writer.EndOfDesign();
        std::string reason;
        auto model = folder.Load(writer.Bytes(), &reason);
        ASSERT_TRUE(model) << reason;
        const ZtDgnModelHeader& h = model->GetHeader();
        EXPECT_EQ(h.dimension, c.dimension);
        EXPECT_EQ(h.subunitsPerMaster, c.units.subunitsPerMaster);
        EXPECT_EQ(h.uorsPerSubunit, c.units.uorsPerSubunit);
        EXPECT_EQ(h.masterUnitName, c.units.masterName);
        EXPECT_EQ(h.subUnitName, c.units.subName);
        EXPECT_EQ(h.globalOrigin,
                  ZtLPos3f(c.units.origin[0], c.units.origin[1], c.units.origin[2]));
        EXPECT_EQ(model->GetUorsPerMaster(), c.factor);
        // Where the library looks for the factor: the model's scene properties.
        const auto* props =
            static_cast<const ZtOaPropertyAttribute*>(model->FindAttribute("ZtDgnSceneProps"));
        ASSERT_TRUE(props && props->GetKind() == ZtOaAttribute::kPropertyAttribute);
        EXPECT_EQ(props->GetPropertyVector().Find("ZtDgnUORsPerMaster")->GetValue().GetDouble(),
                  c.factor);
        EXPECT_TRUE(model->GetWarnings().empty());

        ASSERT_EQ(model->GetNumElements(), 4u);
        EXPECT_EQ(model->GetFileElementCount(), 5u);
        for (std::size_t slot = 0; slot < 4; ++slot) {
            const ZtDgnElement& e = model->GetElement(slot);
            const Written& w = written[slot];
            EXPECT_EQ(e.index, w.index);
            EXPECT_EQ(e.offset, writer.Offset(w.index));
            EXPECT_EQ(e.type, w.type);
            EXPECT_EQ(e.GetLevel(), w.s->level);
            EXPECT_EQ(e.colour, w.s->colour);
            EXPECT_EQ(e.GetWeight(), w.s->weight);
            EXPECT_EQ(e.GetStyle(), w.s->style);
            EXPECT_EQ(e.graphicGroup, w.s->graphicGroup);
            EXPECT_FALSE(e.IsComplex());
        }
        // A 2D file's ranges have no z.
        const std::int32_t z = c.dimension == 3 ? 1 : 0;
        EXPECT_EQ(Range(model->GetElement(0)), Ints({-10, -50, 30 * z, 40, 20, 60 * z}));
        EXPECT_EQ(Range(model->GetElement(1)), Ints({-big, -big, -5 * z, big, 1, big * z}));
        const double f = c.factor;
        EXPECT_EQ(model->GetElementBox(0), ZtLBox3f(ZtLPos3f(-10 / f, -50 / f, 30 * z / f),
                                                    ZtLPos3f(40 / f, 20 / f, 60 * z / f)));
        EXPECT_EQ(model->GetDmrs(0), 0x0000000C11700001u);
        EXPECT_EQ(model->GetDmrs(1), 0u);
        EXPECT_EQ(model->GetDmrs(2), 0u);
        const std::uint16_t* words = model->GetLinkageWords(model->GetElement(1));
        EXPECT_EQ(model->GetElement(1).linkageWords, 8u);
        EXPECT_EQ(std::vector<std::uint16_t>(words, words + 8), ZtTestOdbcLinkage(0, 42));
    }
}

TEST(ZtDgnReader, CellsAndComplexElementsBecomeGroups) {
    DgnTestFolder folder;
    ZtTestDgnWriter writer(3, {});
    const std::uint32_t first = writer.Line(Sym(1, 1), {0, 0, 0}, {1, 1, 1});
    ZtTestDgnSymbology cellSymbology = Sym(24, 6);
    cellSymbology.linkages = {{0x1007, 0x0041, 0, 0, 6, 0, 0, 0}, ZtTestOdbcLinkage(0, 9)};
    const std::uint32_t cell = writer.BeginCell(cellSymbology);
    const std::uint32_t outer =
        writer.Shape(Sym(0, 0), {{0, 0, 0}, {100, 0, 0}, {100, 100, 0}, {0, 0, 0}});
    const std::uint32_t chain = writer.BeginComplex(12, Sym(0, 0));
    const std::uint32_t part1 = writer.LineString(Sym(0, 0), {{10, 10, 0}, {20, 20, 5}});
    const std::uint32_t part2 = writer.LineString(Sym(0, 0), {{20, 20, 5}, {30, -10, 7}});
    writer.EndGroup();
    const std::uint32_t hole =
        writer.Shape(Sym(0, 0), {{40, 40, 0}, {60, 40, 0}, {60, 60, 0}, {40, 40, 0}});
    // The stated length leaves out the header's own 16 linkage words, as some writers do:
    // the end falls inside the last component, which still belongs to the cell.
    writer.EndGroup(16);
    const std::uint32_t after = writer.Line(Sym(2, 2), {5, 5, 5}, {6, 6, 6});
    writer.EndOfDesign();

    std::string reason;
    auto model = folder.Load(writer.Bytes(), &reason);
    ASSERT_TRUE(model) << reason;
    const std::vector<std::pair<std::int64_t, int>> expected = {{first, 1}, {cell, 1},  {outer, 2},
                                                                {chain, 2}, {part1, 3}, {part2, 3},
                                                                {hole, 2},  {after, 1}};
    EXPECT_EQ(Walk(*model), expected);
    EXPECT_EQ(model->GetChild(1)->GetPropertyBits() & ZtOaNode::kGeometryBit, 0u);
    EXPECT_EQ(model->GetChild(0)->GetPropertyBits(), ZtOaNode::kGeometryBit);

    // Components carry the complex bit; the header's range is the union of theirs.
    const ZtDgnElement& c = model->GetElement(1);
    EXPECT_EQ(c.type, 2);
    EXPECT_EQ(c.linkageWords, 16u);
    EXPECT_EQ(Range(c), Ints({0, -10, 0, 100, 100, 7}));
    for (std::size_t slot = 0; slot < 8; ++slot)
        EXPECT_EQ(model->GetElement(slot).IsComplex(), slot >= 2 && slot <= 6) << slot;
}

// A model of top-level elements hands out its children's boxes in runs, each as the child
// gives it, from any child on and across the chunks of its records; a model with a cell,
// or with a node added after the load, does not.
TEST(ZtDgnReader, OnlyAModelOfTopLevelElementsHandsOutFlatBoxes) {
    // Nodes added after the load; a model borrows its children, and these outlive it.
    ZtOaGroup addedLater[2];
    DgnTestFolder folder;
    ZtTestDgnWriter flat(3, {1000, 80, "m", "mm", {0, 0, 0}});
    for (int i = 0; i < 3000; ++i)
        flat.Line(Sym(1, 1), {i * 7, -i, 3}, {i * 7 + 5, 2 * i, 3 + i % 11});
    flat.EndOfDesign();
    std::string reason;
    auto model = folder.Load(flat.Bytes(), &reason);
    ASSERT_TRUE(model) << reason;
    ASSERT_TRUE(model->HasFlatBoxes());
    for (const auto& [first, count] : {std::pair<int, int>{0, 3000}, {1000, 1100}, {2999, 1}}) {
        std::vector<ZtLBox3f> boxes(static_cast<std::size_t>(count));
        model->FillChildBoxes(static_cast<std::size_t>(first), boxes.size(), boxes.data());
        for (int i = 0; i < count; ++i) {
            ZtLBox3f box;
            ASSERT_TRUE(model->GetChild(first + i)->GetBoundingBox(&box));
            EXPECT_TRUE(box.GetMin() == boxes[i].GetMin() && box.GetMax() == boxes[i].GetMax())
                << "child " << first + i;
        }
    }
    model->AddChild(&addedLater[0]);
    EXPECT_FALSE(model->HasFlatBoxes());

    ZtTestDgnWriter withCell(3, {});
    withCell.Line(Sym(1, 1), {0, 0, 0}, {1, 1, 1});
    withCell.BeginCell(Sym(2, 2));
    withCell.Line(Sym(0, 0), {0, 0, 0}, {2, 2, 2});
    withCell.EndGroup();
    withCell.EndOfDesign();
    auto grouped = folder.Load(withCell.Bytes(), &reason);
    ASSERT_TRUE(grouped) << reason;
    EXPECT_FALSE(grouped->HasFlatBoxes());
    // As many children as elements now, but the component is not among them.
    grouped->AddChild(&addedLater[1]);
    EXPECT_FALSE(grouped->HasFlatBoxes());
}

TEST(ZtDgnReader, ConsecutiveGroupsAreToldApartByTheirLength) {
    DgnTestFolder folder;
    ZtTestDgnWriter writer(2, {});
    std::vector<std::pair<std::int64_t, int>> expected;
    for (int g = 0; g < 3; ++g) {
        expected.emplace_back(writer.BeginComplex(g == 1 ? 14 : 12, Sym(g + 1, g)), 1);
        expected.emplace_back(writer.LineString(Sym(0, 0), {{0, 0, 0}, {g, g, 0}}), 2);
        expected.emplace_back(writer.LineString(Sym(0, 0), {{g, g, 0}, {9, 9, 0}}), 2);
        writer.EndGroup();
    }
    writer.EndOfDesign();
    std::vector<std::uint8_t> bytes = writer.Bytes();
    // Some writers set the complex bit on the headers themselves.
    for (const auto& [index, depth] : expected)
        if (depth == 1)
            bytes[writer.Offset(static_cast<std::uint32_t>(index))] |= 0x80;
    auto model = folder.Load(bytes);
    ASSERT_TRUE(model);
    EXPECT_EQ(Walk(*model), expected);
}

TEST(ZtDgnReader, DeletedAndNonGraphicElementsArePassedOver) {
    DgnTestFolder folder;
    ZtTestDgnWriter writer(3, {});
    ZtTestDgnSymbology deleted = Sym(5, 5);
    deleted.deleted = true;
    writer.Element(66, Sym(25, 0), std::vector<std::uint8_t>(20, 0), {-5, -5, -5}, {5, 5, 5});
    const std::uint32_t kept = writer.Line(Sym(1, 1), {0, 0, 0}, {1, 0, 0});
    writer.Line(deleted, {0, 0, 0}, {2, 0, 0});
    // A deleted group takes its components with it.
    writer.BeginComplex(12, deleted);
    writer.LineString(Sym(0, 0), {{0, 0, 0}, {1, 1, 1}});
    writer.EndGroup();
    // So does a shared cell definition, which is not drawn itself.
    writer.BeginComplex(34, Sym(0, 0));
    writer.Line(Sym(0, 0), {0, 0, 0}, {3, 3, 3});
    writer.EndGroup();
    const std::uint32_t last = writer.Text(Sym(9, 9), {1, 2, 3}, "A", 10);
    writer.EndOfDesign();
    auto model = folder.Load(writer.Bytes());
    ASSERT_TRUE(model);
    ASSERT_EQ(model->GetNumElements(), 2u);
    EXPECT_EQ(model->GetElement(0).index, kept);
    EXPECT_EQ(model->GetElement(1).index, last);
    EXPECT_EQ(model->GetFileElementCount(), last + 1);
}

TEST(ZtDgnReader, StopsAtTheEndOfDesignOrOfTheFile) {
    DgnTestFolder folder;
    ZtTestDgnWriter empty(2, {});
    const std::vector<std::uint8_t> controlBlockOnly = empty.Bytes();
    empty.EndOfDesign();
    ZtTestDgnWriter writer(2, {});
    writer.Line(Sym(1, 1), {0, 0, 0}, {1, 1, 0});
    std::vector<std::uint8_t> unterminated = writer.Bytes();
    writer.EndOfDesign();
    std::vector<std::uint8_t> trailing = writer.Bytes();
    // Bytes after the end word are not elements, even when they look like one.
    ZtTestDgnWriter more(2, {});
    more.Line(Sym(2, 2), {0, 0, 0}, {1, 1, 0});
    trailing.insert(trailing.end(), more.Bytes().begin() + 1536, more.Bytes().end());
    const std::pair<std::vector<std::uint8_t>, std::size_t> files[] = {
        {controlBlockOnly, 0}, {empty.Bytes(), 0}, {unterminated, 1}, {trailing, 1}};
    for (const auto& [bytes, elements] : files) {
        // Without the document's dictionary the model keeps one of its own.
        std::string reason;
        auto model = ZtDgnReadModel(folder.Write("model.dgn", bytes).c_str(), nullptr, true,
                                    nullptr, &reason);
        ASSERT_TRUE(model) << reason;
        EXPECT_EQ(model->GetNumElements(), elements);
        EXPECT_EQ(model->GetFileElementCount(), elements + 1);
        EXPECT_TRUE(model->GetWarnings().empty());
    }
}

TEST(ZtDgnReader, DmrsValueIsTheFirstNonZeroDmrsLinkage) {
    struct Case {
        std::vector<std::vector<std::uint16_t>> linkages;
        std::uint64_t dmrs;
    };
    const Case cases[] = {
        {{ZtTestDmrsLinkage(12, 1)}, 0x0000000C00010000u},
        {{ZtTestDmrsLinkage(34, 5, true)}, 0x8000002200050000u},
        {{ZtTestDmrsLinkage(65535, 16777215)}, 0x0000FFFFFFFF00FFu},
        {{{0, 0, 0, 0}, ZtTestDmrsLinkage(12, 77)}, 0x0000000C004D0000u},
        {{ZtTestOdbcLinkage(3, 9), ZtTestDmrsLinkage(7, 8)}, 0x0000000700080000u},
        {{ZtTestDmrsLinkage(12, 7), ZtTestDmrsLinkage(99, 8)}, 0x0000000C00070000u},
        {{{0, 0, 0, 0}}, 0},
        {{ZtTestOdbcLinkage(3, 9)}, 0},
        {{}, 0},
    };
    DgnTestFolder folder;
    ZtTestDgnWriter writer(3, {});
    for (const Case& c : cases) {
        ZtTestDgnSymbology s = Sym(1, 1);
        s.linkages = c.linkages;
        writer.Line(s, {0, 0, 0}, {1, 1, 1});
    }
    auto model = folder.Load(writer.Bytes());
    ASSERT_TRUE(model);
    ASSERT_EQ(model->GetNumElements(), std::size(cases));
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        EXPECT_EQ(model->GetDmrs(i), cases[i].dmrs) << i;
        const ZtOaNode* node = model->GetChild(static_cast<int>(i));
        const ZtOaAttribute* attribute = node->FindAttribute("ZtDgnDMRSAttribute");
        if (cases[i].dmrs) {
            ASSERT_TRUE(attribute) << i;
            ASSERT_EQ(attribute->GetKind(), ZtOaAttribute::kNat64Attribute);
            EXPECT_EQ(static_cast<const ZtOaNat64Attribute*>(attribute)->GetValue(), cases[i].dmrs);
            // Asked again, the same attribute.
            EXPECT_EQ(node->FindAttribute("ZtDgnDMRSAttribute"), attribute);
        } else {
            EXPECT_FALSE(attribute) << i;
        }
    }
}

TEST(ZtDgnReader, ElementsCarryTheirFindProperties) {
    DgnTestFolder folder;
    ZtTestDgnWriter writer(3, {});
    writer.LineString(Sym(7, 200, 2, 3, 4000), {{0, 0, 0}, {1, 1, 1}});
    writer.BeginCell(Sym(8, 9));
    writer.Line(Sym(0, 0), {0, 0, 0}, {1, 1, 1});
    writer.EndGroup();
    auto model = folder.Load(writer.Bytes(), nullptr, "pipes.dgn");
    ASSERT_TRUE(model);
    EXPECT_EQ(model->GetName().Str(), L"pipes.dgn");
    EXPECT_TRUE(model->GetSourceFilename().Str().ends_with(L"/pipes.dgn"));

    std::string category;
    const auto texts = PropertyTexts(*model->GetChild(0), &category);
    EXPECT_EQ(category, "ZtDgnElement");
    const std::map<std::string, std::wstring> expected = {
        {"ZtStdLevel", L"Level 7"},
        {"ZtStdColour", L"Colour 200"},
        {"ZtStdSourceFile", L"pipes.dgn"},
        {"ZtDgnType", L"4"},
        {"ZtDgnGraphicGroup", L"4000"},
        {"ZtDgnWeight", L"2"},
        {"ZtDgnStyle", L"3"},
    };
    EXPECT_EQ(texts, expected);
    const ZtOaNode* cell = model->GetChild(1);
    EXPECT_EQ(PropertyTexts(*cell, &category).at("ZtStdLevel"), L"Level 8");
    EXPECT_EQ(PropertyTexts(*static_cast<const ZtOaGroup*>(cell)->GetChild(0), &category)
                  .at("ZtStdColour"),
              L"Colour 0");

    // The same properties as an attribute of the category, named by the document's
    // interned standard names.
    const auto* attribute = static_cast<const ZtOaPropertyAttribute*>(
        model->GetChild(0)->FindAttribute("ZtDgnElement"));
    ASSERT_TRUE(attribute);
    EXPECT_EQ(attribute->GetCategory()->GetDisplay().Str(), L"Element");
    const ZtOaPropertyVector& properties = attribute->GetPropertyVector();
    EXPECT_EQ(properties.Size(), 7);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(properties.Get(i)->GetName(), ZtUName::StandardName(17 + i, &folder.names));
    EXPECT_FALSE(model->GetChild(0)->FindAttribute("ZtDgnPDSAttributes"));
}

} // namespace
