#include "bcf/BcfExport.h"
#include "bcf/BcfImport.h"
#include "host/report/ReportTestScenes.h"
#include "report/ReportScene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {

bool Has(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

bool AnyHas(const std::vector<std::string>& texts, const std::string& part) {
    for (const std::string& text : texts)
        if (Has(text, part))
            return true;
    return false;
}

// Facts of a scene without files: element 0 has the DMRS value "0 13 301 0".
class OneValveSource : public ReportElementSource {
public:
    bool Geometry(std::size_t, ZtDgnGeometry*) override { return false; }
    ReportElementFacts Facts(std::size_t element) override {
        ReportElementFacts facts;
        if (element == 0)
            facts.dmrs = "0 13 301 0";
        return facts;
    }
};

// A valve's box from x 5 to 7 in pipes.dgn, and behind it a wall at x 20.
ReportScene Plant() {
    ReportScene scene;
    scene.elements.push_back({{{5, -1, -1}, {7, 1, 1}}, 10, 3});
    scene.elements.push_back({{{20, -5, -5}, {21, 5, 5}}, 10, 3});
    ReportModel model;
    model.file = "/plant/pipes.dgn";
    model.elements = 2;
    model.extent = {{5, -5, -5}, {21, 5, 5}};
    scene.models.push_back(model);
    scene.source = std::make_shared<OneValveSource>();
    return scene;
}

// A topic seen from the origin along +X, with its target 10 m ahead.
BcfTopic Topic(const std::string& title) {
    BcfTopic topic;
    topic.guid = "g";
    topic.title = title;
    BcfViewpoint viewpoint;
    BcfCamera camera;
    camera.direction = {10, 0, 0};
    camera.fieldOfView = 50;
    viewpoint.camera = camera;
    topic.viewpoints.push_back(viewpoint);
    return topic;
}

BcfTagFile Tags(std::vector<BcfTopic> topics, const ReportScene& scene = Plant()) {
    BcfArchive archive;
    archive.topics = std::move(topics);
    return BcfTagFileOfArchive(archive, scene, 1000, 40);
}

TEST(BcfTagFileTest, WritesEveryViewpointKeyForEachTopicSoThatEachIsAViewOfItsOwn) {
    const BcfTagFile file = Tags({Topic("one"), Topic("two")});
    EXPECT_EQ(file.text, "target{10000 0 0}\nclip_far{0}\nclip_near{0}\npersp_ang{50}\neye{0 0 0}\n"
                         "tag{40 1 0 0.000000 6000 0 0\ntext{3\none}}\n"
                         "target{10000 0 0}\nclip_far{0}\nclip_near{0}\npersp_ang{50}\neye{0 0 0}\n"
                         "tag{41 1 0 0.000000 6000 0 0\ntext{3\ntwo}}\n");
    EXPECT_EQ(file.tags, 2u);
    EXPECT_EQ(file.nextTagId, 42u);
}

// The tag stands on the selected component, at the end of a line on it; else on the
// first element the camera sees; else at the target.
TEST(BcfTagFileTest, PlacesTheTagOnWhatTheTopicPointsAt) {
    const struct {
        const char* what;
        std::vector<BcfComponent> selection;
        std::vector<BcfLine> lines;
        BcfVector direction;
        const char* point;
    } cases[] = {
        {"component's near side", {{"", "pipes.dgn", "0 13 301 0"}}, {}, {10, 0, 0}, "5000 0 0"},
        {"component without its file", {{"", "", "0 13 301 0"}}, {}, {10, 0, 0}, "5000 0 0"},
        {"line's end on the component",
         {{"", "", "0 13 301 0"}},
         {{{0, 0, 0}, {6, 0.5, 0}}},
         {10, 0, 0},
         "6000 500 0"},
        {"line's end off the component",
         {{"", "", "0 13 301 0"}},
         {{{0, 0, 0}, {9, 0, 0}}},
         {10, 0, 0},
         "5000 0 0"},
        {"component of another file: the line of sight",
         {{"", "steel.dgn", "0 13 301 0"}},
         {},
         {10, 0, 0},
         "6000 0 0"},
        {"no component: the line of sight", {}, {}, {10, 0, 0}, "6000 0 0"},
        {"nothing in sight: the target", {}, {}, {0, 10, 0}, "0 10000 0"},
    };
    for (const auto& c : cases) {
        BcfTopic topic = Topic("t");
        topic.viewpoints[0].selection = c.selection;
        topic.viewpoints[0].lines = c.lines;
        topic.viewpoints[0].camera->direction = c.direction;
        const BcfTagFile file = Tags({topic});
        EXPECT_TRUE(Has(file.text, std::string("0.000000 ") + c.point + "\n")) << c.what << "\n"
                                                                               << file.text;
    }
}

TEST(BcfTagFileTest, TakesClipPlanesAcrossTheLineOfSightAsNearAndFar) {
    BcfTopic topic = Topic("t");
    topic.viewpoints[0].clipPlanes = {
        {{2, 0, 0}, {-1, 0, 0}}, {{50, 3, 0}, {1, 0, 0}}, {{0, 0, 0}, {0, 1, 0}}};
    const BcfTagFile file = Tags({topic});
    EXPECT_TRUE(Has(file.text, "clip_near{2000}\n")) << file.text;
    EXPECT_TRUE(Has(file.text, "clip_far{50000}\n")) << file.text;
    EXPECT_TRUE(AnyHas(file.warnings, "1 clipping planes left out"));
}

TEST(BcfTagFileTest, StandsAnOrthogonalCameraBackToSeeTheSameHeight) {
    BcfTopic topic = Topic("t");
    topic.viewpoints[0].camera->perspective = false;
    topic.viewpoints[0].camera->viewToWorldScale = 2;
    const BcfTagFile file = Tags({topic});
    // Half the height over tan(22.5 degrees) back from the position.
    EXPECT_TRUE(Has(file.text, "target{0 0 0}\n")) << file.text;
    EXPECT_TRUE(Has(file.text, "eye{-2414 0 0}\n")) << file.text;
    EXPECT_TRUE(Has(file.text, "persp_ang{45}\n")) << file.text;
    EXPECT_TRUE(AnyHas(file.warnings, "orthogonal camera"));
}

TEST(BcfTagFileTest, SaysWhatTheTagsCantHold) {
    BcfTopic topic = Topic("t");
    topic.viewpoints.push_back(topic.viewpoints[0]);
    topic.documentReferences = 2;
    topic.relatedTopics = 1;
    BcfTopic blind = Topic("blind");
    blind.viewpoints.clear();
    const BcfTagFile file = Tags({topic, blind});
    EXPECT_TRUE(AnyHas(file.warnings, "has 2 viewpoints"));
    EXPECT_TRUE(AnyHas(file.warnings, "2 document references"));
    EXPECT_TRUE(AnyHas(file.warnings, "1 related topics"));
    EXPECT_TRUE(AnyHas(file.warnings, "topic 'blind' has no camera"));
    EXPECT_EQ(file.tags, 2u);
}

TEST(BcfTagFileTest, MakesTheTextsOfTitleDescriptionAndComments) {
    const struct {
        const char* what;
        std::string title, description;
        std::vector<std::string> comments;
        std::vector<std::string> texts; // each tag's text block
    } cases[] = {
        {"title only", "Valve", "", {}, {"text{5\nValve}}"}},
        {"description beginning with the title",
         "Valve",
         "Valve\r\nleaks",
         {},
         {"text{11\nValve\nleaks}}"}},
        {"description of its own", "Valve", "leaks", {}, {"text{11\nValve\nleaks}}"}},
        {"comment as the description: one tag",
         "Valve",
         "leaks",
         {"Valve\nleaks"},
         {"text{11\nValve\nleaks}}"}},
        {"comment that says more",
         "Valve",
         "",
         {"Turn it"},
         {"text{5\nValve}}", "text{12\nann: Turn it}}"}},
        {"characters, not bytes", "Ø 150", "", {}, {"text{5\nØ 150}}"}},
        {"brace at the end", "See {S-12}", "", {}, {"text{11\nSee {S-12} }}"}},
        {"nothing at all", "", "", {}, {"text{11\nBCF topic g}}"}},
    };
    for (const auto& c : cases) {
        BcfTopic topic = Topic(c.title);
        topic.description = c.description;
        for (const std::string& comment : c.comments)
            topic.comments.push_back({"", "", "ann", comment, ""});
        const BcfTagFile file = Tags({topic});
        EXPECT_EQ(file.tags, c.texts.size()) << c.what;
        for (const std::string& text : c.texts)
            EXPECT_TRUE(Has(file.text, text)) << c.what << "\n" << file.text;
    }
}

ReportScene SavedViews(double fieldOfView) {
    ReportScene scene = Plant();
    scene.metresPerUnit = 0.001;
    ReportTag valve;
    valve.id = 7;
    valve.placed = true;
    valve.position = {6000, 0, 0};
    valve.text = "Valve\r\nleaks";
    valve.dmrs = "0 13 301 0";
    valve.modelFile = "pipes.dgn";
    ReportTag blank;
    blank.id = 8;
    blank.text = " ";
    ZtLPlane3f keepsAhead(ZtLUnitVec3f(1, 0, 0), 1000.0);
    scene.views.push_back(
        {"with tags",
         LookingAt({0, 0, 0}, {10000, 0, 0}, fieldOfView * std::numbers::pi / 180),
         {keepsAhead},
         {valve, blank},
         2000.0});
    scene.views.push_back({"without", LookingAt({0, 0, 0}, {1, 0, 0}), {}, {}, {}});
    return scene;
}

TEST(BcfExportTest, MakesATopicOfEachTag) {
    std::vector<std::string> warnings;
    BcfExportSettings settings;
    settings.author = "ann";
    settings.time = 1700000000;
    const BcfArchive archive = BcfArchiveOfScene(SavedViews(50), settings, &warnings);
    ASSERT_EQ(archive.topics.size(), 2u);
    EXPECT_TRUE(warnings.empty());
    const BcfTopic& valve = archive.topics[0];
    EXPECT_EQ(valve.title, "Valve");
    EXPECT_EQ(valve.description, "Valve\nleaks");
    EXPECT_EQ(valve.date, "2023-11-14T22:13:20Z");
    ASSERT_EQ(valve.comments.size(), 1u);
    EXPECT_EQ(valve.comments[0].author, "ann");
    const BcfViewpoint& viewpoint = valve.viewpoints.at(0);
    EXPECT_EQ(valve.comments[0].viewpointGuid, viewpoint.guid);
    // In metres; the direction runs to the target at the focal distance.
    EXPECT_NEAR(viewpoint.camera->direction[0], 2, 1e-12);
    EXPECT_NEAR(viewpoint.camera->fieldOfView, 50, 1e-9);
    ASSERT_EQ(viewpoint.clipPlanes.size(), 1u);
    EXPECT_EQ(viewpoint.clipPlanes[0].location, (BcfVector{1, 0, 0}));
    EXPECT_EQ(viewpoint.clipPlanes[0].direction, (BcfVector{-1, -0.0, -0.0}));
    ASSERT_EQ(viewpoint.lines.size(), 1u);
    EXPECT_EQ(viewpoint.lines[0].end, (BcfVector{6, 0, 0}));
    ASSERT_EQ(viewpoint.selection.size(), 1u);
    EXPECT_EQ(viewpoint.selection[0].authoringToolId, "0 13 301 0");
    EXPECT_FALSE(viewpoint.snapshot.empty());
    const BcfTopic& blank = archive.topics[1];
    EXPECT_EQ(blank.title, "Tag 8");
    EXPECT_TRUE(blank.comments.empty());
    EXPECT_TRUE(blank.description.empty());
    EXPECT_TRUE(blank.viewpoints.at(0).lines.empty());
    EXPECT_NE(valve.guid, blank.guid);
    EXPECT_EQ(BcfArchiveOfScene(SavedViews(50), settings, &warnings).topics[0].guid, valve.guid);
}

TEST(BcfExportTest, KeepsTheFieldOfViewInTheRangeOfTheVersion) {
    const struct {
        double degrees;
        BcfVersion version;
        double written;
        bool warned;
    } cases[] = {
        {30, BcfVersion::k21, 45, true},
        {70, BcfVersion::k21, 60, true},
        {50, BcfVersion::k21, 50, false},
        {30, BcfVersion::k30, 30, false},
    };
    for (const auto& c : cases) {
        std::vector<std::string> warnings;
        BcfExportSettings settings;
        settings.version = c.version;
        const BcfArchive archive = BcfArchiveOfScene(SavedViews(c.degrees), settings, &warnings);
        EXPECT_NEAR(archive.topics.at(0).viewpoints.at(0).camera->fieldOfView, c.written, 1e-9)
            << c.degrees;
        // One warning a view, not a tag.
        EXPECT_EQ(warnings.size(), c.warned ? 1u : 0u) << c.degrees;
    }
}

} // namespace
