// The display sets of the sample review, over its three models.
#include "DisplaySetFilesTestSupport.h"
#include "app/ModelStep.h"
#include "app/SelectStep.h"
#include "displaysets/ZtOdPdsDstImportPlugin.h"
#include "ztplugin/ZtOpState.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace {

const std::string kPlant = ZT_SOURCE_DIR "/examples/plant/";

TEST(SampleReview, DisplaySetsSelectTheirPartsOfThePlant) {
    ZtOpState state;
    for (const char* model : {"pipes.dgn", "equipment.dgn", "steel.dgn"}) {
        std::string error;
        ASSERT_EQ(RunModelStep(state, ZtTestWide(kPlant + model), &error), 0) << error;
    }
    ZtOdPdsDstImportPlugin plugin;
    const ZtUWideString file(ZtTestWide(kPlant + "plant.dst").c_str());
    ASSERT_EQ(plugin.IExport(0, &state, nullptr, &file), 0);

    // Per set: how many elements of each model it selects.
    std::map<std::string, std::map<std::string, int>> counts;
    std::vector<std::string> names;
    for (const SelectionResult& result : ComputeSelections(state)) {
        names.push_back(ZtUSysString::WideToUtf8(result.name));
        for (const SelectedElement& element : result.elements)
            ++counts[names.back()][ZtUSysString::WideToUtf8(element.model)];
    }
    EXPECT_EQ(names, (std::vector<std::string>{"Process piping", "Utilities", "Pumps and nozzles",
                                               "Steel without bracing", "Piping and steel"}));
    using Counts = std::map<std::string, int>;
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
