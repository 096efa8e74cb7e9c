#include "ztcore/ZtOcPickFrustumTraversal.h"
#include "ztcore/ZtOcContext.h"
#include "ztcore/ZtOcGeometryIndex.h"
#include "ztlinear/ZtLFrustum3f.h"
#include "ztlinear/ZtLPickFrustum3f.h"
#include "ztobject/ZtOaPartition.h"
#include "ztobject/ZtOaShape.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

ZtOaShape* Box(double x0, double y0, double z0, double x1, double y1, double z1) {
    return new ZtOaShape(ZtLBox3f({x0, y0, z0}, {x1, y1, z1}));
}

// A cube of side 2 s centred on (x, y, z).
ZtOaShape* Cube(double x, double y, double z, double s = 0.5) {
    return Box(x - s, y - s, z - s, x + s, y + s, z + s);
}

// Looking down -Z from (0, 0, 100) onto the window-space point (wx, wy), narrowed to a
// square of `half` about it, seeing from depth `nearDepth` to `farDepth`.
ZtLPickFrustum3f LookDown(double wx = 0.5, double wy = 0.5, double half = 0.0001,
                          double nearDepth = 1.0, double farDepth = 1000.0) {
    ZtLFrustum3f frustum;
    frustum.SetPerspective({0, 0, 100}, {0, 0, -1}, {0, 1, 0}, 1.0, 1.0, nearDepth, farDepth);
    frustum.Narrow(wx - half, wx + half, wy - half, wy + half);
    return ZtLPickFrustum3f(frustum);
}

// The nodes of the picked path, from the shape up.
std::vector<const ZtOaNode*> Pick(const ZtOaNode& root, const ZtLPickFrustum3f& frustum,
                                  bool useIndex, ZtOcContext* context = nullptr,
                                  std::uint32_t required = 16, int containedOnly = 0,
                                  std::uint32_t pickBits = 0) {
    ZtOcContext own;
    if (!context)
        context = &own;
    context->SetUseIndex(useIndex);
    ZtOcPickFrustumTraversal pick(context);
    pick.SetFrustum(frustum);
    pick.SetRequiredPropertyBits(required);
    pick.SetContainedOnly(containedOnly);
    pick.SetPickBits(pickBits);
    root.ApplyTraversal(&pick);
    std::vector<const ZtOaNode*> path;
    if (const ZtOaFragment* shape = pick.GetPickedShape())
        for (const ZtOaPathLink* link = shape->GetFragPath(); link; link = link->GetParent())
            path.push_back(link->GetNode());
    return path;
}

// Both ways of picking, which must agree; the index's answer.
std::vector<const ZtOaNode*> PickBoth(const ZtOaNode& root, const ZtLPickFrustum3f& frustum) {
    const auto walked = Pick(root, frustum, false);
    const auto indexed = Pick(root, frustum, true);
    EXPECT_EQ(walked, indexed);
    return indexed;
}

TEST(ZtOcPickFrustumTraversal, PicksTheBoxNearestTheEyeWithItsPath) {
    ZtOaPartition root(L"doc");
    auto* model = new ZtOaPartition(L"m", L"/models/m.dgn");
    root.AddChild(model);
    auto* cell = new ZtOaGroup;
    ZtOaShape* low = Cube(0, 0, 0);
    ZtOaShape* high = Cube(0, 0, 10);
    model->AddChild(low);
    cell->AddChild(high);
    model->AddChild(cell);
    model->AddChild(Cube(5, 5, 20)); // off the line of sight
    const auto path = PickBoth(root, LookDown());
    const std::vector<const ZtOaNode*> expected = {high, cell, model, &root};
    EXPECT_EQ(path, expected);
}

