#include "review/DisplaySetBudget.h"
#include "tools/ZtTestFiles.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpSelectionSet.h"
#include "ztplugin/ZtOpState.h"

#include <gtest/gtest.h>

namespace {

// Imports a selection set with `conditions` conditions into the document.
void Import(ZtOpState& state, std::uint64_t conditions) {
    ZtOpFindSpec spec;
    for (std::uint64_t i = 0; i < conditions; ++i)
        spec.AddCondition(ZtOpFindCondition());
    auto* set = new ZtOpSelectionSet;
    set->EditImplicitSelection().SetImplicitFindSpec(spec);
    ZtOpFolderItem imported;
    imported.AddChild(set);
    ZtOpSelectionSetsElement::Require(state.EditElementList())
        ->AppendCreateGuidIfDuplicate(&imported);
}

// Sets missing from an import are put down to the budget only when what came in leaves
// no room for one more set; the sets already in the document do not count.
TEST(DisplaySetBudget, CountsMissingSetsOnlyWhenTheBudgetCanHaveRunOut) {
    ZtTestTempDir dir;
    const std::string file = dir.File("sets.dst");
    ASSERT_TRUE(ZtTestWriteBytes(file, "[DEFINITION SECTION]\n<Display Set>\n1 a\n"
                                       "<Display Set>\r\n2 b\n <Display Set>\n<Display Set>"));
    const std::wstring path = dir.WideFile("sets.dst");
    ZtOpState state;
    Import(state, 5);
    const DisplaySetBudget below(state, 40, 10);
    Import(state, 30);
    EXPECT_EQ(below.CountAbandoned(state, path.c_str()), 0u);

    const DisplaySetBudget above(state, 40, 10);
    Import(state, 31);
    // Three set lines (one is indented, so no set line), one set made.
    EXPECT_EQ(above.CountAbandoned(state, path.c_str()), 2u);
    EXPECT_EQ(above.CountAbandoned(state, L"/nonexistent.dst"), 0u);
}

} // namespace
