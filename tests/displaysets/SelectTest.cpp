// Display sets compiled from their rules and evaluated over models, as the `select` step
// does it: a generated model, and the sample review.
#include "DisplaySetFilesTestSupport.h"
#include "app/ModelStep.h"
#include "app/SelectStep.h"
#include "displaysets/ZtOdPdsDstImportPlugin.h"
#include "support/ZtTestDgnWriter.h"
#include "ztplugin/ZtOpState.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace {

// The selections of the display sets of `dst` over `models`, as the select step makes them.
std::vector<SelectionResult> SelectOver(const std::vector<std::wstring>& models,
                                        const std::wstring& dst) {
    ZtOpState state;
    for (const std::wstring& model : models) {
        std::string error;
        EXPECT_EQ(RunModelStep(state, model, &error), 0) << error;
    }
    ZtOdPdsDstImportPlugin plugin;
    const ZtUWideString file(dst.c_str());
    EXPECT_EQ(plugin.IExport(0, &state, nullptr, &file), 0);
    return ComputeSelections(state);
}

TEST(Select, EachSetSelectsTheElementsItsRuleDescribes) {
    ZtTestTempDir dir;
    ZtTestDgnWriter writer(3, ZtTestDgnUnits{});
    auto symbology = [](int level, int colour) {
        ZtTestDgnSymbology s;
        s.level = level;
        s.colour = colour;
        return s;
    };
    const ZtTestDgnPoint a{0, 0, 0};
    const ZtTestDgnPoint b{1000, 1000, 0};
    const std::uint32_t e1 = writer.Line(symbology(10, 2), a, b);
    const std::uint32_t e2 = writer.Line(symbology(10, 1), a, b);
    const std::uint32_t e3 = writer.Line(symbology(11, 2), a, b);
    const std::uint32_t e4 = writer.Line(symbology(12, 3), a, b);
    const std::uint32_t e5 = writer.BeginCell(symbology(12, 3));
    const std::uint32_t e6 = writer.Line(symbology(10, 2), a, b);
    const std::uint32_t e7 = writer.Line(symbology(11, 3), a, b);
    writer.EndGroup();
    writer.EndOfDesign();
    ASSERT_TRUE(writer.Save(dir.File("unit.dgn")));
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("rules.dst"), R"([DEFINITION SECTION]
<Display Set>
1 Level 10
<Definition>
FIND Level 10
<Display Set>
2 Colour 2 on 10 or 11
<Definition>
FIND Level 10, 11
KEEP ONLY Color 2
<Display Set>
3 Not level 10
<Definition>
FIND ALL BUT Level 10
<Display Set>
4 File without 11
<Definition>
FIND File unit.dgn
THROW AWAY Level 11
<Display Set>
5 Reference and scope
<Definition>
FIND Display Set Level 10
ADD
FIND Color 3
KEEP ONLY Level 12
END FIND
END FIND
<Display Set>
6 Other file
<Definition>
FIND File other.dgn
<Display Set>
7 PDS attribute
<Definition>
FIND Data line_id  = 1*
)"));

    std::map<std::string, std::vector<std::int64_t>> selected;
    const std::vector<SelectionResult> results =
        SelectOver({dir.WideFile("unit.dgn")}, dir.WideFile("rules.dst"));
    EXPECT_EQ(results.size(), 7u);
    for (const SelectionResult& result : results)
        for (const SelectedElement& element : result.elements) {
            EXPECT_EQ(element.model, L"unit.dgn");
            selected[ZtUSysString::WideToUtf8(result.name)].push_back(element.index);
        }
    using Indices = std::vector<std::int64_t>;
    EXPECT_EQ(selected["Level 10"], (Indices{e1, e2, e6}));
    EXPECT_EQ(selected["Colour 2 on 10 or 11"], (Indices{e1, e3, e6}));
    EXPECT_EQ(selected["Not level 10"], (Indices{e3, e4, e5, e7}));
    EXPECT_EQ(selected["File without 11"], (Indices{e1, e2, e4, e5, e6}));
    EXPECT_EQ(selected["Reference and scope"], (Indices{e1, e2, e4, e5, e6}));
    EXPECT_EQ(selected.count("Other file"), 0u);
    EXPECT_EQ(selected.count("PDS attribute"), 0u);
}

// The display sets of the sample review, over its three models.
TEST(SampleReview, DisplaySetsSelectTheirPartsOfThePlant) {
    const std::string plant = ZT_SOURCE_DIR "/examples/plant/";
    std::vector<std::wstring> models;
    for (const char* model : {"pipes.dgn", "equipment.dgn", "steel.dgn"})
        models.push_back(ZtTestWide(plant + model));
    // Per set: how many elements of each model it selects.
    using Counts = std::map<std::string, int>;
    std::map<std::string, Counts> counts;
    std::vector<std::string> names;
    for (const SelectionResult& result : SelectOver(models, ZtTestWide(plant + "plant.dst"))) {
        names.push_back(ZtUSysString::WideToUtf8(result.name));
        for (const SelectedElement& element : result.elements)
            ++counts[names.back()][ZtUSysString::WideToUtf8(element.model)];
    }
    EXPECT_EQ(names, (std::vector<std::string>{"Process piping", "Utilities", "Pumps and nozzles",
                                               "Steel without bracing", "Piping and steel"}));
    // Six process lines, and four valve cells of two shapes each.
    EXPECT_EQ(counts["Process piping"], (Counts{{"pipes.dgn", 18}}));
    EXPECT_EQ(counts["Utilities"], (Counts{{"pipes.dgn", 3}}));
    // Three pump cells of two parts each, and two nozzles.
    EXPECT_EQ(counts["Pumps and nozzles"], (Counts{{"equipment.dgn", 11}}));
    // Ten columns and fourteen beams; the two braces are thrown away.
    EXPECT_EQ(counts["Steel without bracing"], (Counts{{"steel.dgn", 24}}));
    Counts both = counts["Process piping"];
    both["pipes.dgn"] += counts["Utilities"]["pipes.dgn"];
    both["steel.dgn"] = counts["Steel without bracing"]["steel.dgn"];
    EXPECT_EQ(counts["Piping and steel"], both);
}

} // namespace
