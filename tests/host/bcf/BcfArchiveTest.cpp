#include "bcf/BcfGuid.h"
#include "bcf/BcfRead.h"
#include "bcf/BcfWrite.h"
#include "bcf/BcfZip.h"
#include "tools/ZtTestFiles.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>

namespace {

BcfTopic FullTopic() {
    BcfTopic topic;
    topic.guid = BcfNamedGuid("topic");
    topic.title = "Valve <V-1> & \"flange\"";
    topic.index = 0;
    topic.description = "Line one\nLine two";
    topic.date = "2023-11-14T22:13:20Z";
    topic.author = "reviewer";
    BcfViewpoint perspective;
    perspective.guid = BcfNamedGuid("viewpoint");
    BcfCamera camera;
    camera.position = {1.25, -2.5, 1e-7};
    camera.direction = {0.1, 0.2, -0.9746794344808963};
    camera.fieldOfView = 33.5;
    camera.aspect = 1.5;
    perspective.camera = camera;
    perspective.lines.push_back({{1, 2, 3}, {4, 5, 6}});
    perspective.clipPlanes.push_back({{0, 0, 2}, {0, 0, 1}});
    perspective.selection.push_back({{}, "pipes.dgn", "0 13 301 0"});
    perspective.snapshot = std::string("\x89PNG\r\n", 6);
    BcfViewpoint orthogonal;
    orthogonal.guid = BcfNamedGuid("second viewpoint");
    camera.perspective = false;
    camera.viewToWorldScale = 12.5;
    orthogonal.camera = camera;
    topic.viewpoints = {perspective, orthogonal};
    topic.comments.push_back(
        {BcfNamedGuid("comment"), topic.date, "reviewer", "Looks {odd}", perspective.guid});
    return topic;
}

TEST(BcfGuidTest, IsTheSameForTheSameNameAndHasTheFormatsShape) {
    const std::regex shape("[a-f0-9]{8}-[a-f0-9]{4}-8[a-f0-9]{3}-[89ab][a-f0-9]{3}-[a-f0-9]{12}");
    for (const char* name : {"", "a", "b", "ztodpds tag 101 in Tag View 101"}) {
        EXPECT_EQ(BcfNamedGuid(name), BcfNamedGuid(name));
        EXPECT_TRUE(std::regex_match(BcfNamedGuid(name), shape)) << BcfNamedGuid(name);
    }
    EXPECT_NE(BcfNamedGuid("tag 1"), BcfNamedGuid("tag 2"));
    EXPECT_NE(BcfNamedGuid("ab"), BcfNamedGuid("ba"));
}

// What is written reads back as it was, numbers to the last bit, in both versions.
TEST(BcfArchiveTest, ReadsBackWhatItWrote) {
    for (const BcfVersion version : {BcfVersion::k21, BcfVersion::k30}) {
        ZtTestTempDir dir;
        BcfArchive archive;
        archive.version = version;
        archive.topics = {FullTopic()};
        std::string error;
        ASSERT_TRUE(WriteBcfArchive(archive, dir.File("a.bcfzip"), 1700000000, &error)) << error;
        BcfArchive back;
        std::vector<std::string> problems;
        ASSERT_TRUE(ReadBcfArchive(dir.File("a.bcfzip"), &back, &problems, &error)) << error;
        EXPECT_TRUE(problems.empty());
        EXPECT_EQ(back.version, version);
        ASSERT_EQ(back.topics.size(), 1u);
        const BcfTopic& want = archive.topics[0];
        const BcfTopic& got = back.topics[0];
        EXPECT_EQ(got.guid, want.guid);
        EXPECT_EQ(got.title, want.title);
        EXPECT_EQ(got.description, want.description);
        EXPECT_EQ(got.author, want.author);
        ASSERT_EQ(got.comments.size(), 1u);
        EXPECT_EQ(got.comments[0].text, "Looks {odd}");
        EXPECT_EQ(got.comments[0].viewpointGuid, want.viewpoints[0].guid);
        ASSERT_EQ(got.viewpoints.size(), 2u);
        const BcfViewpoint& viewpoint = got.viewpoints[0];
        ASSERT_TRUE(viewpoint.camera);
        EXPECT_EQ(viewpoint.camera->position, want.viewpoints[0].camera->position);
        EXPECT_EQ(viewpoint.camera->direction, want.viewpoints[0].camera->direction);
        EXPECT_EQ(viewpoint.camera->fieldOfView, 33.5);
        EXPECT_EQ(viewpoint.camera->aspect.has_value(), version == BcfVersion::k30);
        ASSERT_EQ(viewpoint.lines.size(), 1u);
        EXPECT_EQ(viewpoint.lines[0].end, (BcfVector{4, 5, 6}));
        ASSERT_EQ(viewpoint.clipPlanes.size(), 1u);
        EXPECT_EQ(viewpoint.clipPlanes[0].direction, (BcfVector{0, 0, 1}));
        ASSERT_EQ(viewpoint.selection.size(), 1u);
        EXPECT_EQ(viewpoint.selection[0].authoringToolId, "0 13 301 0");
        EXPECT_EQ(viewpoint.selection[0].originatingSystem, "pipes.dgn");
        ASSERT_TRUE(got.viewpoints[1].camera);
        EXPECT_FALSE(got.viewpoints[1].camera->perspective);
        EXPECT_EQ(got.viewpoints[1].camera->viewToWorldScale, 12.5);
    }
}

TEST(BcfArchiveTest, TheSameTopicsAtTheSameTimeAreTheSameBytes) {
    ZtTestTempDir dir;
    BcfArchive archive;
    archive.topics = {FullTopic()};
    std::string error;
    ASSERT_TRUE(WriteBcfArchive(archive, dir.File("a"), 1700000000, &error));
    ASSERT_TRUE(WriteBcfArchive(archive, dir.File("b"), 1700000000, &error));
    EXPECT_EQ(ZtTestReadBytes(dir.File("a")), ZtTestReadBytes(dir.File("b")));
}

TEST(BcfArchiveTest, AFailedWriteSaysWhyAndLeavesNoFile) {
    ZtTestTempDir dir;
    BcfArchive archive;
    archive.topics = {FullTopic()};
    std::string error;
    EXPECT_FALSE(WriteBcfArchive(archive, dir.File("missing/a.bcfzip"), 0, &error));
    EXPECT_FALSE(error.empty());
    EXPECT_FALSE(std::filesystem::exists(dir.File("missing")));
}

// An archive of the given entries.
std::string Zip(const ZtTestTempDir& dir,
                const std::vector<std::pair<std::string, std::string>>& entries) {
    const std::string path = dir.File("case.bcfzip");
    BcfZipWriter zip(path, 0);
    for (const auto& [name, bytes] : entries)
        EXPECT_TRUE(zip.Add(name, bytes));
    EXPECT_TRUE(zip.Close());
    return path;
}

constexpr const char* kVersion = "<Version VersionId=\"2.1\"/>";
constexpr const char* kMarkup = "<Markup><Topic Guid=\"g\"><Title>T</Title></Topic>"
                                "<Viewpoints Guid=\"v\"><Viewpoint>v.bcfv</Viewpoint></Viewpoints>"
                                "</Markup>";

// Bad input costs a problem or the topic, never the read.
TEST(BcfArchiveTest, ReadsWhatItCanOfBadArchives) {
    const std::string laughs = "<?xml version=\"1.0\"?><!DOCTYPE l [<!ENTITY a \"aaaaaaaaaa\">"
                               "<!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\"><!ENTITY c "
                               "\"&b;&b;&b;&b;&b;&b;&b;&b;&b;&b;\">"
                               "<!ENTITY d \"&c;&c;&c;&c;&c;&c;&c;&c;&c;&c;\"><!ENTITY e "
                               "\"&d;&d;&d;&d;&d;&d;&d;&d;&d;&d;\">"
                               "<!ENTITY f \"&e;&e;&e;&e;&e;&e;&e;&e;&e;&e;\"><!ENTITY g "
                               "\"&f;&f;&f;&f;&f;&f;&f;&f;&f;&f;\">]>"
                               "<Markup><Topic Guid=\"g\"><Title>&g;</Title></Topic></Markup>";
    // A good topic, but unpacking to thousands of times its packed size.
    const std::string bomb = std::string(kMarkup).insert(8, std::size_t{3} << 20, ' ');
    const struct {
        const char* what;
        std::vector<std::pair<std::string, std::string>> entries;
        std::size_t topics, viewpoints, problems;
    } cases[] = {
        {"good",
         {{"bcf.version", kVersion},
          {"t/markup.bcf", kMarkup},
          {"t/v.bcfv", "<VisualizationInfo/>"}},
         1,
         1,
         0},
        {"markup not XML",
         {{"bcf.version", kVersion}, {"t/markup.bcf", "<Markup><Topic"}},
         0,
         0,
         1},
        {"markup of another root", {{"t/markup.bcf", "<Other><Topic/></Other>"}}, 0, 0, 1},
        {"viewpoint missing", {{"t/markup.bcf", kMarkup}}, 1, 1, 1},
        {"viewpoint not XML", {{"t/markup.bcf", kMarkup}, {"t/v.bcfv", "<<"}}, 1, 1, 1},
        {"entities that expand without end", {{"t/markup.bcf", laughs}}, 0, 0, 1},
        {"markup that unpacks far beyond the archive's size", {{"t/markup.bcf", bomb}}, 0, 0, 1},
        {"under the folder that was zipped",
         {{"review/bcf.version", kVersion},
          {"review/t/markup.bcf", kMarkup},
          {"review/t/v.bcfv", "<VisualizationInfo/>"}},
         1,
         1,
         0},
        {"folders parted by backslashes, a name in another case",
         {{"t\\markup.bcf", kMarkup}, {"t\\V.bcfv", "<VisualizationInfo/>"}},
         1,
         1,
         0},
        {"2.0's fixed viewpoint name",
         {{"t/markup.bcf", "<Markup><Topic Guid=\"g\"/></Markup>"},
          {"t/viewpoint.bcfv", "<VisualizationInfo/>"}},
         1,
         1,
         0},
    };
    for (const auto& c : cases) {
        ZtTestTempDir dir;
        const std::string path = Zip(dir, c.entries);
        BcfArchive archive;
        std::vector<std::string> problems;
        std::string error;
        ASSERT_TRUE(ReadBcfArchive(path, &archive, &problems, &error)) << c.what << ": " << error;
        EXPECT_EQ(archive.topics.size(), c.topics) << c.what;
        EXPECT_EQ(problems.size(), c.problems) << c.what;
        if (!archive.topics.empty()) {
            EXPECT_EQ(archive.topics[0].viewpoints.size(), c.viewpoints) << c.what;
        }
    }
}

TEST(BcfArchiveTest, RefusesWhatIsNoBcf) {
    ZtTestTempDir dir;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("text.bcfzip"), "no zip at all"));
    BcfArchive archive;
    std::vector<std::string> problems;
    std::string error;
    EXPECT_FALSE(ReadBcfArchive(dir.File("text.bcfzip"), &archive, &problems, &error));
    EXPECT_NE(error.find("no zip archive"), std::string::npos) << error;
    error.clear();
    EXPECT_FALSE(ReadBcfArchive(Zip(dir, {{"readme.txt", "hello"}}), &archive, &problems, &error));
    EXPECT_NE(error.find("without BCF topics"), std::string::npos) << error;
}

