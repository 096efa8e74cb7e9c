#include "ztcore/ZtOcPickFrustumTraversal.h"
#include "ztcore/ZtOcContext.h"
#include "ztcore/ZtOcGeometryIndex.h"
#include "ztlinear/ZtLFrustum3f.h"
#include "ztlinear/ZtLPickFrustum3f.h"
#include "ztobject/ZtOaPartition.h"
#include "ztobject/ZtOaShape.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
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

// Looking down -Z from (0, 0, 100), seeing from depth `nearDepth` to `farDepth`, narrowed to
// a square of `half` about the window-space point (wx, wy).
ZtLPickFrustum3f LookDown(double nearDepth = 1.0, double farDepth = 1000.0, double wx = 0.5,
                          double wy = 0.5, double half = 0.0001) {
    ZtLFrustum3f frustum;
    frustum.SetPerspective({0, 0, 100}, {0, 0, -1}, {0, 1, 0}, 1.0, 1.0, nearDepth, farDepth);
    frustum.Narrow(wx - half, wx + half, wy - half, wy + half);
    return ZtLPickFrustum3f(frustum);
}

struct PickOptions {
    std::uint32_t required = 16;
    int containedOnly = 0;
    std::uint32_t pickBits = 0;
};

// The nodes of the picked path, from the shape up, as the index finds them; walking the
// whole tree must find the same. `indexContext` counts the index's work if given.
std::vector<const ZtOaNode*> Pick(const ZtOaNode& root, const ZtLPickFrustum3f& frustum,
                                  PickOptions options = {}, ZtOcContext* indexContext = nullptr) {
    std::vector<const ZtOaNode*> paths[2];
    for (bool useIndex : {false, true}) {
        ZtOcContext own;
        ZtOcContext* context = useIndex && indexContext ? indexContext : &own;
        context->SetUseIndex(useIndex);
        ZtOcPickFrustumTraversal pick(context);
        pick.SetFrustum(frustum);
        pick.SetRequiredPropertyBits(options.required);
        pick.SetContainedOnly(options.containedOnly);
        pick.SetPickBits(options.pickBits);
        root.ApplyTraversal(&pick);
        if (const ZtOaFragment* shape = pick.GetPickedShape())
            for (const ZtOaPathLink* link = shape->GetFragPath(); link; link = link->GetParent())
                paths[useIndex].push_back(link->GetNode());
    }
    EXPECT_EQ(paths[0], paths[1]) << "the walk and the index disagree";
    return paths[1];
}

// The index is built on the first pick and kept until the tree is edited.
TEST(ZtOcPickFrustumTraversal, PicksTheBoxNearestTheEyeWithItsPathAndFollowsEdits) {
    ZtOaPartition root(L"doc");
    auto* model = new ZtOaPartition(L"m", L"/models/m.dgn");
    root.AddChild(model);
    auto* cell = new ZtOaGroup;
    ZtOaShape* low = Cube(0, 0, 0);
    model->AddChild(low);
    model->AddChild(cell);
    model->AddChild(Cube(5, 5, 20)); // off the line of sight
    const ZtOcGeometryIndex* before = &ZtOcGeometryIndex::Of(*model);
    EXPECT_EQ(Pick(root, LookDown()), (std::vector<const ZtOaNode*>{low, model, &root}));
    EXPECT_EQ(&ZtOcGeometryIndex::Of(*model), before) << "an unedited tree keeps its index";
    ZtOaShape* high = Cube(0, 0, 10);
    cell->AddChild(high);
    EXPECT_EQ(Pick(root, LookDown()), (std::vector<const ZtOaNode*>{high, cell, model, &root}));
    EXPECT_EQ(ZtOcGeometryIndex::Of(*model).GetNumItems(), 3u);
}

