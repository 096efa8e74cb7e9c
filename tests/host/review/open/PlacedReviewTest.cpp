// Reviews placed by their control files: tags are written in the placed scene, so that a
// tag picks on the placed models what the same tag, mapped back through the placement,
// picks on the models as their files have them.
#include "loader/ZtOdPdsDriLoaderPlugin.h"
#include "review/ModelLoad.h"
#include "review/OpenRoad.h"
#include "tags/ZtOdPdsTagExportPlugin.h"
#include "tags/ZtOdPdsTagImportPlugin.h"
#include "tools/ZtTestDgnWriter.h"
#include "tools/ZtTestFiles.h"
#include "ztlddgn/ZtDgnLoaderPlugin.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztplugin/ZtOpDB.h"
#include "ztplugin/ZtOpState.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

namespace {

// A tag as an exported file gives it: its group's file, its position and its `l` block.
struct Record {
    std::string file;
    std::string position; // "x y z" in UORs
    std::string linkage;  // empty without an `l` block
    bool operator==(const Record&) const = default;
};

std::vector<Record> Records(const std::string& text) {
    std::vector<Record> records;
    std::istringstream lines(text);
    std::string file;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("file{", 0) == 0)
            file = line.substr(line.find("n{") + 2, line.find('}') - line.find("n{") - 2);
        else if (line.rfind("tag{", 0) == 0)
            records.push_back({file, line.substr(line.find("0.000000 ") + 9), ""});
        else if (line.rfind("l{", 0) == 0 && !records.empty())
            records.back().linkage = line.substr(2, line.size() - 3);
    }
    return records;
}

// A tag at `at` seen from `eye`, in UORs, in a view of its own.
struct TagAt {
    int id;
    ZtTestDgnPoint at, eye;
};

std::string TagFile(const std::vector<TagAt>& tags) {
    auto point = [](const ZtTestDgnPoint& p) {
        return std::to_string(p.x) + " " + std::to_string(p.y) + " " + std::to_string(p.z);
    };
    std::string text;
    for (const TagAt& tag : tags)
        text += "target{" + point(tag.at) + "}\neye{" + point(tag.eye) + "}\ntag{" +
                std::to_string(tag.id) + " 1 0 0.000000 " + point(tag.at) + "\ntext{4\nnote}}\n";
    return text;
}

class PlacedReview : public ::testing::Test {
protected:
    ~PlacedReview() override {
        ZtOpDB::RemovePlugin(ZtOpDB::GetPluginByName(ZtDgnLoaderPlugin::kRegisteredName));
    }

    // A model of lines between the given points (in UORs), the n-th with DMRS occurrence n.
    void Model(const std::string& name, const ZtTestDgnUnits& units,
               const std::vector<std::pair<ZtTestDgnPoint, ZtTestDgnPoint>>& lines) const {
        ZtTestDgnWriter writer(3, units);
        std::uint32_t occurrence = 0;
        for (const auto& [a, b] : lines)
            writer.Line({.linkages = {ZtTestDmrsLinkage(12, ++occurrence)}}, a, b);
        writer.EndOfDesign();
        Text(name, "");
        ASSERT_TRUE(writer.Save(dir_.File(name)));
    }
    void Text(const std::string& name, const std::string& text) const {
        std::filesystem::create_directories(std::filesystem::path(dir_.File(name)).parent_path());
        ASSERT_TRUE(ZtTestWriteBytes(dir_.File(name), text));
    }

    // Opens the control file, whose tag files beside it come in, into a new document.
    ZtOpState& Open(const std::string& dri) {
        documents_.emplace_back(std::make_unique<ZtOpState>());
        ZtOdPdsDriLoaderPlugin loader;
        EXPECT_EQ(OpenControlFile(*documents_.back(), loader, dir_.WideFile(dri), {}, &opened_), 0);
        return *documents_.back();
    }
    // The records of the document's tags exported.
    std::vector<Record> Export(ZtOpState& state) {
        ZtOdPdsTagExportPlugin plugin;
        const ZtUWideString path(dir_.WideFile("out.tag").c_str());
        EXPECT_EQ(plugin.IExport(0, &state, nullptr, &path), 0);
        return Records(ZtTestReadBytes(dir_.File("out.tag")));
    }

    ZtTestTempDir dir_;
    std::vector<std::unique_ptr<ZtOpState>> documents_;
    std::unique_ptr<OpenedSceneSet> opened_;
};

