// The road of a control file driven directly, with the loader's own code.
#include "review/OpenRoad.h"
#include "loader/ZtOdPdsDriLoaderPlugin.h"
#include "report/JsonWriter.h"
#include "report/ReportStream.h"
#include "report/SceneSetReport.h"
#include "support/ZtTestRecordingProgress.h"
#include "tools/ZtTestDgnWriter.h"
#include "tools/ZtTestFiles.h"
#include "ztlddgn/ZtDgnLoaderPlugin.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztplugin/ZtOpDB.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUSysString.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string>
#include <vector>

namespace {

// A folder for a review: control files and the models they name, each model a small
// design file in the units given with `lines` lines along x from the origin, the n-th one
// n master units long.
class OpenRoad : public ::testing::Test {
protected:
    ~OpenRoad() override {
        // The DGN loader that the step registered, with its option.
        ZtOpDB::RemovePlugin(ZtOpDB::GetPluginByName(ZtDgnLoaderPlugin::kRegisteredName));
    }

    void Model(const std::string& name, const ZtTestDgnUnits& units, int lines = 1) const {
        ZtTestDgnWriter writer(3, units);
        const auto uors = static_cast<std::int32_t>(units.subunitsPerMaster * units.uorsPerSubunit);
        for (int n = 1; n <= lines; ++n)
            writer.Line({}, {0, 0, 0}, {n * uors, 0, 0});
        writer.EndOfDesign();
        Folder(name);
        ASSERT_TRUE(writer.Save(dir_.File(name)));
    }
    void Text(const std::string& name, const std::string& text) const {
        Folder(name);
        ASSERT_TRUE(ZtTestWriteBytes(dir_.File(name), text));
    }
    void Folder(const std::string& name) const {
        std::filesystem::create_directories(std::filesystem::path(dir_.File(name)).parent_path());
    }

    int Open(const std::string& dri) {
        return OpenControlFile(state_, loader_, dir_.WideFile(dri), {}, &opened_);
    }
    const ZtOpSceneRef& Ref(std::size_t i) const { return *opened_->set.GetSceneRefs()[i]; }

