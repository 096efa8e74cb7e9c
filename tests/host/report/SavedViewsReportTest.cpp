#include "report/JsonWriter.h"
#include "report/ReportStream.h"
#include "report/SavedItemReport.h"
#include "ztplugin/ZtOpRedlineTag.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpState.h"
#include "ztplugin/ZtOpView.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// A redline of a kind that is no tag.
class Sketch : public ZtOpRedline {
public:
    int GetRedlineType() const override { return 1; }
};

// A document with one view of two tags, one comment of two lines, and a sketch.
TEST(SavedViewsReport, JsonAndSummary) {
    ZtOpState state;
    auto* view = new ZtOpView;
    view->SetName(L"Tag View 7");
    view->SetGuid(ZtOpGuid(5, 6));
    ZtNvCamera camera;
    camera.SetPosition({50, 20, 30});
    camera.PointAt({0, 20, 30});
    view->AnonView().EditViewPoint()->SetCamera(camera);
    ZtOaClipPlane* plane = view->AnonView().EditClipPlaneSet()->Edit(2);
    plane->AlignToPick(ZtOaClipPlane::kAlignToNormal, {49, 0, 0}, ZtLUnitVec3f(-1, 0, 0), nullptr);
    plane->SetEnabled(true);
    for (unsigned id : {7u, 8u}) {
        auto* comment = new ZtOpComment(id);
        comment->SetBody(id == 7 ? L"Check\r\nthis valve" : L"Done");
        view->EditComments().PushBack(comment);
        auto* tag =
            new ZtOpRedlineTag(id, id, {0.25, -0.5}, {1, 2}, 1, {12, 21, 30.5}, 0, ZtLBox3f());
        tag->SetLineThickness(3);
        view->EditRedlines().PushBack(tag);
    }
    view->EditRedlines().PushBack(new Sketch);
    ZtOpSavedViewsElement::Require(state.EditElementList())->Edit()->AddChild(view);

    std::string out;
    JsonWriter json(out);
    WriteSavedItemsJson(json, state, SavedItemTree::kSavedViews);
    EXPECT_EQ(out, R"([
  {
    "kind": "view",
    "name": "Tag View 7",
    "guid": "00000000-0000-0005-0000-000000000006",
    "comments": [
      {"id": 7, "body": "Check\r\nthis valve"},
      {"id": 8, "body": "Done"}
    ],
    "viewpoint": {
      "position": [50, 20, 30],
      "viewDir": [-1, 0, 0],
      "up": [0, 1, 0],
      "heightField": 0.7853981633974483,
      "focalDistance": null,
      "worldUp": null,
      "parts": 0
    },
    "clipPlanes": [
      {"index": 2, "normal": [-1, 0, 0], "distance": -49}
    ],
    "redlines": [
      {"type": "tag", "tagId": 7, "commentId": 7, "pos2dA": [0.25, -0.5], "pos2dB": [1, 2], "pos3dValid": true, "pos3d": [12, 21, 30.5], "lineColor": [1, 0, 0], "lineThickness": 3},
      {"type": "tag", "tagId": 8, "commentId": 8, "pos2dA": [0.25, -0.5], "pos2dB": [1, 2], "pos3dValid": true, "pos3d": [12, 21, 30.5], "lineColor": [1, 0, 0], "lineThickness": 3},
      {"type": "1"}
    ]
  }
]
)");

    out.clear();
    ReportStream stream(out);
    AppendSavedItemsSummary(stream, state, SavedItemTree::kSavedViews);
    EXPECT_EQ(out, "Saved views: 1\n"
                   "  view \"Tag View 7\"\n"
                   "    eye (50, 20, 30), looking along (-1, 0, 0), 1 clip planes\n"
                   "    tag 7 at (12, 21, 30.5): Check\n"
                   "                             this valve\n"
                   "    tag 8 at (12, 21, 30.5): Done\n");
    std::string empty;
    ReportStream emptyStream(empty);
    AppendSavedItemsSummary(emptyStream, ZtOpState(), SavedItemTree::kSavedViews);
    EXPECT_EQ(empty, "Saved views: 0\n");
}

// A tag shows the first comment of its view with its identifier; a text of the files
// reaches a terminal with its control and reordering characters escaped, a name on one
// line.
TEST(SavedViewsReport, SummaryShowsEachTagsFirstCommentReadably) {
    ZtOpState state;
    auto* view = new ZtOpView;
    view->SetName(L"View\x1b]0;title\a\nnext");
    for (const wchar_t* body : {L"first \x1b[2J\r\nline \x202e", L"later"}) {
        auto* comment = new ZtOpComment(7);
        comment->SetBody(body);
        view->EditComments().PushBack(comment);
    }
    view->EditRedlines().PushBack(
        new ZtOpRedlineTag(7, 7, {0, 0}, {0, 0}, 0, {0, 0, 0}, 0, ZtLBox3f()));
    ZtOpSavedViewsElement::Require(state.EditElementList())->Edit()->AddChild(view);
    std::string out;
    ReportStream stream(out, ReportStream::Text::kReadable);
    AppendSavedItemsSummary(stream, state, SavedItemTree::kSavedViews);
    EXPECT_EQ(out.substr(out.find("  view")), "  view \"View\\x1b]0;title\\x07\\x0anext\"\n"
                                              "    eye (0, 0, 0), looking along (0, 0, -1), 0 "
                                              "clip planes\n"
                                              "    tag 7: first \\x1b[2J\n"
                                              "           line \\u202e\n");
}

} // namespace
