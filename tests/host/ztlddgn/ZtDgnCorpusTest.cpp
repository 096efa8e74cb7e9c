// The shared corpus: files written by an independent implementation, with its readings.
// Each file must load, and `pdsreview --json --elements model` must agree with those
// readings on the units and on every element.
#include "app/JsonWriter.h"
#include "app/ModelStep.h"
#include "support/ZtTestJson.h"
#include "ztobject/ZtOaTraversal.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUSysString.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>

namespace {

const std::string kCorpus = std::string(ZT_SHARED_DIR) + "/data/dgn";

class ZtDgnCorpus : public ::testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        if (!std::filesystem::exists(kCorpus))
            GTEST_SKIP() << "the shared corpus " << kCorpus << " is absent";
    }
};

// The independent reading's DMRS words: the first four-word linkage without the user-data
// bit whose words are not all zero.
std::vector<double> ExpectedDmrs(const ZtTestJson& ulinks) {
    for (const ZtTestJson& link : ulinks.items) {
        std::vector<double> words;
        std::istringstream in(link.text);
        for (std::string word; in >> word;)
            words.push_back(static_cast<double>(std::strtoul(word.c_str(), nullptr, 16)));
        if (words.size() == 4 && !(static_cast<unsigned>(words[0]) & 0x1000) &&
            (words[0] || words[1] || words[2] || words[3]))
            return words;
    }
    return {};
}

std::vector<double> Numbers(const ZtTestJson& array) {
    std::vector<double> out;
    for (const ZtTestJson& item : array.items) {
        if (item.kind == ZtTestJson::kArray)
            for (const ZtTestJson& inner : item.items)
                out.push_back(inner.number);
        else
            out.push_back(item.number);
    }
    return out;
}

TEST_P(ZtDgnCorpus, AgreesWithTheIndependentReadings) {
    const std::string name = GetParam();
    ZtTestJson tcb, expected, report;
    std::string error;
    ASSERT_TRUE(ZtTestReadJsonFile(kCorpus + "/" + name + ".tcb.json", &tcb, &error)) << error;
    ASSERT_TRUE(ZtTestReadJsonFile(kCorpus + "/" + name + ".expected.json", &expected, &error))
        << error;

    ZtOpState state;
    ASSERT_EQ(RunModelStep(state, ZtUSysString::Utf8ToWide(kCorpus + "/" + name + ".dgn"), &error),
              0)
        << error;
    std::string text;
    JsonWriter json(text);
    WriteModelsJson(json, state, true);
    ASSERT_TRUE(ZtTestParseJson(text, &report, &error)) << error;
    ASSERT_EQ(report.items.size(), 1u);
    const ZtTestJson& model = report[0];

    EXPECT_EQ(model["file"].text, name + ".dgn");
    EXPECT_EQ(model["uorsPerMaster"].number, tcb["derived"]["uor_per_master"].number);
    EXPECT_EQ(model["dimension"].number, tcb["tcb"]["dimension"].number);
    EXPECT_EQ(model["subunitsPerMaster"].number, tcb["tcb"]["subunits_per_master_1112"].number);
    EXPECT_EQ(model["uorsPerSubunit"].number, tcb["tcb"]["uor_per_subunit_1116"].number);
    EXPECT_EQ(model["masterUnit"].text, tcb["tcb"]["master_unit_name_1120"].text);
    EXPECT_EQ(model["subUnit"].text, tcb["tcb"]["sub_unit_name_1122"].text);
    EXPECT_EQ(Numbers(model["globalOrigin"]), Numbers(tcb["tcb"]["global_origin_uor_1240"]));
    EXPECT_EQ(model["warnings"].items.size(), 0u);
    EXPECT_EQ(model["fileElements"].number, static_cast<double>(tcb["elements"].items.size()));

    std::map<int, const ZtTestJson*> ours;
    for (const ZtTestJson& e : model["elementList"].items)
        ours[static_cast<int>(e["index"].number)] = &e;
    EXPECT_EQ(model["elements"].number, static_cast<double>(ours.size()));

    // Every element that is drawn and not deleted, and nothing else: index, type, level,
    // range, offset.
    const std::set<int> notDrawn = {8, 9, 10, 66};
    std::set<int> wanted;
    for (const ZtTestJson& row : tcb["elements"].items) {
        const int index = static_cast<int>(row[0].number);
        const int type = static_cast<int>(row[2].number);
        if (notDrawn.count(type) || row[5].number != 0)
            continue;
        wanted.insert(index);
        ASSERT_TRUE(ours.count(index)) << name << " element " << index;
        const ZtTestJson& e = *ours[index];
        EXPECT_EQ(e["offset"].number, row[1].number) << index;
        EXPECT_EQ(e["type"].number, type) << index;
        EXPECT_EQ(e["level"].number, row[3].number) << index;
        EXPECT_EQ(e["complex"].boolean, row[4].number != 0) << index;
        EXPECT_EQ(Numbers(e["range"]), Numbers(row[7])) << index;
        std::vector<double> box = Numbers(row[7]);
        for (double& v : box)
            v /= tcb["derived"]["uor_per_master"].number;
        EXPECT_EQ(Numbers(e["box"]), box) << index;
    }
    EXPECT_EQ(wanted.size(), ours.size());

    // Symbology and DMRS words of every feature of the independent reading.
    const ZtTestJson& columns = expected["feature_columns"];
    std::map<std::string, std::size_t> column;
    for (std::size_t i = 0; i < columns.items.size(); ++i)
        column[columns[i].text] = i;
    ASSERT_FALSE(expected["features"].items.empty());
    for (const ZtTestJson& feature : expected["features"].items) {
        const int fid = static_cast<int>(feature[column["fid"]].number);
        ASSERT_TRUE(ours.count(fid)) << name << " feature " << fid;
        const ZtTestJson& e = *ours[fid];
        EXPECT_EQ(e["colour"].number, feature[column["color"]].number) << fid;
        EXPECT_EQ(e["weight"].number, feature[column["weight"]].number) << fid;
        EXPECT_EQ(e["style"].number, feature[column["style"]].number) << fid;
        EXPECT_EQ(e["graphicGroup"].number, feature[column["graphic_group"]].number) << fid;
        const std::vector<double> dmrs = ExpectedDmrs(feature[column["ulink"]]);
        EXPECT_EQ(e["dmrs"].IsNull(), dmrs.empty()) << fid;
        EXPECT_EQ(Numbers(e["dmrs"]), dmrs) << fid;
    }
}

