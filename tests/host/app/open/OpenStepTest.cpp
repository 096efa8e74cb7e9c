// The open step driven directly: the host's road with the loader's own code.
#include "OpenTestReview.h"

#include "app/JsonWriter.h"
#include "app/OpenStep.h"
#include "app/ReportStream.h"
#include "app/SceneSetReport.h"
#include "loader/ZtOdPdsDriLoaderPlugin.h"
#include "support/ZtTestRecordingProgress.h"
#include "ztlddgn/ZtDgnLoaderPlugin.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztplugin/ZtOpDB.h"
#include "ztplugin/ZtOpState.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

class OpenStep : public ::testing::Test {
protected:
    ~OpenStep() override {
        // The DGN loader that the step registered, with its option.
        ZtOpDB::RemovePlugin(ZtOpDB::GetPluginByName(ZtDgnLoaderPlugin::kRegisteredName));
    }

    int Open(const std::string& dri, OpenParameters parameters = {}) {
        return RunOpenStep(state_, loader_, review_.WideFile(dri), parameters, &opened_);
    }
    const ZtOpSceneRef& Ref(std::size_t i) const { return *opened_->set.GetSceneRefs()[i]; }
    int ModelsInScene() const { return state_.GetRootNode()->GetNumChildren(); }

    OpenTestReview review_;
    ZtOpState state_;
    ZtOdPdsDriLoaderPlugin loader_;
    std::unique_ptr<OpenedSceneSet> opened_;
};

// Load files are found from the control file's folder, not from the one above it.
TEST_F(OpenStep, MissingAndUnreadableModelsAreReportedAndNotPlaced) {
    review_.Model("models/good.dgn", OpenTestReview::Metres());
    review_.Text("models/text.dgn", "this is no design file\n");
    review_.Text("reviews/review.dri",
                 "DesignReview_Control{new_origin{5000 0 0} dgn{name{missing.dgn}} "
                 "dgn{name{../models/text.dgn}} dgn{name{models/good.dgn}} dgn{name{" +
                     review_.File("models/good.dgn") + "}} dgn{name{../models/good.dgn}}}");
    ASSERT_EQ(Open("reviews/review.dri"), 0);
    ASSERT_EQ(opened_->refs.size(), 5u);
    for (std::size_t i : {0u, 1u, 2u}) {
        EXPECT_EQ(opened_->refs[i].model, nullptr) << i;
        EXPECT_FALSE(opened_->refs[i].notLoaded.empty()) << i;
        EXPECT_EQ(Ref(i).GetTransform(), ZtLAffine3f()) << i;
    }
    for (std::size_t i : {3u, 4u}) {
        ASSERT_NE(opened_->refs[i].model, nullptr) << i;
        EXPECT_NEAR((Ref(i).GetTransform().GetTranslation() - ZtLVec3f(5, 0, 0)).Length(), 0,
                    1e-12);
    }
    EXPECT_EQ(ModelsInScene(), 2);
}

TEST_F(OpenStep, TheLoaderLearnsOfTheDocumentAndItsParameters) {
    review_.Text("review.dri", "DesignReview_Control{}");
    OpenParameters parameters;
    parameters.inputFiles = 2;
    parameters.importTags = false;
    ASSERT_EQ(Open("review.dri", parameters), 0);
    EXPECT_EQ(loader_.GetState(), &state_);
    ZtUData value;
    loader_.IGetParameter(0, &value);
    EXPECT_FALSE(value.GetBool());
    loader_.IGetParameter(1, &value);
    EXPECT_TRUE(value.GetBool());
    loader_.IGetParameter(2, &value);
    ASSERT_NE(value.GetName(), nullptr);
    EXPECT_EQ(value.GetName()->GetString(), "ztodpds_dri_input_files_enum#2");
}

TEST(InputFilesValue, NamesTheThreeValues) {
    EXPECT_EQ(InputFilesValue("model"), 0);
    EXPECT_EQ(InputFilesValue("cache"), 1);
    EXPECT_EQ(InputFilesValue("either"), 2);
    EXPECT_EQ(InputFilesValue("Model"), std::nullopt);
    EXPECT_EQ(InputFilesValue(""), std::nullopt);
}

// The scene set's JSON is read end to end.
TEST_F(OpenStep, SummaryGivesEachModelsFileUnitsCountAndPlacement) {
    review_.Model("a.dgn", OpenTestReview::Feet(), 2);
    review_.Text("review.dri", "DesignReview_Control{master_unit{ft} new_origin{1200 0 -2400}"
                               "dgn{name{a.dgn}} dgn{name{gone.dgn}} master_unit{in}}");
    ASSERT_EQ(Open("review.dri"), 0);
    std::string none;
    JsonWriter nullWriter(none);
    WriteSceneSetJson(nullWriter, nullptr);
    EXPECT_EQ(none, "null");

    std::string out;
    ReportStream stream(out);
    AppendSceneSetSummary(stream, *opened_);
    for (const std::string& part :
         {std::string("Scene set: 2 models, scene units in\n"),
          "1. a.dgn: " + review_.File("a.dgn"),
          std::string(
              "model in ft / in, 1200 UORs per master unit, 2 elements; reference units ft"),
          std::string("placed by rows (1 0 0) (0 1 0) (0 0 1), then moved by (12, 0, -24) in"),
          std::string("2. gone.dgn: not loaded (")})
        EXPECT_NE(out.find(part), std::string::npos) << part << "\n" << out;
}

// The models and every side file share one run of the bar: it never goes back.
TEST_F(OpenStep, TheProgressRunsOnceFromZeroToOne) {
    ZtTestRecordingProgress progress;
    ASSERT_EQ(RunOpenStep(state_, loader_, ZtTestWide(ZT_SOURCE_DIR "/examples/plant/plant.dri"),
                          {}, &opened_, &progress),
              0);
    ASSERT_FALSE(progress.seen.empty());
    EXPECT_TRUE(std::is_sorted(progress.seen.begin(), progress.seen.end()))
        << ::testing::PrintToString(progress.seen);
    EXPECT_EQ(progress.seen.back(), 1.0);
}

} // namespace