// A model's boxes are picked where its partition's transform puts them, in the root's
// coordinates, and nowhere else.
TEST(ZtOcPickFrustumTraversal, PicksAPlacedModelWhereItIsPlaced) {
    ZtOaPartition root(L"doc");
    auto* model = new ZtOaPartition(L"m", L"/models/m.dgn");
    ZtOaShape* east = Box(3, -0.5, 0, 4, 0.5, 1); // a box 3 m east of the model's origin
    model->AddChild(east);
    root.AddChild(model);
    EXPECT_EQ(Pick(root, LookDown(1, 1000, 0.5 + 3.5 / 200)).front(), east);
    ZtLMatrix3f turn;
    turn.SetValue(0, -1, 0, 1, 0, 0, 0, 0, 1);
    model->SetTransform(ZtLAffine3f(turn, ZtLVec3f(-10, -5, 0)));
    // Turned a quarter turn, the box lies north of the model's origin, moved to (-10, -5).
    EXPECT_TRUE(Pick(root, LookDown(1, 1000, 0.5 + 3.5 / 200)).empty());
    EXPECT_EQ(Pick(root, LookDown(1, 1000, 0.5 - 10.0 / 200, 0.5 - 1.5 / 200)),
              (std::vector<const ZtOaNode*>{east, model, &root}));
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
        const auto path = Pick(root, LookDown());
        ASSERT_FALSE(path.empty());
        EXPECT_EQ(path.front(), firstInModel ? inA : inB);
    }
    // Within one model's index as well.
    for (bool smallFirst : {true, false}) {
        ZtOaPartition root(L"doc");
        auto* model = new ZtOaPartition(L"m");
        ZtOaShape* small = Box(-1, -1, 0, 1, 1, 5);
        ZtOaShape* large = Box(-2, -2, -3, 2, 2, 5);
        model->AddChild(smallFirst ? small : large);
        model->AddChild(smallFirst ? large : small);
        root.AddChild(model);
        const auto path = Pick(root, LookDown());
        ASSERT_FALSE(path.empty());
        EXPECT_EQ(path.front(), smallFirst ? small : large);
    }
}

// Within one model, boxes alike on the line of sight, or with the same top face, spread
// among many others: the first of them in walk order is picked, wherever the index puts it.
TEST(ZtOcPickFrustumTraversal, EquallyNearBoxesInOneModelGoToTheFirst) {
    for (bool alike : {true, false}) {
        ZtOaPartition root(L"doc");
        auto* model = new ZtOaPartition(L"m");
        root.AddChild(model);
        std::vector<ZtOaShape*> tied;
        for (int i = 0; i < 2000; ++i) {
            if (i % 97 == 50) {
                tied.push_back(Box(-1, -1, alike ? 0 : -i, 1, 1, 5));
                model->AddChild(tied.back());
            } else {
                model->AddChild(Cube(i % 40 - 20.0, i / 40 - 25.0 + 0.5, 0));
            }
        }
        EXPECT_EQ(Pick(root, LookDown()).front(), tied.front()) << (alike ? "alike" : "same top");
    }
}

TEST(ZtOcPickFrustumTraversal, NearAndFarPlanesBoundThePick) {
    ZtOaPartition root(L"doc");
    ZtOaShape* near = Cube(0, 0, 50); // depth 49.5 .. 50.5
    ZtOaShape* far = Cube(0, 0, -50); // depth 149.5 .. 150.5
    root.AddChild(near);
    root.AddChild(far);
    EXPECT_EQ(Pick(root, LookDown(60, 200)).front(), far);
    EXPECT_EQ(Pick(root, LookDown(1, 49.5)).front(), near);
    EXPECT_TRUE(Pick(root, LookDown(51, 149)).empty());
}

