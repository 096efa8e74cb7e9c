#include "DriTestSupport.h"

#include "ztlddgn/ZtDgnModel.h"
#include "ztobject/ZtOaShape.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpState.h"

namespace {

using LoaderPlugin = DriLoaderTest;

ZtUData Bool(bool value) {
    ZtUData data;
    data.SetBool(value);
    return data;
}

TEST_F(LoaderPlugin, BooleanParametersDefaultToTrueAndOtherNumbersAreNotTheLoaders) {
    ZtUData data, seven;
    seven.SetInt32(7);
    for (int number : {0, 1}) {
        loader_.IGetParameter(number, &data);
        EXPECT_EQ(data.GetType(), ZtUData::kBool);
        EXPECT_TRUE(data.GetBool());
        EXPECT_EQ(loader_.ISetParameter(number, Bool(false)), 1);
        loader_.IGetParameter(number, &data);
        EXPECT_FALSE(data.GetBool());
        // The two are separate.
        loader_.IGetParameter(1 - number, &data);
        EXPECT_TRUE(data.GetBool());
        // Any non-zero value is true.
        EXPECT_EQ(loader_.ISetParameter(number, seven), 1);
        loader_.IGetParameter(number, &data);
        EXPECT_TRUE(data.GetBool());
    }
    for (int number : {-1, 3, 100}) {
        EXPECT_EQ(loader_.ISetParameter(number, Bool(false)), 0);
        EXPECT_EQ(loader_.IGetParameter(number, &seven), nullptr);
        EXPECT_EQ(seven.GetInt32(), 7);
    }
}

int GetInputFiles(ZtOdPdsDriLoaderPlugin& loader) {
    ZtUData data;
    loader.IGetParameter(2, &data);
    int value = -1;
    ZtUStringBuffer enumName;
    EXPECT_NE(data.GetName(), nullptr);
    if (!data.GetName() || !ZtUName::DecodeEnumName(data.GetName()->GetString(), &value, &enumName))
        return -1;
    EXPECT_EQ(enumName, "ztodpds_dri_input_files_enum");
    return value;
}

// Anything but a value of the enum sets the parameter to zero.
TEST_F(LoaderPlugin, InputFilesRoundTripsAsAnEnumName) {
    EXPECT_EQ(GetInputFiles(loader_), 0);
    for (int value : {1, 2, 0, 2}) {
        SetInputFiles(value);
        EXPECT_EQ(GetInputFiles(loader_), value);
    }
    auto named = [](const char* text) {
        ZtUData data;
        data.SetName(new ZtUName(text, nullptr));
        return data;
    };
    const ZtUData bad[] = {
        named("ztodpds_dri_input_files_enum#3"),
        named("ztodpds_dri_input_files_enum#-1"),
        named("other_enum#1"),
        named("ztodpds_dri_input_files_enum"),
        named("ztodpds_dri_input_files_enum#1x"),
        Bool(true),
        ZtUData(),
    };
    for (const ZtUData& data : bad) {
        SetInputFiles(2);
        EXPECT_EQ(loader_.ISetParameter(2, data), 1);
        EXPECT_EQ(GetInputFiles(loader_), 0);
    }
}

TEST_F(LoaderPlugin, TheLastStateCreatedIsRememberedUntilItGoes) {
    ZtOpState first, second;
    EXPECT_EQ(loader_.GetState(), nullptr);
    loader_.IStateCreated(&first);
    loader_.IStateCreated(&second);
    EXPECT_EQ(loader_.GetState(), &second);
    loader_.IStateDestroyed(&first);
    EXPECT_EQ(loader_.GetState(), &second);
    loader_.IStateDestroyed(&second);
    EXPECT_EQ(loader_.GetState(), nullptr);
}

// Option 10 is off from the read to the finish, then as it was before; without props or
// partition the finish only frees the record and sets up no view.
TEST_F(LoaderPlugin, DgnOptionIsOffFromReadToFinish) {
    ZtOpSceneSet set;
    ZtOpSceneProps props;
    ZtOaPartition partition(L"scene");
    struct Case {
        bool before;
        ZtOpSceneProps* props;
        ZtOaPartition* partition;
    };
    const Case cases[] = {
        {true, &props, &partition}, {false, &props, &partition}, {true, nullptr, &partition}};
    for (const Case& c : cases) {
        SetDgnOption10(c.before);
        ASSERT_EQ(Read("DesignReview_Control{}", &set), 0);
        EXPECT_FALSE(DgnOption10());
        EXPECT_EQ(Finish(c.props, c.partition), 0);
        EXPECT_EQ(DgnOption10(), c.before && c.props && c.partition);
    }
    ZtOpSceneProps untouched;
    ASSERT_EQ(Read("DesignReview_Control{}", &set), 0);
    EXPECT_EQ(Finish(&untouched, nullptr), 0);
    EXPECT_FALSE(DgnOption10());
    EXPECT_FALSE(untouched.GetCurrentView()->GetViewPoint().GetWorldUp().has_value());
    EXPECT_EQ(untouched.GetCurrentView()->GetViewPoint().GetParts(), 0u);
    // A null record is no error.
    EXPECT_EQ(loader_.IFinishSet(nullptr, nullptr, nullptr, nullptr), 0);
}

TEST_F(LoaderPlugin, WithoutADgnLoaderTheLoadGoesOn) {
    ZtOpDB::RemovePlugin(dgnLoader_);
    dgnLoader_ = nullptr;
    ZtOpSceneSet set;
    ASSERT_EQ(Read("DesignReview_Control{dgn{name{a.dgn}}}", &set), 0);
    EXPECT_EQ(set.GetSceneRefs().Size(), 1u);
    ZtOpSceneProps props;
    ZtOaPartition partition(L"scene");
    EXPECT_EQ(Finish(&props, &partition), 0);
}

TEST_F(LoaderPlugin, FinishSetsUpTheViewpointOverTheScene) {
    ZtOpSceneSet set;
    ASSERT_EQ(Read("DesignReview_Control{}", &set), 0);
    ZtOpSceneProps props;
    ZtNvViewPoint* viewPoint = props.EditCurrentView()->EditViewPoint();
    viewPoint->SetParts(1);
    viewPoint->SetWorldUp(ZtLVec3f(0, 1, 0));
    ZtOaPartition partition(L"scene");
    auto* model = new ZtOaGroup;
    model->AddChild(new ZtOaShape(ZtLBox3f(ZtLPos3f(0, 0, 0), ZtLPos3f(10, 20, 4))));
    partition.AddChild(model);
    Finish(&props, &partition);

    EXPECT_EQ(viewPoint->GetWorldUp(), ZtLVec3f(0, 0, 1));
    EXPECT_EQ(viewPoint->GetParts(), 5u);
    const ZtNvCamera& camera = viewPoint->GetCamera();
    // Looking down at the box's centre, up along +Z as far as the view allows.
    const ZtLVec3f toCentre = (ZtLPos3f(5, 10, 2) - camera.GetPosition()).Normalized();
    EXPECT_NEAR(toCentre.Dot(camera.ViewDir()), 1, 1e-12);
    EXPECT_LT(camera.ViewDir().z, 0);
    EXPECT_GT(camera.GetUp().z, 0);
    EXPECT_NE(camera.HasValidFrustum(0.0), 0);
}

// Without a remembered state the view is set up and the side files stay out; with one,
// the tags and display sets go to the elements of the props, made on demand.
TEST_F(LoaderPlugin, SideFilesNeedTheRememberedState) {
    ASSERT_TRUE(ZtTestWriteBytes(
        folder_.File("a.tag"), "eye{0 -10 0}\ntarget{0 0 0}\ntag{5 1 0 0.0 0 0 0\ntext{3\nx}}\n"));
    ASSERT_TRUE(ZtTestWriteBytes(folder_.File("b.dst"), "[DEFINITION SECTION]\n<Display Set>\n"
                                                        "1 All\n<Definition>\nFIND Level 1\n"
                                                        "END FIND\n"));
    ZtOpState state;
    ZtOaPartition partition(L"scene");
    // The tags need a model with a units factor.
    auto* model = new ZtDgnModel(L"a.dgn", state.EditNameDict());
    model->SetUorsPerMaster(1000);
    partition.AddChild(model);
    for (bool remembered : {false, true}) {
        if (remembered)
            loader_.IStateCreated(&state);
        ZtOpSceneSet set;
        ZtOpSceneProps props;
        ASSERT_EQ(Read("DesignReview_Control{}", &set), 0);
        Finish(&props, &partition);
        EXPECT_EQ(props.GetCurrentView()->GetViewPoint().GetParts() & 4, 4u);
        ASSERT_EQ(props.Find(ZtOpSavedViewsElement::GetClass()) != nullptr, remembered);
        ASSERT_EQ(props.Find(ZtOpSelectionSetsElement::GetClass()) != nullptr, remembered);
        if (remembered) {
            EXPECT_EQ(ZtOpSavedViewsElement::Require(props)->Get()->GetChildren().Size(), 1u);
            EXPECT_EQ(ZtOpSelectionSetsElement::Require(props)->Get()->GetChildren().Size(), 1u);
        }
    }
    loader_.IStateDestroyed(&state);
}

} // namespace
