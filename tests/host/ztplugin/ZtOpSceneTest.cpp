#include "ztplugin/ZtOpScene.h"
#include "ztlinear/ZtLFrustum3f.h"
#include "ztnav/ZtNvViewPoint.h"
#include "ztobject/ZtOaPartition.h"
#include "ztobject/ZtOaShape.h"
#include "ztplugin/ZtOpSceneRef.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <optional>
#include <vector>

namespace {

// True if the whole box lies inside the camera's view volume.
bool SeesWholeBox(const ZtNvCamera& camera, const ZtLBox3f& box) {
    ZtLFrustum3f frustum;
    if (!camera.Frustum(&frustum, 0.0))
        return false;
    for (int corner = 0; corner < 8; ++corner) {
        const ZtLPos3f f = ZtLPos3f((corner & 1 ? box.GetMax() : box.GetMin()).x,
                                    (corner & 2 ? box.GetMax() : box.GetMin()).y,
                                    (corner & 4 ? box.GetMax() : box.GetMin()).z) *
                           frustum.GetMatrix();
        if (!(std::abs(f.x) <= 1 && std::abs(f.y) <= 1 && std::abs(f.z) <= 1))
            return false;
    }
    return true;
}

constexpr double kQuarter = std::numbers::pi / 4;

// A scene of one model for each box, each placed by `placement`.
std::unique_ptr<ZtOaPartition> Scene(const std::vector<ZtLBox3f>& boxes,
                                     const ZtLAffine3f& placement = {}) {
    auto scene = std::make_unique<ZtOaPartition>(L"scene");
    for (const ZtLBox3f& box : boxes) {
        auto* model = new ZtOaPartition(L"model.dgn");
        model->SetTransform(placement);
        model->AddChild(new ZtOaShape(box));
        scene->AddChild(model);
    }
    return scene;
}

TEST(ZtOpScene, DefaultViewPointSeesTheWholeSceneFromAboveAndAside) {
    const ZtLBox3f four({0, 0, 0}, {4, 4, 4});
    struct Case {
        const char* name;
        std::vector<ZtLBox3f> models;
        ZtLBox3f seen; // lies wholly in view, and its centre straight ahead
        std::optional<ZtLVec3f> worldUp = std::nullopt;
        double field = kQuarter; // the camera's before, and after
        double keptField = kQuarter;
        ZtLAffine3f placement = {};
    };
    ZtLMatrix3f halfTurn;
    halfTurn.SetValue(-1, 0, 0, 0, -1, 0, 0, 0, 2);
    const Case cases[] = {
        {"box", {{{0, 0, 0}, {10, 20, 4}}}, {{0, 0, 0}, {10, 20, 4}}},
        {"box off the origin",
         {{{-1000, -1000, -5}, {-990, -995, 5}}},
         {{-1000, -1000, -5}, {-990, -995, 5}}},
        {"far box",
         {{{1e6, 1e6, 0}, {1e6 + 1, 1e6 + 1, 1}}},
         {{1e6, 1e6, 0}, {1e6 + 1, 1e6 + 1, 1}}},
        {"every model",
         {{{0, 0, 0}, {1, 1, 1}}, {{50, 50, 50}, {60, 60, 60}}},
         {{0, 0, 0}, {60, 60, 60}}},
        {"empty scene: a box about the origin", {}, {{-1, -1, -1}, {1, 1, 1}}},
        {"one point: a sphere of radius 1 about it",
         {{{5, 5, 5}, {5, 5, 5}}},
         {{4.5, 4.5, 4.5}, {5.5, 5.5, 5.5}}},
        {"world up", {four}, four, ZtLVec3f(0, 3, 0)},
        {"no field", {four}, four, {}, 0.0},
        {"negative field", {four}, four, {}, -1.0},
        {"field of 180 degrees", {four}, four, {}, std::numbers::pi},
        {"field not a number", {four}, four, {}, std::nan("")},
        {"usable field", {four}, four, {}, 0.1, 0.1},
        {"placed model: turned, stretched up and moved",
         {four},
         {{96, -4, 10}, {100, 0, 18}},
         {},
         kQuarter,
         kQuarter,
         ZtLAffine3f(halfTurn, ZtLVec3f(100, 0, 10))},
    };
    for (const Case& c : cases) {
        const auto scene = Scene(c.models, c.placement);
        ZtNvViewPoint viewPoint;
        viewPoint.SetWorldUp(c.worldUp);
        viewPoint.EditCamera().SetHeightField(c.field);
        ZtOpScene::DefaultInitializeViewPoint(&viewPoint, scene.get());
        const ZtNvCamera& camera = viewPoint.GetCamera();
        EXPECT_TRUE(SeesWholeBox(camera, c.seen)) << c.name;
        EXPECT_EQ(camera.GetHeightField(), c.keptField) << c.name;
        // Towards the centre, downwards, with up along the world's up.
        const ZtLVec3f up = c.worldUp.value_or(ZtLVec3f(0, 0, 1)).Normalized();
        const ZtLVec3f toCentre = (c.seen.GetCenter() - camera.GetPosition()).Normalized();
        EXPECT_NEAR(toCentre.Dot(camera.ViewDir()), 1, 1e-9) << c.name;
        EXPECT_LT(camera.ViewDir().Dot(up), 0) << c.name;
        EXPECT_GT(camera.GetUp().Dot(up), 0) << c.name;
        EXPECT_NEAR(camera.GetUp().Dot(camera.ViewDir()), 0, 1e-12) << c.name;
    }
    // No scene, and a scene of an empty model, are seen as the empty scene.
    const auto emptyModel = Scene({});
    emptyModel->AddChild(new ZtOaPartition(L"empty.dgn"));
    ZtNvViewPoint none, noModel, empty;
    ZtOpScene::DefaultInitializeViewPoint(&none, nullptr);
    ZtOpScene::DefaultInitializeViewPoint(&noModel, Scene({}).get());
    ZtOpScene::DefaultInitializeViewPoint(&empty, emptyModel.get());
    EXPECT_EQ(none.GetCamera().GetPosition(), noModel.GetCamera().GetPosition());
    EXPECT_EQ(empty.GetCamera().GetPosition(), noModel.GetCamera().GetPosition());
    ZtOpScene::DefaultInitializeViewPoint(nullptr, emptyModel.get());
}

// A reference's placement scales the model from the reference's units to the scene's
// before its transform turns and moves it; equal units scale nothing.
TEST(ZtOpSceneRef, PlacementScalesToTheSceneUnitsThenTransforms) {
    ZtLMatrix3f quarterTurn;
    quarterTurn.SetValue(0, -1, 0, 1, 0, 0, 0, 0, 1);
    ZtOpSceneRef ref;
    ref.EditTransform() = ZtLAffine3f(quarterTurn, ZtLVec3f(2.54, 1.27, 0));
    ref.SetLinearUnits(ZtOaUnit::kFeet);
    const ZtLAffine3f inMetres = ref.GetPlacement(ZtOaUnit::kMetres);
    const ZtLPos3f p = inMetres.Transform(ZtLPos3f(10, 0, 1));
    EXPECT_NEAR((p - ZtLPos3f(2.54, 1.27 + 3.048, 0.3048)).Length(), 0, 1e-12);
    EXPECT_EQ(ref.GetPlacement(ZtOaUnit::kFeet), ref.GetTransform());
    ref.SetLinearUnits(ZtOaUnit::kMillimetres);
    EXPECT_EQ(ref.GetPlacement(ZtOaUnit::kMetres).Transform(ZtLPos3f(0, 1000, 0)),
              ZtLPos3f(1.54, 1.27, 0));
}

} // namespace

// A source name held as the load file's text stays what it was set to when the load file
// changes after it.
TEST(ZtOpSceneRef, SourceNameOutlivesAChangeOfLoadFile) {
    ZtOpSceneRef ref;
    ref.SetLoadFile(L"a.dgn");
    ref.SetSourceName(L"a.dgn");
    ref.SetLoadFile(L"a.kvc");
    EXPECT_TRUE(ref.GetSourceName() == L"a.dgn");
    EXPECT_TRUE(ref.GetLoadFile() == L"a.kvc");
    ref.SetSourceName(L"a.kvc");
    ref.SetLoadFile(L"");
    EXPECT_TRUE(ref.GetSourceName() == L"a.kvc");
    ref.SetSourceName(L"b.dgn");
    EXPECT_TRUE(ref.GetSourceName() == L"b.dgn");
}
