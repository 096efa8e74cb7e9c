#include "DriTestSupport.h"

#include "ztplugin/ZtOpSceneRef.h"

namespace {

class Placement : public DriLoaderTest {
protected:
    // Reads `text` and places its first reference on a model with factor `uorsPerMaster`.
    ZtLAffine3f Place(const std::string& text, double uorsPerMaster) {
        ZtOpSceneSet set;
        EXPECT_EQ(Read(text, &set), 0);
        EXPECT_GE(set.GetSceneRefs().Size(), 1u);
        ZtOpSceneRef* ref = set.GetSceneRefs()[0];
        std::unique_ptr<ZtOaGroup> model = Model(uorsPerMaster);
        loader_.IPlaceSceneRef(record_, &set, ref, model.get());
        return ref->GetTransform();
    }
};

const std::string kOneModel = "dgn{name{a.dgn}}";
const ZtLMatrix3f kIdentity;
ZtLMatrix3f Scale(double s) {
    return Rows(s, 0, 0, 0, s, 0, 0, 0, s);
}

// The blocks of a control file before and after its one model.
struct PlacementCase {
    const char* name; // of the test
    const char* before;
    const char* after;
    double uorsPerMaster;
    ZtLMatrix3f matrix;
    ZtLVec3f translation;
};

// Each control file read by a loader of its own.
const PlacementCase kPlacements[] = {
    {"Plain", "", "", 1000, kIdentity, {0, 0, 0}},
    // The origin shift is converted from UORs.
    {"OriginShiftFromUors",
     "old_origin{10 20 30} new_origin{110 220 330}",
     "",
     100,
     kIdentity,
     {1, 2, 3}},
    // The matrix, rows in file order, is not scaled, and the shift not turned.
    {"MatrixInFileOrder",
     "transform{0 -1 0\n1 0 0\n0 0 1} new_origin{500 0 0}",
     "",
     10,
     Rows(0, -1, 0, 1, 0, 0, 0, 0, 1),
     {50, 0, 0}},
    // The shift is scaled from the reference's units to the set's: both in millimetres;
    // the set in metres at the end; the reference in feet and the set in inches.
    {"ShiftInMillimetres", "master_unit{mm} new_origin{1000 0 0}", "", 1, kIdentity, {1000, 0, 0}},
    {"SetInMetres",
     "master_unit{mm} new_origin{1000 0 0}",
     "master_unit{m}",
     1,
     kIdentity,
     {1, 0, 0}},
    {"FeetToInches",
     "master_unit{ft} new_origin{0 0 -8000}",
     "master_unit{in}",
     8000,
     kIdentity,
     {0, 0, -12}},
    // A new origin counts from the old origin that stood before it.
    {"NewOriginFromTheOldBeforeIt",
     "new_origin{5 5 5} old_origin{1 1 1}",
     "",
     1,
     kIdentity,
     {5, 5, 5}},
    // The last transform that parses counts; a tenth number is not read.
    {"LastTransformCounts",
     "transform{2 0 0 0 2 0 0 0 2} transform{3 0 0 0 3 0 0 0 3}",
     "",
     1,
     Scale(3),
     {0, 0, 0}},
    {"ShortTransformIsIgnored",
     "transform{2 0 0 0 2 0 0 0 2} transform{3 0 0 0 3 0 0 0}",
     "",
     1,
     Scale(2),
     {0, 0, 0}},
    {"TenthNumberIsNotRead",
     "transform{1 2 3 4 5 6 7 8 9 10}",
     "",
     1,
     Rows(1, 2, 3, 4, 5, 6, 7, 8, 9),
     {0, 0, 0}},
    // Bad numbers leave the values in force.
    {"BadNumbersKeepTheValues",
     "old_origin{10 10 10} new_origin{20 30 40} old_origin{1 2} new_origin{x y z}",
     "transform{1 0 0 0 1 0 0 0}",
     10,
     kIdentity,
     {1, 2, 3}},
};

class Placements : public Placement, public ::testing::WithParamInterface<PlacementCase> {};

TEST_P(Placements, TransformOfTheFirstReference) {
    const PlacementCase& c = GetParam();
    const std::string text =
        std::string("DesignReview_Control{") + c.before + kOneModel + c.after + "}";
    const ZtLAffine3f a = Place(text, c.uorsPerMaster);
    const ZtLVec3f& t = a.GetTranslation();
    EXPECT_EQ(a.GetMatrix(), c.matrix) << text;
    EXPECT_NEAR((t - c.translation).Length(), 0, 1e-12)
        << text << ": " << t.x << " " << t.y << " " << t.z;
}

// The case's name stands for it in test names and messages.
void PrintTo(const PlacementCase& c, std::ostream* out) {
    *out << c.name;
}

INSTANTIATE_TEST_SUITE_P(ControlFiles, Placements, ::testing::ValuesIn(kPlacements),
                         [](const auto& info) { return std::string(info.param.name); });

// A model without a factor takes the shift as it stands; a null model is no error; each
// call multiplies once more.
TEST_F(Placement, EachCallMultipliesOnceMore) {
    ZtOpSceneSet set;
    ASSERT_EQ(Read("DesignReview_Control{master_unit{ft} transform{2 0 0 0 2 0 0 0 2} "
                   "new_origin{100 200 300}" +
                       kOneModel + "}",
                   &set),
              0);
    ZtOaGroup bare; // no scene properties
    ZtOpSceneRef* ref = set.GetSceneRefs()[0];
    loader_.IPlaceSceneRef(record_, &set, ref, &bare);
    EXPECT_EQ(ref->GetTransform().GetTranslation(), ZtLVec3f(100, 200, 300));
    loader_.IPlaceSceneRef(nullptr, &set, ref, nullptr);
    // (2 p + t) placed again: 2 (2 p + t) + t.
    EXPECT_EQ(ref->GetTransform().Transform(ZtLPos3f(1, 0, 0)), ZtLPos3f(304, 600, 900));
}

// One plug-in reads control files for the life of the process, and what one file sets
// stays in force for the next.
TEST_F(Placement, TransformOriginsAndUnitPersistAcrossControlFiles) {
    const ZtLAffine3f first = Place("DesignReview_Control{master_unit{ft} transform{0 -1 0 1 0 0 "
                                    "0 0 1} old_origin{100 0 0} new_origin{400 0 0}" +
                                        kOneModel + "}",
                                    100);
    EXPECT_EQ(first.GetTranslation(), ZtLVec3f(3, 0, 0));

    // A second file with none of the blocks: the same placement, the same units.
    ZtOpSceneSet set;
    ASSERT_EQ(Read("DesignReview_Control{" + kOneModel + "}", &set, "second.dri"), 0);
    ZtOpSceneRef* ref = set.GetSceneRefs()[0];
    EXPECT_EQ(ref->GetLinearUnits(), ZtOaUnit::kFeet);
    // The set is new, though, and counts in its own units until told otherwise.
    EXPECT_EQ(set.GetLinearUnits(), ZtOaUnit::kMetres);
    std::unique_ptr<ZtOaGroup> model = Model(100);
    loader_.IPlaceSceneRef(record_, &set, ref, model.get());
    EXPECT_EQ(ref->GetTransform().GetMatrix(), first.GetMatrix());
    EXPECT_NEAR(ref->GetTransform().GetTranslation().x, 3 * 0.3048, 1e-12);

    // A third file moves the old origin only: the shift stays, and a later new origin
    // counts from the moved one.
    const ZtLAffine3f third =
        Place("DesignReview_Control{master_unit{ft} old_origin{0 0 0}" + kOneModel + "}", 100);
    EXPECT_EQ(third.GetTranslation(), ZtLVec3f(3, 0, 0));
    const ZtLAffine3f fourth =
        Place("DesignReview_Control{master_unit{ft} new_origin{0 100 0}" + kOneModel + "}", 100);
    EXPECT_EQ(fourth.GetTranslation(), ZtLVec3f(0, 1, 0));
    EXPECT_EQ(fourth.GetMatrix(), first.GetMatrix());
}

} // namespace