TEST(ZtOcPickFrustumTraversal, CandidatesByPropertyBitsAndContainment) {
    ZtOaPartition root(L"doc");
    ZtOaShape* big = Box(-50, -50, -10, 50, 50, 10);
    ZtOaShape* small = Cube(0, 0, -20, 0.00001);
    root.AddChild(big);
    root.AddChild(small);
    EXPECT_EQ(Pick(root, LookDown()).front(), big);
    // Only the small box lies wholly in the narrow frustum.
    EXPECT_EQ(Pick(root, LookDown(), {.containedOnly = 1}).front(), small);
    // Nodes without the required bits, or with a pick bit, are passed over.
    EXPECT_TRUE(Pick(root, LookDown(), {.required = 16 | 32}).empty());
    EXPECT_TRUE(Pick(root, LookDown(), {.pickBits = 16}).empty());
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

// Boxes the index can't keep in its hierarchy (reaching to infinity or far beyond any
// plant) are still picked as the walk picks them, among the others.
TEST(ZtOcPickFrustumTraversal, BoxesReachingFarAreSearchedBesideTheOthers) {
    const double inf = std::numeric_limits<double>::infinity();
    ZtOaPartition root(L"doc");
    auto* model = new ZtOaPartition(L"m");
    root.AddChild(model);
    for (int i = 0; i < 50; ++i)
        model->AddChild(Cube(i % 7, i / 7, i % 5));
    ZtOaShape* endless = Box(-1, -1, -inf, 1, 1, 3); // above the cube on the line of sight
    ZtOaShape* vast = Box(-1e35, -1e35, 20, 1e35, 1e35, 30);
    EXPECT_EQ(Pick(root, LookDown()).front(), model->GetChild(0));
    model->AddChild(endless);
    EXPECT_EQ(Pick(root, LookDown()).front(), endless);
    model->AddChild(vast);
    EXPECT_EQ(Pick(root, LookDown()).front(), vast);
    EXPECT_EQ(ZtOcGeometryIndex::Of(*model).GetNumItems(), 52u);
}

// A partition of plain children that hands out their boxes in runs, as a loaded model does.
class FlatPartition : public ZtOaPartition {
public:
    FlatPartition() : ZtOaPartition(L"flat") {}
    bool HasFlatBoxes() const override { return true; }
    void FillChildBoxes(std::size_t first, std::size_t count, ZtLBox3f* boxes) const override {
        for (std::size_t i = 0; i < count; ++i)
            GetChild(static_cast<int>(first + i))->GetBoundingBox(&boxes[i]);
    }
};

// Over boxes handed out in runs, odd ones among them (empty, endless, not a number), the
// index answers as the walk does, placed or not.
TEST(ZtOcPickFrustumTraversal, IndexOfBoxesHandedOutInRunsAgreesWithTheWalk) {
    const double inf = std::numeric_limits<double>::infinity();
    std::mt19937 random(11);
    auto coarse = [&](double lo, double hi) {
        return std::floor(std::uniform_real_distribution<double>(lo, hi)(random));
    };
    for (bool placed : {false, true}) {
        ZtOaPartition root(L"doc");
        auto* model = new FlatPartition;
        if (placed)
            model->SetTransform(ZtLAffine3f(ZtLMatrix3f(), ZtLVec3f(0.5, -1, 2)));
        root.AddChild(model);
        for (int i = 0; i < 700; ++i) {
            const double x = coarse(-10, 10), y = coarse(-10, 10), z = coarse(-10, 10);
            if (i == 300)
                model->AddChild(Box(x, y, z, x + 1, y + 1, inf));
            else if (i == 301)
                model->AddChild(Box(x, y, std::nan(""), x + 1, y + 1, z));
            else if (i == 302)
                model->AddChild(new ZtOaShape(ZtLBox3f()));
            else
                model->AddChild(Box(x, y, z, x + coarse(0, 3), y + coarse(0, 3), z + coarse(0, 2)));
        }
        EXPECT_EQ(ZtOcGeometryIndex::Of(*model).GetNumItems(), 699u);
        int picked = 0;
        for (int p = 0; p < 200; ++p)
            picked += !Pick(root, LookDown(1, 1000, 0.45 + 0.1 * (p % 20) / 20,
                                           0.45 + 0.1 * (p / 20) / 10))
                           .empty();
        EXPECT_GT(picked, 100);
    }
}

// Indexes made together, on several threads, are the ones the picks then use, and give
// what indexes made one by one give.
TEST(ZtOcPickFrustumTraversal, IndexesMadeTogetherServeThePicks) {
    ZtOaPartition root(L"doc");
    std::vector<const ZtOaPartition*> models;
    for (int m = 0; m < 7; ++m) {
        auto* model = new ZtOaPartition(L"m");
        for (int i = 0; i < 300; ++i)
            model->AddChild(Cube(i % 20 - 10.0 + m * 0.1, i / 20 - 7.0, m - 3.0));
        root.AddChild(model);
        models.push_back(model);
    }
    ZtOcGeometryIndex::MakeAll(models);
    for (const ZtOaPartition* model : models) {
        ASSERT_NE(model->GetCache(), nullptr);
        EXPECT_EQ(&ZtOcGeometryIndex::Of(*model), model->GetCache());
        EXPECT_EQ(ZtOcGeometryIndex::Of(*model).GetNumItems(), 300u);
    }
    for (double wx : {0.45, 0.5, 0.52})
        EXPECT_FALSE(Pick(root, LookDown(1, 1000, wx, 0.5)).empty());
    ZtOcGeometryIndex::MakeAll({});
}

// A placement as a model may get: turned about Z (mostly by quarter turns, which keep
// equal faces equal), scaled as between units, and moved.
ZtLAffine3f RandomPlacement(std::mt19937& random) {
    const double angle = random() % 4 ? (random() % 4) * std::numbers::pi / 2 : random() % 360;
    const double c = std::round(std::cos(angle) * 1e6) / 1e6,
                 s = std::round(std::sin(angle) * 1e6) / 1e6;
    const double scales[] = {1, 2, 0.3048, 0.001};
    const double k = scales[random() % 4];
    ZtLMatrix3f m;
    m.SetValue(c * k, -s * k, 0, s * k, c * k, 0, 0, 0, k);
    const auto shift = [&random] { return static_cast<double>(random() % 9) - 4; };
    return ZtLAffine3f(m, ZtLVec3f(shift(), shift(), shift()));
}

// Random trees of groups, nested partitions, placed or not, and boxes, many of them alike
// so that ties are common, picked through random frusta, narrow and wide: the index must
// give what the walk gives, path and all.
TEST(ZtOcPickFrustumTraversal, IndexAgreesWithTheWalkOnRandomModels) {
    std::mt19937 random(20240607);
    auto uniform = [&](double lo, double hi) {
        return std::uniform_real_distribution<double>(lo, hi)(random);
    };
    // Coarse coordinates make equal faces, and so equal depths, frequent.
    auto coarse = [&](double lo, double hi) { return std::floor(uniform(lo, hi)); };
    auto chance = [&](double p) { return std::bernoulli_distribution(p)(random); };
    int picked = 0;
    for (int model = 0; model < 30; ++model) {
        ZtOaPartition root(L"doc");
        std::vector<ZtOaGroup*> groups = {&root};
        for (int i = 0; i < 20 + model * 40; ++i) {
            ZtOaGroup* parent = groups[random() % groups.size()];
            if (chance(0.1)) {
                ZtOaGroup* group = nullptr;
                if (chance(0.3)) {
                    auto* partition = new ZtOaPartition(L"p");
                    if (chance(0.6))
                        partition->SetTransform(RandomPlacement(random));
                    group = partition;
                } else {
                    group = new ZtOaGroup;
                }
                groups.push_back(group);
                parent->AddChild(group);
                continue;
            }
            const double x = coarse(-10, 10), y = coarse(-10, 10), z = coarse(-10, 10);
            const double sx = coarse(0, 4), sy = coarse(0, 4), sz = coarse(0, 3);
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
            picked += !Pick(root, ZtLPickFrustum3f(frustum)).empty();
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
        for (int i = -side / 2; i < side / 2; ++i)
            for (int j = -side / 2; j < side / 2; ++j)
                model->AddChild(Box(i, j, 0, i + 0.8, j + 0.8, 1));
        ZtOcContext context;
        EXPECT_FALSE(Pick(root, LookDown(1, 1000, 0.503, 0.503), {}, &context).empty());
        return context.GetBoxTests();
    };
    const std::uint64_t small = boxTests(32);  // 1,024 boxes
    const std::uint64_t large = boxTests(256); // 65,536 boxes
    EXPECT_LT(large, small * 3) << small << " box tests against " << large;
    EXPECT_LT(large, 200u);
}

} // namespace
