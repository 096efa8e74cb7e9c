// Models loaded into the scene, as the reports tell them.
#include "support/DgnTestModels.h"

#include "report/JsonWriter.h"
#include "report/ModelReport.h"
#include "report/ReportStream.h"
#include "review/ModelLoad.h"
#include "ztlddgn/ZtDgnLoaderPlugin.h"
#include "ztplugin/ZtOpDB.h"
#include "ztplugin/ZtOpState.h"

namespace {

std::string ModelsJson(const ZtOpState& state, bool elements) {
    std::string text;
    JsonWriter json(text);
    WriteModelsJson(json, state, elements);
    return text;
}

// Each part appears in `text`, in this order.
void ExpectInOrder(const std::string& text, std::initializer_list<const char*> parts) {
    std::size_t at = 0;
    for (const char* part : parts) {
        at = text.find(part, at);
        ASSERT_NE(at, std::string::npos) << part << "\nin\n" << text;
    }
}

void SetOption10(bool value) {
    ZtUData data;
    data.SetBool(value);
    ZtDgnRegisterLoaderPlugin()->GetOptionSet()->SetValue(ZtDgnLoaderPlugin::kOption10, data,
                                                          nullptr);
}

TEST(ModelReport, AddsEachModelToTheSceneInLoadOrder) {
    DgnTestFolder folder;
    ZtTestDgnWriter pipes(3, {1000, 80, "m", "mm", {0, 0, 0}});
    pipes.Line({.level = 3,
                .colour = 2,
                .linkages = {{0, 0, 0, 0}, ZtTestDmrsLinkage(12, 70000), ZtTestOdbcLinkage(0, 5)}},
               {-80000, 0, 0}, {160000, 80, 8});
    ZtTestDgnWriter steel(2, {12, 8000, "ft", "in", {0, 0, 0}});
    steel.BeginCell({});
    steel.Line({}, {0, 0, 0}, {96000, 0, 0});
    steel.EndGroup();
    const std::wstring pipesPath = folder.Write("pipes.dgn", pipes.Bytes());
    const std::wstring steelPath = folder.Write("steel.dgn", steel.Bytes());

    ZtOpState state;
    std::string error;
    SetOption10(false);
    ASSERT_EQ(LoadModelIntoScene(state, pipesPath, &error), 0) << error;
    SetOption10(true);
    ASSERT_EQ(LoadModelIntoScene(state, steelPath, &error), 0) << error;
    EXPECT_EQ(state.GetRootNode()->GetNumChildren(), 2);

    // The corpus test compares the element fields; these are what it has no file for.
    ExpectInOrder(ModelsJson(state, true),
                  {"\"dgnOption10AtLoad\": false,",
                   "\"box\": [[-1, 0, 0], [2, 0.001, 1e-04]],\n"
                   "        \"sceneBox\": [[-1, 0, 0], [2, 0.001, 1e-04]],\n"
                   "        \"dmrs\": [0, 12, 4464, 1],\n"
                   "        \"linkages\": [\n"
                   "          {\"kind\": \"dmrs\", \"raw\": [0, 0, 0, 0]},\n"
                   "          {\"kind\": \"dmrs\", \"raw\": [0, 12, 4464, 1]},\n"
                   "          {\"kind\": \"odbc\", \"raw\": [4103, 24162, 3969, 0, 5, 0, 0, 0]}\n",
                   "\"dgnOption10AtLoad\": true,", "\"complex\": false,", "\"dmrs\": null,",
                   "\"complex\": true,"});
    EXPECT_EQ(ModelsJson(state, false).find("elementList"), std::string::npos);
    // A placed model's elements keep their model box beside the box the scene puts them in.
    static_cast<ZtOaPartition*>(state.GetRootNode()->GetChild(0))
        ->SetTransform(ZtLAffine3f(ZtLMatrix3f(), ZtLVec3f(10, 0, -1)));
    ExpectInOrder(ModelsJson(state, true),
                  {"\"box\": [[-1, 0, 0], [2, 0.001, 1e-04]],\n"
                   "        \"sceneBox\": [[9, 0, -1], [12, 0.001, -0.9999]]"});

    std::string summary;
    ReportStream stream(summary);
    AppendModelsSummary(stream, state);
    EXPECT_EQ(summary, "model pipes.dgn: 3D, master unit \"m\", subunit \"mm\", 80000 UORs per "
                       "master unit, 1 elements\n"
                       "model steel.dgn: 2D, master unit \"ft\", subunit \"in\", 96000 UORs per "
                       "master unit, 2 elements\n");
}

TEST(ModelReport, WarningsAreReported) {
    DgnTestFolder folder;
    ZtTestDgnWriter writer(2, {});
    writer.Line({}, {0, 0, 0}, {1, 1, 0});
    std::vector<std::uint8_t> bytes = writer.Bytes();
    bytes.push_back(7);
    ZtOpState state;
    std::string error;
    ASSERT_EQ(LoadModelIntoScene(state, folder.Write("cut.dgn", bytes), &error), 0) << error;
    ExpectInOrder(ModelsJson(state, false), {"\"warnings\": [\n      \"the file is cut short"});
    std::string summary;
    ReportStream stream(summary);
    AppendModelsSummary(stream, state);
    EXPECT_NE(summary.find("\n  warning: the file is cut short"), std::string::npos) << summary;
}

} // namespace