TEST(ZtOcPickFrustumTraversal, EquallyNearBoxesGoToTheFirstInWalkOrder) {
    for (bool firstInModel : {true, false}) {
        ZtOaPartition root(L"doc");
        auto* a = new ZtOaPartition(L"a");
        auto* b = new ZtOaPartition(L"b");
        ZtOaShape* inA = Box(-1, -1, 0, 1, 1, 5);
        ZtOaShape* inB = Box(-2, -2, -3, 2, 2, 5); // same top face, so the same depth
        a->AddChild(inA);
        b->AddChild(inB);
        root.AddChild(firstInModel ? a : b);
        root.AddChild(firstInModel ? b : a);
        const auto path = PickBoth(root, LookDown());
        ASSERT_FALSE(path.empty());
        EXPECT_EQ(path.front(), firstInModel ? inA : inB);
    }
}

TEST(ZtOcPickFrustumTraversal, NearAndFarPlanesBoundThePick) {
    ZtOaPartition root(L"doc");
    ZtOaShape* near = Cube(0, 0, 50); // depth 49.5 .. 50.5
    ZtOaShape* far = Cube(0, 0, -50); // depth 149.5 .. 150.5
    root.AddChild(near);
    root.AddChild(far);
    EXPECT_EQ(PickBoth(root, LookDown(0.5, 0.5, 0.0001, 60, 200)).front(), far);
    EXPECT_EQ(PickBoth(root, LookDown(0.5, 0.5, 0.0001, 1, 49.5)).front(), near);
    EXPECT_TRUE(PickBoth(root, LookDown(0.5, 0.5, 0.0001, 51, 149)).empty());
}

TEST(ZtOcPickFrustumTraversal, CandidatesByPropertyBitsAndContainment) {
    ZtOaPartition root(L"doc");
    ZtOaShape* big = Box(-50, -50, -10, 50, 50, 10);
    ZtOaShape* small = Cube(0, 0, -20, 0.00001);
    root.AddChild(big);
    root.AddChild(small);
    const ZtLPickFrustum3f frustum = LookDown();
    EXPECT_EQ(Pick(root, frustum, true).front(), big);
    // Only the small box lies wholly in the narrow frustum.
    EXPECT_EQ(Pick(root, frustum, true, nullptr, 16, 1).front(), small);
    EXPECT_EQ(Pick(root, frustum, false, nullptr, 16, 1).front(), small);
    // Nodes without the required bits, or with a pick bit, are passed over.
    EXPECT_TRUE(Pick(root, frustum, true, nullptr, 16 | 32).empty());
    EXPECT_TRUE(Pick(root, frustum, false, nullptr, 16, 0, 16).empty());
    EXPECT_TRUE(Pick(root, frustum, true, nullptr, 16, 0, 16).empty());
}

TEST(ZtOcPickFrustumTraversal, NothingWithoutAFrustumOrWithLastRenderedPicking) {
    ZtOaPartition root(L"doc");
    root.AddChild(Cube(0, 0, 0));
    ZtOcContext context;
    ZtOcPickFrustumTraversal noFrustum(&context);
    root.ApplyTraversal(&noFrustum);
    EXPECT_EQ(noFrustum.GetPickedShape(), nullptr);

    ZtOcPickFrustumTraversal pick(&context);
    pick.SetFrustum(LookDown());
    pick.SetRequiredPropertyBits(16);
    root.ApplyTraversal(&pick);
    ASSERT_NE(pick.GetPickedShape(), nullptr);
    // A new run forgets the last one's shape.
    pick.SetRenderTraversal(reinterpret_cast<ZtOcRenderTraversal*>(&context));
    pick.SetPickLastRendered(1);
    root.ApplyTraversal(&pick);
    EXPECT_EQ(pick.GetPickedShape(), nullptr);
}

TEST(ZtOcPickFrustumTraversal, IndexFollowsEditsOfTheTree) {
    ZtOaPartition root(L"doc");
    auto* model = new ZtOaPartition(L"m");
    auto* cell = new ZtOaGroup;
    model->AddChild(cell);
    cell->AddChild(Cube(0, 0, 0));
    root.AddChild(model);
    const ZtOcGeometryIndex* before = &ZtOcGeometryIndex::Of(*model);
    PickBoth(root, LookDown());
    EXPECT_EQ(&ZtOcGeometryIndex::Of(*model), before) << "an unedited tree keeps its index";
    ZtOaShape* nearer = Cube(0, 0, 10);
    cell->AddChild(nearer);
    EXPECT_EQ(PickBoth(root, LookDown()).front(), nearer);
    EXPECT_EQ(ZtOcGeometryIndex::Of(*model).GetNumItems(), 2u);
}

