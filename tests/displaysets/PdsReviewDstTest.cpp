// `pdsreview import-dst` as a user runs it, with the built plug-in library.
#include "DisplaySetFilesTestSupport.h"
#include "support/RunProgram.h"
#include "support/ZtTestJson.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

const std::string kProgram = ZT_BIN_DIR "/pdsreview";
const std::string kFixtures = ZT_TEST_DIR "/fixtures/";

ProgramRun RunJson(std::vector<std::string> args, ZtTestJson* json) {
    args.insert(args.begin(), {"--json", "--quiet"});
    ProgramRun run = RunProgram(kProgram, args);
    std::string error;
    if (json && run.exitStatus != 2) {
        EXPECT_TRUE(ZtTestParseJson(run.out, json, &error)) << error << "\n" << run.out;
    }
    return run;
}

// The conditions of a selection set in JSON as "category|property|op|flags|value", with
// the internal name of the category and both names of the property ("-" for none).
std::vector<std::string> Conditions(const ZtTestJson& set) {
    std::vector<std::string> out;
    for (const ZtTestJson& c : set["findSpec"]["conditions"].items)
        out.push_back((c["category"].IsNull() ? "-" : c["category"]["internal"].text) + "|" +
                      c["property"]["internal"].text + "/" + c["property"]["display"].text + "|" +
                      std::to_string(int(c["op"].number)) + "|" +
                      std::to_string(int(c["flags"].number)) + "|" + c["value"].text);
    return out;
}

TEST(PdsReviewImportDst, StatusOfTheImportIsTheExitStatus) {
    struct Case {
        std::string file;
        int status;
    };
    const Case cases[] = {
        {kFixtures + "sample.dst", 0},
        {kFixtures + "no-definitions.dst", 0},
        {kFixtures + "missing.dst", 1},
    };
    for (const Case& c : cases) {
        ZtTestJson json;
        const ProgramRun run = RunJson({"import-dst", c.file}, &json);
        EXPECT_EQ(run.exitStatus, c.status) << c.file << "\n" << run.err;
        EXPECT_EQ(json["steps"][0]["step"].text, "import-dst");
        EXPECT_EQ(json["steps"][0]["status"].number, c.status);
    }
    // The run stops at the failing step.
    ZtTestJson json;
    const ProgramRun run = RunJson(
        {"import-dst", kFixtures + "missing.dst", "import-dst", kFixtures + "sample.dst"}, &json);
    EXPECT_EQ(run.exitStatus, 1);
    EXPECT_EQ(json["steps"].items.size(), 1u);
    EXPECT_EQ(json["document"]["selectionSets"].items.size(), 0u);
}

TEST(PdsReviewImportDst, SelectionSetsOfTheSampleFile) {
    ZtTestJson json;
    const ProgramRun run =
        RunJson({"import-dst", kFixtures + "sample.dst", "import-dst",
                 kFixtures + "no-definitions.dst", "import-dst", kFixtures + "sample.dst"},
                &json);
    ASSERT_EQ(run.exitStatus, 0) << run.err;
    const ZtTestJson& sets = json["document"]["selectionSets"];
    ASSERT_EQ(sets.items.size(), 4u);
    const ZtTestJson& main = sets[0];
    EXPECT_EQ(main["kind"].text, "selectionSet");
    EXPECT_EQ(main["name"].text, "Main pipes");
    EXPECT_EQ(main["guid"].text.size(), 36u);
    EXPECT_NE(main["guid"].text, sets[2]["guid"].text);
    EXPECT_EQ(sets[3]["name"].text, "Other pipes");
    ASSERT_EQ(main["comments"].items.size(), 1u);
    EXPECT_EQ(main["comments"][0]["id"].number, 0);
    EXPECT_EQ(main["comments"][0]["body"].text, "North rack\n\rSecond bay");
    EXPECT_TRUE(sets[1]["comments"].items.empty());
    EXPECT_TRUE(main["findSpec"]["selectAll"].boolean);
    EXPECT_EQ(Conditions(main), (std::vector<std::string>{"-|ZtStdLevel/Level|6|5|Level 7",
                                                          "-|ZtStdColour/Colour|6|5|Colour 2",
                                                          "-|ZtStdLevel/Level|6|69|Level 3",
                                                          "-|ZtStdColour/Colour|6|5|Colour 2"}));
    EXPECT_EQ(sets[1]["findSpec"]["conditions"].items.size(), 8u);

    // The same file in CR LF lines, with a data criterion.
    ZtTestJson crlf;
    ASSERT_EQ(RunJson({"import-dst", kFixtures + "crlf.dst"}, &crlf).exitStatus, 0);
    EXPECT_EQ(Conditions(crlf["document"]["selectionSets"][0]).at(1),
              "ZtDgnPDSAttributes|ZtDgnPDSAttribute/line_id|13|41|L*");
}

TEST(PdsReviewImportDst, OutputIsDeterministicAndReadable) {
    const std::vector<std::string> args = {"import-dst", kFixtures + "sample.dst"};
    EXPECT_EQ(RunJson(args, nullptr).out, RunJson(args, nullptr).out);
    const ProgramRun text =
        RunProgram(kProgram, {"--quiet", "import-dst", kFixtures + "sample.dst"});
    ASSERT_EQ(text.exitStatus, 0) << text.err;
    EXPECT_NE(text.out.find("selectionSet \"Main pipes\""), std::string::npos) << text.out;
    EXPECT_NE(text.out.find("rule: Level = \"Level 7\" and Colour = \"Colour 2\""),
              std::string::npos)
        << text.out;
}

} // namespace