// A camera whose numbers are not all there or not finite is no camera.
TEST(BcfArchiveTest, LeavesOutCamerasWithoutTheirNumbers) {
    const char* cameras[] = {
        "<PerspectiveCamera><CameraViewPoint><X>1</X><Y>2</Y></CameraViewPoint>"
        "<CameraDirection><X>1</X><Y>0</Y><Z>0</Z></CameraDirection></PerspectiveCamera>",
        "<PerspectiveCamera><CameraViewPoint><X>1</X><Y>2</Y><Z>nan</Z></CameraViewPoint>"
        "<CameraDirection><X>1</X><Y>0</Y><Z>0</Z></CameraDirection></PerspectiveCamera>",
        "<OrthogonalCamera><CameraViewPoint><X>1</X><Y>2</Y><Z>1e999</Z></CameraViewPoint>"
        "<CameraDirection><X>1</X><Y>0</Y><Z>0</Z></CameraDirection></OrthogonalCamera>",
    };
    for (const char* camera : cameras) {
        ZtTestTempDir dir;
        const std::string info =
            std::string("<VisualizationInfo>") + camera + "</VisualizationInfo>";
        BcfArchive archive;
        std::vector<std::string> problems;
        std::string error;
        ASSERT_TRUE(ReadBcfArchive(Zip(dir, {{"t/markup.bcf", kMarkup}, {"t/v.bcfv", info}}),
                                   &archive, &problems, &error));
        ASSERT_EQ(archive.topics.size(), 1u);
        EXPECT_FALSE(archive.topics[0].viewpoints.at(0).camera) << camera;
    }
}

} // namespace
