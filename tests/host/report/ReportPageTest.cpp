// The report page's content, from scenes made in memory, and the report step of pdsreview.
#include "report/ReportPage.h"
#include "ReportTestScenes.h"
#include "support/RunProgram.h"
#include "tools/ZtTestDgnWriter.h"
#include "tools/ZtTestFiles.h"

#include <gtest/gtest.h>

namespace {

std::size_t Occurrences(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

// The text of the element with `id`, up to its end tag `end`.
std::string Part(const std::string& page, const std::string& id, const std::string& end) {
    const std::size_t from = page.find("id=\"" + id + "\"");
    return from == std::string::npos ? "" : page.substr(from, page.find(end, from) - from);
}

// One element drawn by its source, one tag on it, seen by a camera from the south-east.
ReportScene OneTagScene(const std::string& text) {
    ReportScene scene;
    scene.producer = "pdsreview 9.9";
    scene.controlFile = "a&b.dri";
    scene.sceneUnits = "m";
    scene.elements.push_back({ZtLBox3f({0, 0, 0}, {10, 5, 2}), 3, 7, 4});
    scene.models.push_back({"pipes.dgn", "", "", 0, 1, ZtLBox3f({0, 0, 0}, {10, 5, 2})});
    auto source = std::make_shared<FakeElementSource>();
    source->geometry[0] = Polyline({{0, 0, 0}, {10, 5, 2}, {10, 0, 0}});
    source->facts[0] = {12, "0 12 101 0", {{"Line </script>", "P-101"}, {"Rating", "PN 16"}}};
    scene.source = source;
    ReportTag tag;
    tag.id = 42;
    tag.placed = true;
    tag.position = ZtLPos3f(5, 2.5, 1);
    tag.text = text;
    tag.element = 0;
    tag.window = tag.windowB = {0.5, 0.5};
    scene.views.push_back({"View <1>", LookingAt({20, -20, 10}, {5, 2.5, 1}), {}, {tag}, {}});
    scene.sets.push_back({"Set", "", {"Level = \"Level 3\""}, {0}});
    return scene;
}

// Each text of the review's files is escaped and stands in a bidirectional isolate, so
// that an override in it (U+202E here) turns round nothing beyond its own text.
TEST(ReportPage, TextIsEscapedAndIsolatedWithOneBreakPerLineEnd) {
    const std::string page = ReportPageHtml(OneTagScene("a < b & c\r\nd\n\re\rf\ng\u202e"));
    EXPECT_NE(page.find("<bdi>a &lt; b &amp; c\nd\ne\nf\ng\u202e</bdi></span>"), std::string::npos)
        << page;
    EXPECT_NE(page.find("<title>Design review: a&amp;b.dri</title>"), std::string::npos);
    EXPECT_NE(page.find("><bdi>View &lt;1&gt;</bdi></button></h3>"), std::string::npos);
    EXPECT_NE(page.find("<h2 id=\"title-saved-0\">Saved view: View &lt;1&gt;</h2>"),
              std::string::npos);
    EXPECT_NE(page.find("<bdi>Level = &quot;Level 3&quot;</bdi>"), std::string::npos);
    // Inside the page's data, no text closes its script early.
    EXPECT_NE(page.find("\"Line <\\/script>\""), std::string::npos);
    EXPECT_EQ(Occurrences(page, "</script>"), 2u);
}

// Nothing is fetched: no external script, style sheet, image or font, and the one
// address is the name of the SVG namespace. The program that wrote it is named.
TEST(ReportPage, IsSelfContainedTheSameEachTimeAndSaysWhoWroteIt) {
    const std::string page = ReportPageHtml(OneTagScene("x"));
    EXPECT_EQ(page, ReportPageHtml(OneTagScene("x")));
    for (const char* part : {" src=", "<link", "@import", "url("})
        EXPECT_EQ(page.find(part), std::string::npos) << part;
    EXPECT_EQ(Occurrences(page, "http"), Occurrences(page, "http://www.w3.org/2000/svg"));
    EXPECT_NE(page.find("<meta name=\"generator\" content=\"pdsreview 9.9\">"), std::string::npos);
    EXPECT_NE(page.find("written by pdsreview 9.9</p>"), std::string::npos);
}

// A pin stands where the drawing's own mapping puts the tag's point, and the element is
// drawn through its real vertices.
TEST(ReportPage, PinsAndShapesFollowTheViewsMapping) {
    const std::string page = ReportPageHtml(OneTagScene("x"));
    EXPECT_EQ(Occurrences(page, "<g class=\"pin\" data-tag=\"42\""), 4u); // 3 drawings, 1 view
    const std::string plan = Part(page, "view-plan", "</svg>");
    auto number = [&](const char* key) {
        return std::stod(plan.substr(plan.find(key) + std::string(key).size()));
    };
    const double scale = number("data-scale=\""), ox = number("data-ox=\""),
                 oy = number("data-oy=\"");
    const double x = number("data-anchor=\"");
    const double y = std::stod(plan.substr(plan.find(' ', plan.find("data-anchor=\""))));
    EXPECT_NEAR(x, ox + scale * 5, 0.01);
    EXPECT_NEAR(y, oy - scale * 2.5, 0.01);
    const std::size_t path = plan.find("<path class=\"l3 c7\" data-e=\"0\" d=\"M");
    ASSERT_NE(path, std::string::npos) << plan;
    const std::string d = plan.substr(path, plan.find("\"/>", path) - path);
    EXPECT_EQ(Occurrences(d, "L"), 2u) << d;
    EXPECT_NEAR(std::stod(d.substr(d.find('M') + 1)), ox, 0.01);
}

// The saved view is drawn through its camera, with its tag; a view whose camera gives no
// view says so.
TEST(ReportPage, SavedViewsAreDrawnAsTheirCamerasSawThem) {
    ReportScene scene = OneTagScene("x");
    const std::string page = ReportPageHtml(scene);
    const std::string saved = Part(page, "view-saved-0", "</svg>");
    EXPECT_NE(saved.find("data-perspective=\"1\""), std::string::npos);
    EXPECT_NE(saved.find("data-anchor=\"230 230\""), std::string::npos) << saved;
    EXPECT_NE(saved.find("data-e=\"0\" d=\"M"), std::string::npos);
    scene.views.push_back(scene.views[0]);
    scene.views[1].camera.SetHeightField(0);
    const std::string two = ReportPageHtml(scene);
    EXPECT_NE(Part(two, "saved-1", "</figure>").find("Its camera gives no view."),
              std::string::npos);
    EXPECT_NE(two.find("id=\"saved-1\" hidden"), std::string::npos);
}

// Elements under a pixel go into the rasters, the rest are shapes; a set's raster
// elements get an overlay of their own, and its shapes are listed for the script.
TEST(ReportPage, SmallElementsJoinTheRaster) {
    ReportScene scene = OneTagScene("x");
    for (int i = 0; i < 1000; ++i) {
        const double x = i % 40 * 0.25, y = i / 40 * 0.2;
        scene.elements.push_back({ZtLBox3f({x, y, 0}, {x + 0.01, y + 0.01, 0.01}), 5, 9});
    }
    scene.sets[0].elements = {0, 1, 2};
    const std::string page = ReportPageHtml(scene);
    EXPECT_EQ(Occurrences(page, "<path class=\"l5"), 0u);
    EXPECT_EQ(Occurrences(page, "<image class=\"raster level\""), 4u);
    EXPECT_EQ(Occurrences(page, "<image class=\"raster colour\""), 4u);
    EXPECT_EQ(Occurrences(page, "<image class=\"overlay\" data-set=\"0\""), 4u);
    EXPECT_NE(page.find("\"sets\": [[0]]"), std::string::npos);
}

// Saved views drawn on threads join the page in their order: the same bytes on any
// number of threads, over runs of views that end part way and a view with no picture.
TEST(ReportPage, ThreadsDrawTheSamePage) {
    ReportScene scene = OneTagScene("x");
    for (int i = 0; i < 400; ++i) {
        const double x = i % 20 * 0.5, y = i / 20 * 0.25;
        scene.elements.push_back(
            {ZtLBox3f({x, y, 0}, {x + 0.01, y + 0.01, 0.01}), static_cast<std::uint8_t>(i % 7), 9});
    }
    scene.sets[0].elements = {3, 4, 5};
    for (int v = 1; v < 37; ++v) {
        ReportView view = scene.views[0];
        view.name = "View " + std::to_string(v);
        view.camera = LookingAt({20.0 - v, -20, 10.0 + v % 5}, {v % 10 * 1.0, 2.5, 0});
        if (v == 17)
            view.camera.SetHeightField(0);
        scene.views.push_back(view);
    }
    const std::string one = ReportPageHtml(scene, 1);
    EXPECT_EQ(Occurrences(one, "Its camera gives no view."), 1u);
    EXPECT_EQ(Occurrences(one, "<image class=\"raster level\""), 36u + 3u);
    for (std::size_t threads : {2u, 3u, 8u, 0u})
        EXPECT_TRUE(ReportPageHtml(scene, threads) == one) << threads << " threads";
}

// The data of a clickable element, its attribute lists written once.
TEST(ReportPage, ElementDataForTheScript) {
    ReportScene scene = OneTagScene("x");
    scene.elements.push_back({ZtLBox3f({0, 0, 0}, {10, 5, 2}), 4, 1, 17});
    auto* source = static_cast<FakeElementSource*>(scene.source.get());
    source->geometry[1] = Polyline({{0, 0, 0}, {10, 5, 2}});
    source->facts[1] = source->facts[0];
    source->facts[1].index = 13;
    const std::string page = ReportPageHtml(scene);
    EXPECT_NE(page.find("\"0\": [0, 12, 3, 7, 4, 0, \"0 12 101 0\", 0]"), std::string::npos);
    EXPECT_NE(page.find("\"1\": [0, 13, 4, 1, 17, 0, \"0 12 101 0\", 0]"), std::string::npos);
    EXPECT_NE(page.find("\"types\": {\"4\": \"line string\", \"17\": \"text\"}"),
              std::string::npos);
    EXPECT_EQ(Occurrences(page, "\"Rating\""), 1u);
    EXPECT_NE(page.find("data-e=\"0\"><button"), std::string::npos); // the tag's element
}

// A long legend starts folded; a short one open.
TEST(ReportPage, LongLegendsFold) {
    ReportScene scene = OneTagScene("x");
    for (std::uint8_t level = 10; level < 30; ++level)
        scene.elements.push_back({ZtLBox3f({0, 0, 0}, {1, 1, 1}), level, 3});
    const std::string page = ReportPageHtml(scene);
    EXPECT_NE(page.find("<details class=\"legend level\"><summary>Levels (21)"), std::string::npos);
    EXPECT_NE(page.find("<details class=\"legend colour\" open><summary>Colours (2)"),
              std::string::npos);
}

TEST(ReportPage, StepWritesThePageOrSaysWhyNot) {
    ZtTestTempDir dir;
    const std::string path = dir.Path() + "/plant.html";
    const ProgramRun run =
        RunProgram(PdsReviewProgram(),
                   {"--quiet", "open", ZT_SOURCE_DIR "/examples/plant/plant.dri", "report", path});
    ASSERT_EQ(run.exitStatus, 0) << run.err;
    const std::string page = ZtTestReadBytes(path);
    for (const char* part :
         {"3 saved views, 6 tags, 9 selection sets",
          "turned 90\u00b0 about Z, moved by (10, 5, 0) m",
          "scaled from ft to m, turned 90\u00b0 about Z", "DMRS 0 13 301 0", "18 elements"})
        EXPECT_NE(page.find(part), std::string::npos) << part;

    const std::string bad = dir.Path() + "/no/such/page.html";
    const ProgramRun failed = RunProgram(PdsReviewProgram(), {"--quiet", "report", bad});
    EXPECT_EQ(failed.exitStatus, 4);
    EXPECT_NE(failed.err.find("pdsreview: report " + bad + ": status 4: cannot write " + bad),
              std::string::npos)
        << failed.err;
}

// A page of several megabytes is written in pieces: none may cut a character apart.
TEST(ReportPage, ALongPageIsWrittenAsMadeWhereverItsCharactersFall) {
    ReportScene scene;
    for (const char* character : {"\u00e9", "\u20ac", "\U0001F600", "a\u00e9"})
        for (int i = 0; i < 200000; ++i)
            scene.controlFile += character;
    ZtTestTempDir dir;
    const std::string path = dir.Path() + "/long.html";
    ASSERT_TRUE(WriteReportPage(scene, path));
    const std::string page = ZtTestReadBytes(path);
    EXPECT_GT(page.size(), std::size_t{4} << 20);
    EXPECT_TRUE(page == ReportPageHtml(scene));
}

// Through pdsreview, from a model's file: a standing cylinder, an ellipse, an arc, a curve
// and a text are each drawn through points of their own kind.
TEST(ReportPage, ModelElementsAreDrawnAsWhatTheyAre) {
    ZtTestDgnWriter w(3, {1000, 1, "m", "mm", {0, 0, 0}});
    ZtTestDgnSymbology s;
    w.Cone(s, {}, {0, 0, 0}, 2000, {0, 0, 6000}, 2000);
    w.Ellipse(s, {10000, 0, 0}, 3000, 1000, {});
    w.Arc(s, {0, 10000, 0}, 2000, 2000, {}, 0, 90);
    w.Curve(s, {{-1000, -4000, 0},
                {0, -4000, 0},
                {1000, -4000, 0},
                {3000, -2000, 0},
                {5000, -4000, 0},
                {6000, -4000, 0},
                {7000, -4000, 0}});
    w.Text(s, {8000, 8000, 0}, "TANK", 1000);
    w.EndOfDesign();
    ZtTestTempDir dir;
    ASSERT_TRUE(w.Save(dir.File("round.dgn")));
    const ProgramRun run =
        RunProgram(ZT_BIN_DIR "/pdsreview",
                   {"--quiet", "model", dir.File("round.dgn"), "report", dir.File("round.html")});
    ASSERT_EQ(run.exitStatus, 0) << run.err;
    const std::string plan = Part(ZtTestReadBytes(dir.File("round.html")), "view-plan", "</svg>");
    auto path = [&](int element) {
        const std::string start = "data-e=\"" + std::to_string(element) + "\" d=\"";
        const std::size_t at = plan.find(start);
        return at == std::string::npos ? std::string()
                                       : plan.substr(at, plan.find('"', at + start.size()) - at);
    };
    // From above the cylinder is its outline and both its ends, all on one circle.
    EXPECT_EQ(Occurrences(path(0), "M"), 3u) << path(0);
    EXPECT_GE(Occurrences(path(0), "L"), 3u * 16);
    EXPECT_GE(Occurrences(path(1), "L"), 16u);
    EXPECT_EQ(Occurrences(path(1), "Z"), 1u);
    EXPECT_GE(Occurrences(path(2), "L"), 8u);
    EXPECT_EQ(Occurrences(path(2), "Z"), 0u);
    EXPECT_GT(Occurrences(path(3), "L"), 8u); // smoother than its three inner points
    EXPECT_NE(plan.find(">TANK</text>"), std::string::npos);
}

} // namespace
