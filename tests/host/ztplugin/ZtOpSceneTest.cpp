#include "ztplugin/ZtOpScene.h"
#include "ztlinear/ZtLFrustum3f.h"
#include "ztnav/ZtNvViewPoint.h"
#include "ztobject/ZtOaPartition.h"
#include "ztobject/ZtOaShape.h"
#include "ztplugin/ZtOpSceneSet.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

// True if the whole box lies inside the camera's view volume.
bool SeesWholeBox(const ZtNvCamera& camera, const ZtLBox3f& box) {
    ZtLFrustum3f frustum;
    if (!camera.Frustum(&frustum, 0.0))
        return false;
    const ZtLMatrix4f m = frustum.GetMatrix();
    for (int corner = 0; corner < 8; ++corner) {
        const ZtLPos3f p((corner & 1 ? box.GetMax() : box.GetMin()).x,
                         (corner & 2 ? box.GetMax() : box.GetMin()).y,
                         (corner & 4 ? box.GetMax() : box.GetMin()).z);
        const ZtLPos3f f = p * m;
        if (!(std::abs(f.x) <= 1 && std::abs(f.y) <= 1 && std::abs(f.z) <= 1))
            return false;
    }
    return true;
}

ZtOaPartition* Scene(std::initializer_list<ZtLBox3f> boxes) {
    auto* scene = new ZtOaPartition(L"scene");
    auto* model = new ZtOaPartition(L"model.dgn");
    for (const ZtLBox3f& box : boxes)
        model->AddChild(new ZtOaShape(box));
    scene->AddChild(model);
    return scene;
}

TEST(ZtOpScene, DefaultViewPointSeesTheWholeSceneFromAboveAndAside) {
    const ZtLBox3f boxes[] = {
        {{0, 0, 0}, {10, 20, 4}},
        {{-1000, -1000, -5}, {-990, -995, 5}},
        {{1e6, 1e6, 0}, {1e6 + 1, 1e6 + 1, 1}},
    };
    for (const ZtLBox3f& box : boxes) {
        std::unique_ptr<ZtOaPartition> scene(Scene({box}));
        ZtNvViewPoint viewPoint;
        ZtOpScene::DefaultInitializeViewPoint(&viewPoint, scene.get());
        const ZtNvCamera& camera = viewPoint.GetCamera();
        EXPECT_TRUE(SeesWholeBox(camera, box));
        // Towards the centre, downwards, with up towards +Z.
        const ZtLVec3f toCentre = (box.GetCenter() - camera.GetPosition()).Normalized();
        EXPECT_NEAR(toCentre.Dot(camera.ViewDir()), 1, 1e-9);
        EXPECT_LT(camera.ViewDir().z, 0);
        EXPECT_GT(camera.GetUp().z, 0);
        EXPECT_NEAR(camera.GetUp().Dot(camera.ViewDir()), 0, 1e-12);
    }
}

TEST(ZtOpScene, TheBoxSpansEveryModelOfTheScene) {
    std::unique_ptr<ZtOaPartition> scene(Scene({{{0, 0, 0}, {1, 1, 1}}}));
    auto* second = new ZtOaPartition(L"second.dgn");
    second->AddChild(new ZtOaShape(ZtLBox3f({50, 50, 50}, {60, 60, 60})));
    scene->AddChild(second);
    ZtNvViewPoint viewPoint;
    ZtOpScene::DefaultInitializeViewPoint(&viewPoint, scene.get());
    EXPECT_TRUE(SeesWholeBox(viewPoint.GetCamera(), ZtLBox3f({0, 0, 0}, {60, 60, 60})));
}

TEST(ZtOpScene, AnEmptySceneIsSeenAsABoxAboutTheOrigin) {
    for (ZtOaPartition* scene : {static_cast<ZtOaPartition*>(nullptr), Scene({})}) {
        ZtNvViewPoint viewPoint;
        ZtOpScene::DefaultInitializeViewPoint(&viewPoint, scene);
        EXPECT_TRUE(SeesWholeBox(viewPoint.GetCamera(), ZtLBox3f({-1, -1, -1}, {1, 1, 1})));
        delete scene;
    }
    // A scene of one point is framed as a sphere of radius 1 about it.
    std::unique_ptr<ZtOaPartition> point(Scene({{{5, 5, 5}, {5, 5, 5}}}));
    ZtNvViewPoint viewPoint;
    ZtOpScene::DefaultInitializeViewPoint(&viewPoint, point.get());
    EXPECT_TRUE(SeesWholeBox(viewPoint.GetCamera(), ZtLBox3f({4.5, 4.5, 4.5}, {5.5, 5.5, 5.5})));
    ZtOpScene::DefaultInitializeViewPoint(nullptr, point.get());
}

TEST(ZtOpScene, UpFollowsTheViewPointsWorldUp) {
    std::unique_ptr<ZtOaPartition> scene(Scene({{{0, 0, 0}, {4, 4, 4}}}));
    ZtNvViewPoint viewPoint;
    viewPoint.SetWorldUp(ZtLVec3f(0, 3, 0));
    ZtOpScene::DefaultInitializeViewPoint(&viewPoint, scene.get());
    const ZtNvCamera& camera = viewPoint.GetCamera();
    EXPECT_LT(camera.ViewDir().y, 0);
    EXPECT_GT(camera.GetUp().y, 0);
    EXPECT_TRUE(SeesWholeBox(camera, ZtLBox3f({0, 0, 0}, {4, 4, 4})));
}

TEST(ZtOpScene, AnUnusableHeightFieldIsReplaced) {
    std::unique_ptr<ZtOaPartition> scene(Scene({{{0, 0, 0}, {4, 4, 4}}}));
    for (double field : {0.0, -1.0, std::numbers::pi, std::nan("")}) {
        ZtNvViewPoint viewPoint;
        viewPoint.EditCamera().SetHeightField(field);
        ZtOpScene::DefaultInitializeViewPoint(&viewPoint, scene.get());
        EXPECT_EQ(viewPoint.GetCamera().GetHeightField(), std::numbers::pi / 4) << field;
        EXPECT_TRUE(SeesWholeBox(viewPoint.GetCamera(), ZtLBox3f({0, 0, 0}, {4, 4, 4})));
    }
    // A usable one is kept.
    ZtNvViewPoint narrow;
    narrow.EditCamera().SetHeightField(0.1);
    ZtOpScene::DefaultInitializeViewPoint(&narrow, scene.get());
    EXPECT_EQ(narrow.GetCamera().GetHeightField(), 0.1);
    EXPECT_TRUE(SeesWholeBox(narrow.GetCamera(), ZtLBox3f({0, 0, 0}, {4, 4, 4})));
}

TEST(ZtOpSceneSet, OwnsItsReferences) {
    ZtOpSceneSet set;
    EXPECT_EQ(set.GetLinearUnits(), ZtOaUnit::kMetres);
    auto* ref = new ZtOpSceneRef;
    EXPECT_EQ(ref->GetTransform(), ZtLAffine3f());
    EXPECT_EQ(ref->GetLinearUnits(), ZtOaUnit::kMetres);
    EXPECT_EQ(ref->GetLoadKind(), 0);
    EXPECT_TRUE(ref->GetLoadFile().IsEmpty());
    ref->SetSourceName(L"a.dgn");
    set.EditSceneRefs().PushBack(ref);
    set.SetLinearUnits(ZtOaUnit::kFeet);
    EXPECT_EQ(set.GetSceneRefs()[0]->GetSourceName(), L"a.dgn");
    EXPECT_EQ(set.GetLinearUnits(), ZtOaUnit::kFeet);
}

} // namespace
