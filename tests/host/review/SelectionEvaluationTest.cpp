// The select step: display sets compiled from their rules and evaluated over a model. The
// sample review's selections are the case folder cases/select.
#include "review/SelectionEvaluation.h"
#include "displaysets/ZtOdPdsDstImportPlugin.h"
#include "review/ModelLoad.h"
#include "tools/ZtTestDgnWriter.h"
#include "tools/ZtTestFiles.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUSysString.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace {

using Selected = std::map<std::string, std::vector<std::int64_t>>;

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
    ZtOpState state;
    std::string error;
    ASSERT_EQ(LoadModelIntoScene(state, ZtTestWide(model), &error), 0) << error;
    ZtOdPdsDstImportPlugin plugin;
    const ZtUWideString file(ZtTestWide(rules).c_str());
    ASSERT_EQ(plugin.IExport(0, &state, nullptr, &file), 0);
    Selected selected;
    for (const SelectionResult& result : ComputeSelections(state)) {
        std::vector<std::int64_t>& indices = selected[ZtUSysString::WideToUtf8(result.name)];
        for (const SelectedRun& run : result.runs)
            EXPECT_EQ(run.model, L"unit.dgn");
        indices = result.indices;
    }
    EXPECT_EQ(selected, expected);
}

} // namespace
