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

ZtLMatrix3f Rows(double a, double b, double c, double d, double e, double f, double g, double h,
                 double i) {
    ZtLMatrix3f m;
    m.SetValue(a, b, c, d, e, f, g, h, i);
    return m;
}

const std::string kOneModel = "dgn{name{a.dgn}}";

TEST_F(Placement, WithoutBlocksTheTransformStaysTheIdentity) {
    EXPECT_EQ(Place("DesignReview_Control{" + kOneModel + "}", 1000), ZtLAffine3f());
}

TEST_F(Placement, TheOriginShiftIsConvertedFromUors) {
    const ZtLAffine3f a = Place(
        "DesignReview_Control{old_origin{10 20 30} new_origin{110 220 330}" + kOneModel + "}", 100);
    EXPECT_EQ(a.GetTranslation(), ZtLVec3f(1, 2, 3));
    EXPECT_EQ(a.GetMatrix(), ZtLMatrix3f());
}

TEST_F(Placement, TheMatrixIsNotScaledAndTheShiftNotTurned) {
    // A quarter turn about Z, rows in file order.
    const ZtLAffine3f a = Place("DesignReview_Control{transform{0 -1 0\n1 0 0\n0 0 1}"
                                "new_origin{500 0 0}" +
                                    kOneModel + "}",
                                10);
    EXPECT_EQ(a.GetMatrix(), Rows(0, -1, 0, 1, 0, 0, 0, 0, 1));
    EXPECT_EQ(a.GetTranslation(), ZtLVec3f(50, 0, 0));
    EXPECT_EQ(a.Transform(ZtLPos3f(1, 0, 0)), ZtLPos3f(50, 1, 0));
}

TEST_F(Placement, AModelWithoutFactorTakesTheShiftAsItStands) {
    ZtOpSceneSet set;
    ASSERT_EQ(Read("DesignReview_Control{master_unit{ft} new_origin{100 200 300}" + kOneModel + "}",
                   &set),
              0);
    ZtOaGroup bare; // no scene properties
    loader_.IPlaceSceneRef(record_, &set, set.GetSceneRefs()[0], &bare);
    EXPECT_EQ(set.GetSceneRefs()[0]->GetTransform().GetTranslation(), ZtLVec3f(100, 200, 300));
    // Nor is a null model an error.
    ZtOpSceneRef* other = set.GetSceneRefs()[0];
    loader_.IPlaceSceneRef(record_, &set, other, nullptr);
    EXPECT_EQ(other->GetTransform().GetTranslation(), ZtLVec3f(200, 400, 600));
}

TEST_F(Placement, TheShiftIsScaledFromTheReferencesUnitsToTheSets) {
    struct Case {
        const char* blocks;
        double uorsPerMaster;
        ZtLVec3f translation;
    };
    const Case cases[] = {
        // Both in millimetres: no scaling.
        {"master_unit{mm} new_origin{1000 0 0} dgn{name{a.dgn}}", 1, {1000, 0, 0}},
        // The reference in millimetres, the set in metres at the end.
        {"master_unit{mm} new_origin{1000 0 0} dgn{name{a.dgn}} master_unit{m}", 1, {1, 0, 0}},
        // The reference in feet, the set in inches.
        {"master_unit{ft} new_origin{0 0 -8000} dgn{name{a.dgn}} master_unit{in}",
         8000,
         {0, 0, -12}},
    };
    for (const Case& c : cases) {
        const ZtLAffine3f a =
            Place(std::string("DesignReview_Control{") + c.blocks + "}", c.uorsPerMaster);
        EXPECT_NEAR(a.GetTranslation().x, c.translation.x, 1e-12) << c.blocks;
        EXPECT_NEAR(a.GetTranslation().y, c.translation.y, 1e-12) << c.blocks;
        EXPECT_NEAR(a.GetTranslation().z, c.translation.z, 1e-12) << c.blocks;
    }
}

TEST_F(Placement, EachCallMultipliesOnceMore) {
    ZtOpSceneSet set;
    ASSERT_EQ(Read("DesignReview_Control{transform{2 0 0 0 2 0 0 0 2} new_origin{3 0 0}" +
                       kOneModel + "}",
                   &set),
              0);
    std::unique_ptr<ZtOaGroup> model = Model(1);
    ZtOpSceneRef* ref = set.GetSceneRefs()[0];
    loader_.IPlaceSceneRef(nullptr, &set, ref, model.get());
    loader_.IPlaceSceneRef(nullptr, &set, ref, model.get());
    // (2 p + 3) placed again: 2 (2 p + 3) + 3.
    EXPECT_EQ(ref->GetTransform().Transform(ZtLPos3f(1, 0, 0)), ZtLPos3f(13, 0, 0));
}

TEST_F(Placement, NewOriginCountsFromTheOldOriginThatStoodBeforeIt) {
    const ZtLAffine3f a =
        Place("DesignReview_Control{new_origin{5 5 5} old_origin{1 1 1}" + kOneModel + "}", 1);
    EXPECT_EQ(a.GetTranslation(), ZtLVec3f(5, 5, 5));
}

TEST_F(Placement, TheLastTransformThatParsesCounts) {
    struct Case {
        const char* blocks;
        ZtLMatrix3f matrix;
    };
    const Case cases[] = {
        {"transform{2 0 0 0 2 0 0 0 2} transform{3 0 0 0 3 0 0 0 3}",
         Rows(3, 0, 0, 0, 3, 0, 0, 0, 3)},
        {"transform{2 0 0 0 2 0 0 0 2} transform{3 0 0 0 3 0 0 0}",
         Rows(2, 0, 0, 0, 2, 0, 0, 0, 2)},
        {"transform{1 2 3 4 5 6 7 8 9 10}", Rows(1, 2, 3, 4, 5, 6, 7, 8, 9)},
    };
    for (const Case& c : cases) {
        const ZtLAffine3f a =
            Place(std::string("DesignReview_Control{") + c.blocks + kOneModel + "}", 1);
        EXPECT_EQ(a.GetMatrix(), c.matrix) << c.blocks;
    }
}

TEST_F(Placement, BadNumbersLeaveTheValuesInForce) {
    const ZtLAffine3f a = Place("DesignReview_Control{old_origin{10 10 10} new_origin{20 30 40}"
                                "old_origin{1 2} new_origin{x y z} transform{1 0 0 0 1 0 0 0}" +
                                    kOneModel + "}",
                                10);
    EXPECT_EQ(a, ZtLAffine3f(ZtLMatrix3f(), ZtLVec3f(1, 2, 3)));
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
