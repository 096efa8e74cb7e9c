// Display sets compiled from their rules and evaluated over models: in process as the
// `select` step does it, by `pdsreview select` as a user runs it, and over the sample review.
#include "DisplaySetFilesTestSupport.h"
#include "app/ModelStep.h"
#include "app/SelectStep.h"
#include "displaysets/ZtOdPdsDstImportPlugin.h"
#include "tools/ZtTestDgnWriter.h"
#include "ztplugin/ZtOpState.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace {

using Selected = std::map<std::string, std::vector<std::int64_t>>;

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

// A model of lines and a cell on levels and colours, and the elements that each set of
// fixtures/select.dst selects in it.
class Select : public ::testing::Test {
protected:
    void SetUp() override {
        ZtTestDgnWriter writer(3, ZtTestDgnUnits{});
        auto line = [&writer](int level, int colour) {
            ZtTestDgnSymbology s;
            s.level = level;
            s.colour = colour;
            return writer.Line(s, {0, 0, 0}, {1000, 1000, 0});
        };
        const std::int64_t e1 = line(10, 2);
        const std::int64_t e2 = line(10, 1);
        const std::int64_t e3 = line(11, 2);
        const std::int64_t e4 = line(12, 3);
        ZtTestDgnSymbology cell;
        cell.level = 12;
        cell.colour = 3;
        const std::int64_t e5 = writer.BeginCell(cell);
        const std::int64_t e6 = line(10, 2);
        const std::int64_t e7 = line(11, 3);
        writer.EndGroup();
        writer.EndOfDesign();
        ASSERT_TRUE(writer.Save(model));
        expected = {
            {"Level 10", {e1, e2, e6}},
            {"Colour 2 on 10 or 11", {e1, e3, e6}},
            {"Not level 10", {e3, e4, e5, e7}},
            {"File without 11", {e1, e2, e4, e5, e6}},
            {"Reference and scope", {e1, e2, e4, e5, e6}},
            {"Other file", {}},
            {"PDS attribute", {}},
        };
    }

    ZtTestTempDir dir;
    const std::string model = dir.File("unit.dgn");
    const std::string rules = ZT_TEST_DIR "/fixtures/select.dst";
    Selected expected;
};

TEST_F(Select, EachSetSelectsTheElementsItsRuleDescribes) {
    Selected selected;
    for (const SelectionResult& result : SelectOver({ZtTestWide(model)}, ZtTestWide(rules))) {
        std::vector<std::int64_t>& indices = selected[ZtUSysString::WideToUtf8(result.name)];
        for (const SelectedElement& element : result.elements) {
            EXPECT_EQ(element.model, L"unit.dgn");
            indices.push_back(element.index);
        }
    }
    EXPECT_EQ(selected, expected);
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