// complex2d's cells state a total length 16 words short of their last component, and
// its complex chain and shape headers carry the complex bit themselves.
TEST_F(ZtDgnCorpus, GroupsOfComplex2dHoldTheirComponents) {
    ZtOpState state;
    std::string error;
    ASSERT_EQ(RunModelStep(state, ZtUSysString::Utf8ToWide(kCorpus + "/complex2d.dgn"), &error), 0)
        << error;
    // Each node's index under its parent's; the model's own children are the top.
    struct Collect : ZtOaTraversal {
        std::vector<std::int64_t> top;
        std::map<std::int64_t, std::vector<std::int64_t>> groups;
        Result VisitNode(const ZtOaPathLink& link) override {
            const ZtOaPathLink* parent = link.GetParent();
            const std::int64_t index = link.GetNode()->GetElementIndex();
            if (parent && !parent->GetParent())
                top.push_back(index);
            else if (parent)
                groups[parent->GetNode()->GetElementIndex()].push_back(index);
            return kContinue;
        }
    } walk;
    state.GetRootNode()->GetChild(0)->ApplyTraversal(&walk);
    EXPECT_EQ(walk.top,
              (std::vector<std::int64_t>{3, 4, 7, 11, 14, 17, 23, 24, 25, 26, 27, 28, 29}));
    const std::map<std::int64_t, std::vector<std::int64_t>> expected = {
        {4, {5, 6}},    {7, {8, 9, 10}},    {11, {12, 13}},
        {14, {15, 16}}, {17, {18, 21, 22}}, {18, {19, 20}},
    };
    EXPECT_EQ(walk.groups, expected);
}

INSTANTIATE_TEST_SUITE_P(Files, ZtDgnCorpus,
                         ::testing::Values("basic2d", "levels2d", "complex2d", "pipes3d",
                                           "extent3d", "dmrs3d"));

} // namespace
