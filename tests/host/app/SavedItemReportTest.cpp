#include "app/SavedItemReport.h"
#include "app/JsonWriter.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpSelectionSet.h"
#include "ztplugin/ZtOpState.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// A document with a selection set of two alternatives, one of them negated, and a folder.
class SelectionSetsReport : public ::testing::Test {
protected:
    SelectionSetsReport() {
        ZtUNameDict* names = state.EditNameDict();
        const ZtUName* level = ZtUName::StandardName(17, names);
        const ZtUName* pds = names->Find(L"PDS", "ZtDgnPDSAttributes");
        const ZtUName* lineId = names->Find(L"line_id", "ZtDgnPDSAttribute");
        ZtOpFindSpec spec;
        ZtUData value;
        value.SetWideString(L"Level 3");
        spec.AddCondition(ZtOpFindCondition(nullptr, level, Flags(5), Op(6), value));
        value.SetWideString(L"L\"1*");
        spec.AddCondition(ZtOpFindCondition(pds, lineId, Flags(105), Op(13), value));
        value.SetInt32(-4);
        spec.AddCondition(ZtOpFindCondition(pds, lineId, Flags(41), Op(3), value));
        spec.SelectAll();
        auto* set = new ZtOpSelectionSet;
        set->SetName(L"Pipes");
        set->SetGuid(ZtOpGuid(1, 2));
        set->EditImplicitSelection().SetImplicitFindSpec(spec);
        auto* comment = new ZtOpComment(0);
        comment->SetBody(L"North\n\rSouth");
        set->EditComments().PushBack(comment);
        auto* folder = new ZtOpFolderItem;
        folder->SetName(L"Empty");
        folder->SetGuid(ZtOpGuid(3, 4));
        ZtOpFolderItem imported;
        imported.AddChild(set);
        imported.AddChild(folder);
        ZtOpSelectionSetsElement::Require(state.EditElementList())
            ->AppendCreateGuidIfDuplicate(&imported);
    }
    static ZtOpFindConditionFlags::Enum Flags(unsigned f) {
        return static_cast<ZtOpFindConditionFlags::Enum>(f);
    }
    static ZtOpFindConditionOp::Enum Op(int op) {
        return static_cast<ZtOpFindConditionOp::Enum>(op);
    }

    ZtOpState state;
};

TEST_F(SelectionSetsReport, Json) {
    std::string out;
    JsonWriter json(out);
    WriteSelectionSetsJson(json, state);
    EXPECT_EQ(out, R"([
  {
    "kind": "selectionSet",
    "name": "Pipes",
    "guid": "00000000-0000-0001-0000-000000000002",
    "comments": [
      {"id": 0, "body": "North\n\rSouth"}
    ],
    "findSpec": {
      "selectAll": true,
      "conditions": [
        {"category": null, "property": {"internal": "ZtStdLevel", "display": "Level"}, "flags": 5, "op": 6, "value": "Level 3"},
        {"category": {"internal": "ZtDgnPDSAttributes", "display": "PDS"}, "property": {"internal": "ZtDgnPDSAttribute", "display": "line_id"}, "flags": 105, "op": 13, "value": "L\"1*"},
        {"category": {"internal": "ZtDgnPDSAttributes", "display": "PDS"}, "property": {"internal": "ZtDgnPDSAttribute", "display": "line_id"}, "flags": 41, "op": 3, "value": -4}
      ]
    }
  },
  {
    "kind": "folder",
    "name": "Empty",
    "guid": "00000000-0000-0003-0000-000000000004",
    "children": []
  }
]
)");
}

TEST_F(SelectionSetsReport, Summary) {
    std::string out;
    AppendSelectionSetsSummary(out, state);
    EXPECT_EQ(out, "Selection sets: 2\n"
                   "  selectionSet \"Pipes\"\n"
                   "    comment: North\n"
                   "             South\n"
                   "    rule: Level = \"Level 3\"\n"
                   "      or: not PDS.line_id matches \"L\"1*\" and PDS.line_id exists\n"
                   "  folder \"Empty\", 0 items\n");
}

TEST(SelectionSetsReportEmpty, NewDocumentHasNone) {
    ZtOpState state;
    std::string out;
    JsonWriter json(out);
    WriteSelectionSetsJson(json, state);
    EXPECT_EQ(out, "[]\n");
    std::string summary;
    AppendSelectionSetsSummary(summary, state);
    EXPECT_EQ(summary, "Selection sets: 0\n");
}

} // namespace