// A quarter turn and a move of (5, -3, 0) m: (x, y) goes to (5 - y, x - 3). Each tag of
// the placed review, and the same tag mapped back onto the model as loaded, pick the
// line under them, and the placed export writes the tag where the placed file has it.
TEST_F(PlacedReview, TagsPickOnThePlacedModelWhatTheyPickUnplaced) {
    const ZtTestDgnUnits metres{10, 100, "m", "cm", {0, 0, 0}}; // 1000 UORs per metre
    Model("model.dgn", metres,
          {{{0, 0, 0}, {4000, 0, 0}},
           {{0, 2000, 0}, {0, 6000, 0}},
           {{3000, 3000, 2000}, {6000, 3000, 2000}}});
    auto place = [](const ZtTestDgnPoint& p) {
        return ZtTestDgnPoint{5000 - p.y, p.x - 3000, p.z};
    };
    // Each tag seen from above and aside, 1 m east, 3 m south and 6 m up in the model.
    std::vector<TagAt> unplaced;
    for (const ZtTestDgnPoint& at : {ZtTestDgnPoint{2000, 0, 0}, {0, 4000, 0}, {4500, 3000, 2000}})
        unplaced.push_back(
            {static_cast<int>(unplaced.size() + 1), at, {at.x + 1000, at.y - 3000, at.z + 6000}});
    std::vector<TagAt> placed;
    for (const TagAt& tag : unplaced)
        placed.push_back({tag.id, place(tag.at), place(tag.eye)});
    Text("review/model.dgn", ZtTestReadBytes(dir_.File("model.dgn")));
    Text("review/review.dri", "DesignReview_Control{transform{0 -1 0 1 0 0 0 0 1} "
                              "new_origin{5000 -3000 0} dgn{name{model.dgn}}}");
    Text("review/review.tag", TagFile(placed));
    Text("unplaced.tag", TagFile(unplaced));

    const std::vector<Record> fromPlaced = Export(Open("review/review.dri"));
    ZtOpState unplacedDocument;
    std::string error;
    ASSERT_EQ(LoadModelIntoScene(unplacedDocument, dir_.WideFile("model.dgn"), &error), 0) << error;
    ZtOdPdsTagImportPlugin import;
    const ZtUWideString tags(dir_.WideFile("unplaced.tag").c_str());
    ASSERT_EQ(import.IExport(0, &unplacedDocument, nullptr, &tags), 0);
    const std::vector<Record> fromUnplaced = Export(unplacedDocument);

    ASSERT_EQ(fromPlaced.size(), 3u);
    ASSERT_EQ(fromUnplaced.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(fromPlaced[i].linkage, "0 12 " + std::to_string(i + 1) + " 0") << i;
        EXPECT_EQ(fromPlaced[i].linkage, fromUnplaced[i].linkage) << i;
        EXPECT_EQ(fromPlaced[i].file, "model.dgn") << i;
        const ZtTestDgnPoint at = placed[i].at;
        EXPECT_EQ(fromPlaced[i].position,
                  std::to_string(at.x) + " " + std::to_string(at.y) + " " + std::to_string(at.z));
    }
}

// The model in feet is scaled into the scene's metres; the tags count in the first
// model's UORs (millimetres). A tag on the feet model's line, 10 ft long, picks it at
// 1.524 m, and nothing at 4 m, where the line would reach unscaled.
TEST_F(PlacedReview, ATagOnAModelInFeetInASceneInMetres) {
    Model("metres.dgn", {10, 100, "m", "cm", {0, 0, 0}}, {{{0, 10000, 0}, {1000, 10000, 0}}});
    Model("feet.dgn", {12, 100, "ft", "in", {0, 0, 0}}, {{{0, 0, 0}, {12000, 0, 0}}});
    Text("review.dri", "DesignReview_Control{master_unit{m} dgn{name{metres.dgn}} master_unit{ft} "
                       "dgn{name{feet.dgn}} master_unit{m}}");
    Text("review.tag",
         TagFile({{1, {1524, 0, 0}, {2524, -3000, 6000}}, {2, {4000, 0, 0}, {5000, -3000, 6000}}}));
    EXPECT_EQ(Export(Open("review.dri")),
              (std::vector<Record>{{"", "4000 0 0", ""}, {"feet.dgn", "1524 0 0", "0 12 1 0"}}));
}

// Two references that place one file alike share its model, placed once; a third, in
// feet, places it elsewhere and gets a model of its own. A tag on each placement picks
// the file's line.
TEST_F(PlacedReview, AModelPlacedTwiceByTwoReferences) {
    Model("a.dgn", {10, 1000, "m", "mm", {0, 0, 0}}, {{{0, 10000, 0}, {40000, 10000, 0}}});
    Text("review.dri", "DesignReview_Control{new_origin{10000 0 0} dgn{name{a.dgn}} "
                       "dgn{name{a.dgn}} master_unit{ft} dgn{name{a.dgn}} master_unit{m}}");
    // In metres the line runs from (1, 1) to (5, 1); in feet from (0.3048, 0.3048) to
    // (1.524, 0.3048) m. The tags count in 10000 UORs a metre.
    Text("review.tag", TagFile({{1, {30000, 10000, 0}, {40000, -20000, 60000}},
                                {2, {9144, 3048, 0}, {19144, -26952, 60000}}}));
    ZtOpState& state = Open("review.dri");
    ASSERT_EQ(state.GetRootNode()->GetNumChildren(), 2);
    EXPECT_EQ(opened_->refs[0].model, opened_->refs[1].model);
    EXPECT_NE(opened_->refs[0].model, opened_->refs[2].model);
    EXPECT_EQ(opened_->refs[0].model->GetTransform(),
              ZtLAffine3f(ZtLMatrix3f(), ZtLVec3f(1, 0, 0)));
    EXPECT_EQ(opened_->refs[2].model->GetTransform(),
              opened_->set.GetSceneRefs()[2]->GetPlacement(ZtOaUnit::kMetres));
    EXPECT_EQ(Export(state), (std::vector<Record>{{"a.dgn", "30000 10000 0", "0 12 1 0"},
                                                  {"a.dgn", "9144 3048 0", "0 12 1 0"}}));
}

// The sample review is written in its scene: its export gives back every `l` block.
TEST_F(PlacedReview, TheSampleReviewExportsTheElementsItsTagsName) {
    std::vector<std::string> written;
    for (const Record& record : Records(ZtTestReadBytes(ZT_SOURCE_DIR "/examples/plant/plant.tag")))
        written.push_back(record.linkage);
    ZtOpState state;
    ZtOdPdsDriLoaderPlugin loader;
    ASSERT_EQ(OpenControlFile(state, loader, ZtTestWide(ZT_SOURCE_DIR "/examples/plant/plant.dri"),
                              {}, &opened_),
              0);
    std::vector<std::string> exported;
    for (const Record& record : Export(state))
        exported.push_back(record.linkage);
    EXPECT_EQ(written.size(), 6u);
    EXPECT_EQ(exported, written);
}

} // namespace