    ZtTestTempDir dir_;
    ZtOpState state_;
    ZtOdPdsDriLoaderPlugin loader_;
    std::unique_ptr<OpenedSceneSet> opened_;
};

// Load files are found from the control file's folder, not from the one above it.
TEST_F(OpenRoad, MissingAndUnreadableModelsAreReportedAndNotPlaced) {
    Model("models/good.dgn", {1000, 1, "m", "mm", {0, 0, 0}});
    Text("models/text.dgn", "this is no design file\n");
    Text("reviews/review.dri",
         "DesignReview_Control{new_origin{5000 0 0} dgn{name{missing.dgn}} "
         "dgn{name{../models/text.dgn}} dgn{name{models/good.dgn}} dgn{name{" +
             dir_.File("models/good.dgn") + "}} dgn{name{../models/good.dgn}}}");
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
    EXPECT_EQ(state_.GetRootNode()->GetNumChildren(), 2);
}

// The scene set's JSON is read end to end.
TEST_F(OpenRoad, SummaryGivesEachModelsFileUnitsCountAndPlacement) {
    Model("a.dgn", {12, 100, "ft", "in", {0, 0, 0}}, 2);
    Text("review.dri", "DesignReview_Control{master_unit{ft} new_origin{1200 0 -2400}"
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
         {std::string("Scene set: 2 models, scene units in\n"), "1. a.dgn: " + dir_.File("a.dgn"),
          std::string(
              "model in ft / in, 1200 UORs per master unit, 2 elements; reference units ft"),
          std::string("placed: scaled from ft to in, not turned, moved by (12, 0, -24) in"),
          std::string("2. gone.dgn: not loaded (")})
        EXPECT_NE(out.find(part), std::string::npos) << part << "\n" << out;
}

// The models and every side file share one run of the bar: it never goes back.
TEST_F(OpenRoad, TheProgressRunsOnceFromZeroToOne) {
    ZtTestRecordingProgress progress;
    ASSERT_EQ(OpenControlFile(state_, loader_,
                              ZtTestWide(ZT_SOURCE_DIR "/examples/plant/plant.dri"), {}, &opened_,
                              &progress),
              0);
    ASSERT_FALSE(progress.seen.empty());
    EXPECT_TRUE(std::is_sorted(progress.seen.begin(), progress.seen.end()))
        << ::testing::PrintToString(progress.seen);
    EXPECT_EQ(progress.seen.back(), 1.0);
}

// Reading the models ahead on threads changes nothing the road gives: the scene's models
// in their order, each one's elements, warnings and option 10, the references' outcomes,
// the summary and the progress are those of reading each file at its turn.
TEST_F(OpenRoad, EveryThreadCountOpensTheSameReview) {
    const ZtTestDgnUnits metres{1000, 1, "m", "mm", {0, 0, 0}};
    Model("a.dgn", metres, 3);
    // Past the reader's progress step, so that a read reports on its way.
    Model("big.dgn", metres, 70000);
    Model("c.dgn", {12, 100, "ft", "in", {0, 0, 0}}, 2);
    Text("text.dgn", "this is no design file\n");
    const std::string cut = ZtTestReadBytes(dir_.File("a.dgn"));
    Text("cut.dgn", cut.substr(0, cut.size() - 30));
    Text("review.dri", "DesignReview_Control{new_origin{1000 0 0} dgn{name{a.dgn}} "
                       "dgn{name{missing.dgn}} dgn{name{big.dgn}} dgn{name{text.dgn}} "
                       "dgn{name{}} dgn{name{cut.dgn}} dgn{name{a.dgn}} master_unit{ft} "
                       "dgn{name{a.dgn}} dgn{name{c.dgn}}}");
    auto run = [&](std::size_t threads) {
        ZtOpState state;
        ZtOdPdsDriLoaderPlugin loader;
        ZtTestRecordingProgress progress;
        std::unique_ptr<OpenedSceneSet> opened;
        OpenParameters parameters;
        parameters.threads = threads;
        EXPECT_EQ(OpenControlFile(state, loader, dir_.WideFile("review.dri"), parameters, &opened,
                                  &progress),
                  0);
        std::string out;
        if (!opened)
            return out;
        ReportStream stream(out);
        AppendSceneSetSummary(stream, *opened);
        for (std::size_t i = 0; i < opened->refs.size(); ++i)
            out += std::to_string(i) + ": " + opened->refs[i].notLoaded + "\n";
        const ZtOaPartition* root = state.GetRootNode();
        for (int i = 0; i < root->GetNumChildren(); ++i) {
            const auto& model = dynamic_cast<const ZtDgnModel&>(*root->GetChild(i));
            out += ZtUSysString::WideToUtf8(model.GetName().Str()) + " " +
                   std::to_string(model.GetNumElements()) + " option 10 " +
                   std::to_string(model.GetOption10AtLoad()) + "\n";
            for (const std::string& warning : model.GetWarnings())
                out += "  " + warning + "\n";
        }
        out += "names " + std::to_string(state.EditNameDict()->Size()) + "\nprogress";
        for (const double fraction : progress.seen)
            out += " " + std::to_string(fraction);
        return out;
    };
    const std::string one = run(1);
    for (const char* part : {"a.dgn 3 option 10 0\n", "big.dgn 70000", "cut.dgn 2 option 10 0\n",
                             "  the file is cut short", "c.dgn 2", "3: not a DGN V7"})
        EXPECT_NE(one.find(part), std::string::npos) << part << "\n" << one;
    for (const std::size_t threads : {2u, 3u, 16u})
        EXPECT_EQ(run(threads), one) << threads;
}

} // namespace