// Random trees of groups, nested partitions and boxes, many of them alike so that ties
// are common, picked through random frusta, narrow and wide: the index must give what
// the walk gives, path and all.
TEST(ZtOcPickFrustumTraversal, IndexAgreesWithTheWalkOnRandomModels) {
    std::mt19937 random(20240607);
    auto uniform = [&](double lo, double hi) {
        return std::uniform_real_distribution<double>(lo, hi)(random);
    };
    auto chance = [&](double p) { return std::bernoulli_distribution(p)(random); };
    int picked = 0;
    for (int model = 0; model < 30; ++model) {
        ZtOaPartition root(L"doc");
        std::vector<ZtOaGroup*> groups = {&root};
        const int shapes = 20 + model * 40;
        for (int i = 0; i < shapes; ++i) {
            ZtOaGroup* parent = groups[random() % groups.size()];
            if (chance(0.1)) {
                ZtOaGroup* group = chance(0.3) ? new ZtOaPartition(L"p") : new ZtOaGroup;
                parent->AddChild(group);
                groups.push_back(group);
                continue;
            }
            // Coarse coordinates make equal faces, and so equal depths, frequent.
            const double x = std::floor(uniform(-10, 10)), y = std::floor(uniform(-10, 10));
            const double z = std::floor(uniform(-10, 10));
            const double sx = std::floor(uniform(0, 4)), sy = std::floor(uniform(0, 4));
            const double sz = std::floor(uniform(0, 3));
            parent->AddChild(Box(x, y, z, x + sx, y + sy, z + sz));
        }
        for (int p = 0; p < 60; ++p) {
            ZtLFrustum3f frustum;
            const ZtLPos3f eye(uniform(-40, 40), uniform(-40, 40), uniform(15, 60));
            const ZtLPos3f target(uniform(-10, 10), uniform(-10, 10), uniform(-10, 10));
            const ZtLVec3f dir = (target - eye).Normalized();
            const ZtLVec3f up = (ZtLVec3f(0, 0, 1) - dir * dir.z).Normalized();
            frustum.SetPerspective(eye, dir, up, 0.5, 0.5, uniform(1, 30), uniform(40, 120));
            if (chance(0.7)) {
                const double wx = uniform(0.3, 0.7), wy = uniform(0.3, 0.7);
                const double half = chance(0.5) ? 0.0001 : 0.02;
                frustum.Narrow(wx - half, wx + half, wy - half, wy + half);
            }
            if (!PickBoth(root, ZtLPickFrustum3f(frustum)).empty())
                ++picked;
        }
    }
    EXPECT_GT(picked, 300) << "the frusta should hit often enough to compare";
}

// The number of boxes a narrow pick tests grows with the logarithm of the model's size,
// not with the size.
TEST(ZtOcPickFrustumTraversal, NarrowPickTestsFewBoxesOnLargeModels) {
    auto boxTests = [](int side) {
        ZtOaPartition root(L"doc");
        auto* model = new ZtOaPartition(L"m");
        root.AddChild(model);
        for (int i = 0; i < side; ++i)
            for (int j = 0; j < side; ++j)
                model->AddChild(
                    Box(i - side / 2, j - side / 2, 0, i - side / 2 + 0.8, j - side / 2 + 0.8, 1));
        ZtOcContext context;
        std::vector<const ZtOaNode*> path =
            Pick(root, LookDown(0.5 + 0.3 / 100, 0.5 + 0.3 / 100), true, &context);
        EXPECT_FALSE(path.empty());
        return context.GetBoxTests();
    };
    const std::uint64_t small = boxTests(32);  // 1,024 boxes
    const std::uint64_t large = boxTests(256); // 65,536 boxes
    EXPECT_LT(large, small * 3) << small << " box tests against " << large;
    EXPECT_LT(large, 200u);
}

} // namespace
