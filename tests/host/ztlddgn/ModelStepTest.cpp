#include "DgnTestModels.h"

#include "app/JsonWriter.h"
#include "app/ModelStep.h"
#include "app/ReportStream.h"
#include "support/ZtTestJson.h"
#include "ztlddgn/ZtDgnLoaderPlugin.h"
#include "ztplugin/ZtOpDB.h"
#include "ztplugin/ZtOpState.h"

namespace {

ZtTestJson ModelsJson(const ZtOpState& state, bool elements) {
    std::string text;
    JsonWriter json(text);
    WriteModelsJson(json, state, elements);
    ZtTestJson parsed;
    std::string error;
    EXPECT_TRUE(ZtTestParseJson(text, &parsed, &error)) << error << "\n" << text;
    return parsed;
}

void SetOption10(bool value) {
    ZtUData data;
    data.SetBool(value);
    ZtDgnRegisterLoaderPlugin()->GetOptionSet()->SetValue(ZtDgnLoaderPlugin::kOption10, data,
                                                          nullptr);
}

TEST(ZtDgnLoaderPlugin, IsRegisteredOnceWithOption10On) {
    ZtDgnLoaderPlugin* loader = ZtDgnRegisterLoaderPlugin();
    ASSERT_TRUE(loader);
    EXPECT_EQ(ZtDgnRegisterLoaderPlugin(), loader);
    EXPECT_EQ(ZtOpDB::GetPluginByName("ZtKvcLoaderPlugin:ztlddgn"), loader);
    EXPECT_TRUE(loader->IsScenePropsPlugin());
    EXPECT_TRUE(loader->IUnderstandsFile(L"/x/PIPES.DGN"));
    EXPECT_FALSE(loader->IUnderstandsFile(L"/x/pipes.kvc"));
    ZtUData value;
    ASSERT_EQ(loader->GetOptionSet()->GetValue(10, &value), 1);
    EXPECT_EQ(value.GetType(), ZtUData::kBool);
    EXPECT_TRUE(value.GetBool());
}

TEST(ModelStep, AddsEachModelToTheSceneInLoadOrder) {
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
    ASSERT_EQ(RunModelStep(state, pipesPath, &error), 0) << error;
    SetOption10(true);
    ASSERT_EQ(RunModelStep(state, steelPath, &error), 0) << error;
    EXPECT_EQ(state.GetRootNode()->GetNumChildren(), 2);

    // The corpus test compares the element fields; these are what it has no file for.
    const ZtTestJson models = ModelsJson(state, true);
    ASSERT_EQ(models.items.size(), 2u);
    EXPECT_FALSE(models[0]["dgnOption10AtLoad"].boolean);
    EXPECT_TRUE(models[1]["dgnOption10AtLoad"].boolean);
    const ZtTestJson& line = models[0]["elementList"][0];
    EXPECT_EQ(line["box"][1][2].number, 0.0001);
    EXPECT_EQ(line["dmrs"][2].number, 0x1170);
    const ZtTestJson& linkages = line["linkages"];
    ASSERT_EQ(linkages.items.size(), 3u);
    EXPECT_EQ(linkages[0]["kind"].text, "dmrs");
    EXPECT_EQ(linkages[1]["kind"].text, "dmrs");
    EXPECT_EQ(linkages[2]["kind"].text, "odbc");
    EXPECT_EQ(linkages[2]["raw"].items.size(), 8u);
    EXPECT_EQ(linkages[2]["raw"][0].number, 0x1007);
    EXPECT_TRUE(models[1]["elementList"][0]["dmrs"].IsNull());
    EXPECT_FALSE(models[1]["elementList"][0]["complex"].boolean);
    EXPECT_TRUE(models[1]["elementList"][1]["complex"].boolean);
    EXPECT_FALSE(ModelsJson(state, false)[0].Has("elementList"));

    std::string summary;
    ReportStream stream(summary);
    AppendModelsSummary(stream, state);
    EXPECT_EQ(summary, "model pipes.dgn: 3D, master unit \"m\", subunit \"mm\", 80000 UORs per "
                       "master unit, 1 elements\n"
                       "model steel.dgn: 2D, master unit \"ft\", subunit \"in\", 96000 UORs per "
                       "master unit, 2 elements\n");
}

// pdsreview's --uors-per-master: a model without a file or elements, with the factor given.
TEST(ModelStep, AModelMadeInMemoryCarriesItsFactor) {
    ZtOpState state;
    auto* model = new ZtDgnModel(L"", state.EditNameDict());
    model->SetUorsPerMaster(2.5);
    state.GetRootNode()->AddChild(model);
    EXPECT_EQ(DgnScenePropsFactor(*model), 2.5);
    const ZtTestJson models = ModelsJson(state, true);
    ASSERT_EQ(models.items.size(), 1u);
    EXPECT_EQ(models[0]["uorsPerMaster"].number, 2.5);
    EXPECT_EQ(models[0]["elements"].number, 0);
    EXPECT_TRUE(models[0]["elementList"].items.empty());
}

TEST(ModelStep, AFileThatIsNoModelFailsWithItsReason) {
    DgnTestFolder folder;
    const std::wstring path = folder.Write("notes.dgn", {'h', 'e', 'l', 'l', 'o', '\n'});
    ZtOpState state;
    std::string error;
    EXPECT_EQ(RunModelStep(state, path, &error), 2);
    EXPECT_NE(error.find("notes.dgn as a model: not a DGN V7 design file"), std::string::npos)
        << error;
    EXPECT_EQ(state.GetRootNode()->GetNumChildren(), 0);
    EXPECT_TRUE(ModelsJson(state, true).items.empty());
}

TEST(ModelStep, WarningsAreReported) {
    DgnTestFolder folder;
    ZtTestDgnWriter writer(2, {});
    writer.Line({}, {0, 0, 0}, {1, 1, 0});
    std::vector<std::uint8_t> bytes = writer.Bytes();
    bytes.push_back(7);
    ZtOpState state;
    std::string error;
    ASSERT_EQ(RunModelStep(state, folder.Write("cut.dgn", bytes), &error), 0) << error;
    const ZtTestJson models = ModelsJson(state, false);
    ASSERT_EQ(models[0]["warnings"].items.size(), 1u);
    std::string summary;
    ReportStream stream(summary);
    AppendModelsSummary(stream, state);
    EXPECT_NE(summary.find("\n  warning: the file is cut short"), std::string::npos) << summary;
}

} // namespace
