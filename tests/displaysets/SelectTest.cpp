// Display sets compiled from their rules and evaluated over a generated model, as the
// `select` step does it.
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

    ZtOpState state;
    std::string error;
    ASSERT_EQ(RunModelStep(state, dir.WideFile("unit.dgn"), &error), 0) << error;
    ZtOdPdsDstImportPlugin plugin;
    const ZtUWideString rules(dir.WideFile("rules.dst").c_str());
    ASSERT_EQ(plugin.IExport(0, &state, nullptr, &rules), 0);

    std::map<std::string, std::vector<std::int64_t>> selected;
    for (const SelectionResult& result : ComputeSelections(state))
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
    EXPECT_EQ(ComputeSelections(state).size(), 7u);
}

} // namespace
