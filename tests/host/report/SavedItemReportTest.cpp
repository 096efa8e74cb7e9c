#include "report/SavedItemReport.h"
#include "report/JsonWriter.h"
#include "report/ReportStream.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpSelectionSet.h"
#include "ztplugin/ZtOpState.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// A document with a selection set of two alternatives, one of them negated, and a folder.
TEST(SelectionSetsReport, JsonAndSummary) {
    ZtOpState state;
    ZtUNameDict* names = state.EditNameDict();
    const ZtUName* level = ZtUName::StandardName(17, names);
    const ZtUName* pds = names->Find(L"PDS", "ZtDgnPDSAttributes");
    const ZtUName* lineId = names->Find(L"line_id", "ZtDgnPDSAttribute");
    ZtOpFindSpec spec;
    auto add = [&](const ZtUName* category, const ZtUName* property, unsigned flags, int op,
                   const ZtUData& value) {
        spec.AddCondition(ZtOpFindCondition(category, property,
                                            static_cast<ZtOpFindConditionFlags::Enum>(flags),
                                            static_cast<ZtOpFindConditionOp::Enum>(op), value));
    };
    ZtUData value;
    value.SetWideString(L"Level 3");
    add(nullptr, level, 5, 6, value);
    value.SetWideString(L"L\"1*");
    add(pds, lineId, 105, 13, value);
    value.SetInt32(-4);
    add(pds, lineId, 41, 3, value);
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

    std::string out;
    JsonWriter json(out);
    WriteSavedItemsJson(json, state, SavedItemTree::kSelectionSets);
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

    out.clear();
    ReportStream stream(out);
    AppendSavedItemsSummary(stream, state, SavedItemTree::kSelectionSets);
    EXPECT_EQ(out, "Selection sets: 2\n"
                   "  selectionSet \"Pipes\"\n"
                   "    comment: North\n"
                   "             South\n"
                   "    rule: Level = \"Level 3\"\n"
                   "      or: not PDS.line_id matches \"L\"1*\" and PDS.line_id exists\n"
                   "  folder \"Empty\", 0 items\n");
    // A new document has none.
    const ZtOpState bare;
    std::string empty;
    JsonWriter emptyJson(empty);
    WriteSavedItemsJson(emptyJson, bare, SavedItemTree::kSelectionSets);
    EXPECT_EQ(empty, "[]\n");
    empty.clear();
    ReportStream emptyStream(empty);
    AppendSavedItemsSummary(emptyStream, bare, SavedItemTree::kSelectionSets);
    EXPECT_EQ(empty, "Selection sets: 0\n");
}

} // namespace
