#include "app/JsonWriter.h"
#include "app/SavedItemReport.h"
#include "support/ZtTestJson.h"
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
class SavedViewsReport : public ::testing::Test {
protected:
    SavedViewsReport() {
        auto* view = new ZtOpView;
        view->SetName(L"Tag View 7");
        view->SetGuid(ZtOpGuid(5, 6));
        ZtNvCamera camera;
        camera.SetPosition({50, 20, 30});
        camera.PointAt({0, 20, 30});
        view->AnonView().EditViewPoint()->SetCamera(camera);
        ZtOaClipPlane* plane = view->AnonView().EditClipPlaneSet()->Edit(2);
        plane->AlignToPick(ZtOaClipPlane::kAlignToNormal, {49, 0, 0}, ZtLUnitVec3f(-1, 0, 0),
                           nullptr);
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
    }

    ZtOpState state;
};

TEST_F(SavedViewsReport, ViewItemsInTheJson) {
    std::string out;
    JsonWriter writer(out);
    WriteSavedViewsJson(writer, state);
    ZtTestJson json;
    std::string error;
    ASSERT_TRUE(ZtTestParseJson(out, &json, &error)) << error << out;
    ASSERT_EQ(json.items.size(), 1u);
    const ZtTestJson& view = json[0];
    EXPECT_EQ(view["kind"].text, "view");
    EXPECT_EQ(view["name"].text, "Tag View 7");
    EXPECT_EQ(view["viewpoint"]["position"][0].number, 50);
    EXPECT_EQ(view["viewpoint"]["viewDir"][0].number, -1);
    EXPECT_TRUE(view["viewpoint"]["focalDistance"].IsNull());
    ASSERT_EQ(view["clipPlanes"].items.size(), 1u);
    EXPECT_EQ(view["clipPlanes"][0]["index"].number, 2);
    EXPECT_EQ(view["clipPlanes"][0]["normal"][0].number, -1);
    EXPECT_EQ(view["clipPlanes"][0]["distance"].number, -49);
    ASSERT_EQ(view["comments"].items.size(), 2u);
    EXPECT_EQ(view["comments"][0]["body"].text, "Check\r\nthis valve");
    ASSERT_EQ(view["redlines"].items.size(), 3u);
    const ZtTestJson& tag = view["redlines"][1];
    EXPECT_EQ(tag["type"].text, "tag");
    EXPECT_EQ(tag["tagId"].number, 8);
    EXPECT_EQ(tag["commentId"].number, 8);
    EXPECT_EQ(tag["pos2dA"][1].number, -0.5);
    EXPECT_EQ(tag["pos2dB"][0].number, 1);
    EXPECT_TRUE(tag["pos3dValid"].boolean);
    EXPECT_EQ(tag["pos3d"][2].number, 30.5);
    EXPECT_EQ(tag["lineColor"][0].number, 1);
    EXPECT_EQ(tag["lineThickness"].number, 3);
    EXPECT_EQ(view["redlines"][2]["type"].text, "1");
    EXPECT_FALSE(view["redlines"][2].Has("tagId"));
}

TEST_F(SavedViewsReport, SummaryListsEachTagWithItsText) {
    std::string out;
    AppendSavedViewsSummary(out, state);
    EXPECT_EQ(out, "Saved views: 1\n"
                   "  view \"Tag View 7\"\n"
                   "    eye (50, 20, 30), looking along (-1, 0, 0), 1 clip planes\n"
                   "    tag 7 at (12, 21, 30.5): Check\n"
                   "                             this valve\n"
                   "    tag 8 at (12, 21, 30.5): Done\n");
    std::string empty;
    ZtOpState bare;
    AppendSavedViewsSummary(empty, bare);
    EXPECT_EQ(empty, "Saved views: 0\n");
}

} // namespace
