#include "support/DgnTestModels.h"

namespace {

std::vector<std::uint8_t> ValidFile() {
    ZtTestDgnWriter writer(3, {});
    writer.Line({}, {0, 0, 0}, {1, 1, 1});
    writer.EndOfDesign();
    return writer.Bytes();
}

std::vector<std::uint8_t> Bytes(const std::string& text) {
    return {text.begin(), text.end()};
}

TEST(ZtDgnMalformed, FilesThatGiveNoModelSayWhy) {
    std::vector<std::uint8_t> shortBlock = ValidFile();
    ZtTestPutWord(shortBlock, 2, 48); // a 100-byte control block, then garbage
    std::vector<std::uint8_t> cutBlock = ValidFile();
    cutBlock.resize(500);
    std::vector<std::uint8_t> noSubunits = ValidFile();
    ZtTestPutInt32(noSubunits, 1112, 0);
    std::vector<std::uint8_t> noUors = ValidFile();
    ZtTestPutInt32(noUors, 1116, 0);
    std::vector<std::uint8_t> deletedBlock = ValidFile();
    deletedBlock[1] |= 0x80;
    std::vector<std::uint8_t> endFirst = {0xFF, 0xFF, 0, 0};

    struct Case {
        const char* what;
        std::vector<std::uint8_t> bytes;
        const char* reason;
    };
    const Case cases[] = {
        {"empty", {}, "the file is empty"},
        {"three bytes", {8, 9, 0xFE}, "too short to be a design file (3 bytes)"},
        {"text", Bytes("hello, this is not a design file\n"), "not a DGN V7 design file"},
        {"cell library", {0x08, 0x05, 0x17, 0x00, 0, 0, 0, 0}, "a cell library"},
        {"end word first", endFirst, "not a DGN V7 design file"},
        {"deleted control block", deletedBlock, "not a DGN V7 design file"},
        {"short control block", shortBlock, "the control block is 100 bytes long"},
        {"cut control block", cutBlock, "the control block is cut short: the element at byte 0"},
        {"no subunits", noSubunits, "0 UORs per master unit (0 subunits per master unit x 1"},
        {"no UORs", noUors, "0 UORs per master unit (1000 subunits per master unit x 0"},
    };
    for (const Case& c : cases) {
        DgnTestFolder folder;
        std::string reason;
        EXPECT_FALSE(folder.Load(c.bytes, &reason)) << c.what;
        EXPECT_NE(reason.find(c.reason), std::string::npos) << c.what << ": " << reason;
        // A probe of the control block alone says the same.
        std::string probed;
        EXPECT_FALSE(ZtDgnProbeModel(folder.Write("model.dgn", c.bytes).c_str(), &probed));
        EXPECT_EQ(probed, reason) << c.what;
    }
    DgnTestFolder folder;
    std::string none;
    EXPECT_TRUE(ZtDgnProbeModel(folder.Write("model.dgn", ValidFile()).c_str(), &none));
    EXPECT_EQ(none, "");
}

TEST(ZtDgnMalformed, PathsThatCannotBeRead) {
    std::string reason;
    EXPECT_FALSE(ZtDgnReadModel(L"/nonexistent/x.dgn", nullptr, true, nullptr, &reason));
    EXPECT_NE(reason.find("cannot open the file"), std::string::npos) << reason;
    EXPECT_FALSE(ZtDgnReadModel(L"/tmp", nullptr, true, nullptr, &reason));
    EXPECT_EQ(reason, "not a regular file");
}

TEST(ZtDgnMalformed, ACutFileLoadsWhatComesBeforeTheCut) {
    ZtTestDgnWriter writer(2, {});
    writer.Line({}, {0, 0, 0}, {1, 1, 0});
    const std::uint32_t second = writer.Line({}, {0, 0, 0}, {2, 2, 0});
    const std::vector<std::uint8_t> whole = writer.Bytes();
    const std::size_t cut = writer.Offset(second);
    struct Case {
        std::size_t size;
        std::size_t elements;
        const char* warning;
    };
    const Case cases[] = {
        {cut + 1, 1, "the file ends inside the element header at byte "},
        {cut + 3, 1, "the file ends inside the element header at byte "},
        {cut + 10, 1, "bytes long but only 10 bytes remain in the file"},
        {whole.size() - 1, 1, "bytes remain in the file"},
        {whole.size(), 2, nullptr},
    };
    for (const Case& c : cases) {
        DgnTestFolder folder;
        auto model =
            folder.Load({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(c.size)});
        ASSERT_TRUE(model) << c.size;
        EXPECT_EQ(model->GetNumElements(), c.elements) << c.size;
        if (!c.warning) {
            EXPECT_TRUE(model->GetWarnings().empty());
            continue;
        }
        ASSERT_EQ(model->GetWarnings().size(), 1u) << c.size;
        EXPECT_NE(model->GetWarnings()[0].find(c.warning), std::string::npos)
            << model->GetWarnings()[0];
        EXPECT_NE(model->GetWarnings()[0].find("the elements before it are loaded"),
                  std::string::npos);
    }
}

TEST(ZtDgnMalformed, LinkagesThatOverrunTheirElementAreCutThere) {
    ZtTestDgnWriter writer(3, {});
    writer.Line({.linkages = {ZtTestDmrsLinkage(5, 6), {0x10FF, 0x5E62, 1, 2}}}, {0, 0, 0},
                {1, 1, 1});
    const std::uint32_t outside =
        writer.Line({.linkages = {ZtTestDmrsLinkage(7, 8)}}, {0, 0, 0}, {1, 1, 1});
    writer.Line({.linkages = {ZtTestDmrsLinkage(9, 10), {0, 0}}}, {0, 0, 0}, {1, 1, 1});
    std::vector<std::uint8_t> bytes = writer.Bytes();
    ZtTestPutWord(bytes, writer.Offset(outside) + 30, 500); // attribute index past the end
    DgnTestFolder folder;
    auto model = folder.Load(bytes);
    ASSERT_TRUE(model);
    ASSERT_EQ(model->GetNumElements(), 3u);
    EXPECT_EQ(model->GetElement(0).linkageWords, 4u);
    EXPECT_EQ(model->GetDmrs(0), 0x0000000500060000u);
    EXPECT_EQ(model->GetElement(1).linkageWords, 0u);
    EXPECT_EQ(model->GetDmrs(1), 0u);
    // Zero words behind the last linkage are padding, not a fault.
    EXPECT_EQ(model->GetElement(2).linkageWords, 4u);
    ASSERT_EQ(model->GetWarnings().size(), 1u);
    EXPECT_EQ(model->GetWarnings()[0],
              "2 elements have linkages that run past the element's end; they are read up to "
              "there");
}

TEST(ZtDgnMalformed, ElementsTooShortForTheirHeaderArePassedOver) {
    ZtTestDgnWriter writer(2, {});
    writer.Raw({0x01, 0x03, 0x05, 0x00, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}); // a 14-byte line
    writer.Line({}, {0, 0, 0}, {1, 1, 0});
    // A cell too short to state its total length is taken as a leaf.
    std::vector<std::uint8_t> cell(36, 0);
    cell[0] = 1, cell[1] = 2;
    ZtTestPutWord(cell, 2, 16);
    const std::uint32_t cellIndex = writer.Raw(cell);
    writer.Line({}, {0, 0, 0}, {1, 1, 0});
    DgnTestFolder folder;
    auto model = folder.Load(writer.Bytes());
    ASSERT_TRUE(model);
    ASSERT_EQ(model->GetNumChildren(), 3);
    EXPECT_EQ(model->GetChild(1)->GetElementIndex(), cellIndex);
    EXPECT_FALSE(model->GetChild(1)->IsGroup());
    ASSERT_EQ(model->GetWarnings().size(), 1u);
    EXPECT_EQ(model->GetWarnings()[0],
              "1 element is too short for an element header and passed over");
}

TEST(ZtDgnMalformed, AGroupLongerThanTheFileTakesTheRest) {
    ZtTestDgnWriter writer(3, {});
    const std::uint32_t header = writer.BeginComplex(12, {});
    writer.LineString({}, {{0, 0, 0}, {1, 1, 1}});
    writer.EndGroup();
    writer.Line({}, {0, 0, 0}, {1, 1, 1});
    std::vector<std::uint8_t> bytes = writer.Bytes();
    ZtTestPutWord(bytes, writer.Offset(header) + 36, 0xFFFF);
    DgnTestFolder folder;
    auto model = folder.Load(bytes);
    ASSERT_TRUE(model);
    ASSERT_EQ(model->GetNumChildren(), 1);
    EXPECT_EQ(static_cast<const ZtOaGroup*>(model->GetChild(0))->GetNumChildren(), 2);
}

// A hole in the file (a sparse one may hold terabytes of zeros) ends the read at once.
TEST(ZtDgnMalformed, ZerosWhereAnElementShouldBeginEndTheRead) {
    ZtTestDgnWriter writer(3, {});
    writer.Line({}, {0, 0, 0}, {1, 1, 1});
    std::vector<std::uint8_t> bytes = writer.Bytes();
    const std::size_t hole = bytes.size();
    bytes.resize(hole + 1000, 0);
    DgnTestFolder folder;
    auto model = folder.Load(bytes);
    ASSERT_TRUE(model);
    EXPECT_EQ(model->GetNumElements(), 1u);
    ASSERT_EQ(model->GetWarnings().size(), 1u);
    EXPECT_EQ(model->GetWarnings()[0],
              "the file holds zero bytes where an element should begin, at byte " +
                  std::to_string(hole) + "; the 1000 bytes from there on are not read");
}

} // namespace
