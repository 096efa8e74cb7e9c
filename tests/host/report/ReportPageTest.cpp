// The report page's content, from scenes made in memory, and the report step of pdsreview.
#include "report/ReportPage.h"
#include "report/ReportScene.h"
#include "support/RunProgram.h"
#include "tools/ZtTestFiles.h"

#include <gtest/gtest.h>

namespace {

std::size_t Occurrences(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

ReportScene OneTagScene(const std::string& text) {
    ReportScene scene;
    scene.controlFile = "a&b.dri";
    scene.sceneUnits = "m";
    scene.elements.push_back({ZtLBox3f({0, 0, 0}, {10, 5, 2}), 3, 7});
    ReportTag tag;
    tag.id = 42;
    tag.placed = true;
    tag.position = ZtLPos3f(4, 2, 1);
    tag.text = text;
    scene.views.push_back({"View <1>", ZtLPos3f(20, -20, 10), ZtLVec3f(-1, 1, 0), {tag}});
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
    EXPECT_NE(page.find("<h3><bdi>View &lt;1&gt;</bdi></h3>"), std::string::npos);
    EXPECT_NE(page.find("<bdi>Level = &quot;Level 3&quot;</bdi>"), std::string::npos);
}

// Nothing is fetched: no external script, style sheet, image or font, and the one
// address is the name of the SVG namespace.
TEST(ReportPage, IsSelfContainedAndTheSameEachTime) {
    const std::string page = ReportPageHtml(OneTagScene("x"));
    EXPECT_EQ(page, ReportPageHtml(OneTagScene("x")));
    for (const char* part : {" src=", "<link", "@import", "url("})
        EXPECT_EQ(page.find(part), std::string::npos) << part;
    EXPECT_EQ(Occurrences(page, "http"), Occurrences(page, "http://www.w3.org/2000/svg"));
}

// A pin lands where the view's own mapping puts the tag's point.
TEST(ReportPage, PinsFollowTheViewsMapping) {
    const std::string page = ReportPageHtml(OneTagScene("x"));
    EXPECT_EQ(Occurrences(page, "<g class=\"pin\" data-tag=\"42\""), 3u);
    const std::size_t svg = page.find("id=\"view-plan\"");
    auto number = [&](const char* key) {
        return std::stod(page.substr(page.find(key, svg) + std::string(key).size()));
    };
    const double scale = number("data-scale=\""), ox = number("data-ox=\""),
                 oy = number("data-oy=\"");
    const std::size_t pin = page.find("translate(", svg) + 10;
    const double x = std::stod(page.substr(pin));
    const double y = std::stod(page.substr(page.find(' ', pin)));
    EXPECT_NEAR(x, ox + scale * 4, 0.01);
    EXPECT_NEAR(y, oy - scale * 2, 0.01);
}

// Elements under a pixel go into the raster, the rest are shapes; a set's raster
// elements get an overlay of their own.
TEST(ReportPage, SmallElementsJoinTheRaster) {
    ReportScene scene = OneTagScene("x");
    for (int i = 0; i < 1000; ++i) {
        const double x = i % 40 * 0.25, y = i / 40 * 0.2;
        scene.elements.push_back({ZtLBox3f({x, y, 0}, {x + 0.01, y + 0.01, 0.01}), 5, 9});
    }
    scene.sets[0].elements = {0, 1, 2};
    const std::string page = ReportPageHtml(scene);
    EXPECT_EQ(Occurrences(page, "<rect class="), 3u); // the big one, in each view
    EXPECT_EQ(Occurrences(page, "<image class=\"raster level\""), 3u);
    EXPECT_EQ(Occurrences(page, "<image class=\"raster colour\""), 3u);
    EXPECT_EQ(Occurrences(page, "<image class=\"overlay\" data-set=\"0\""), 3u);
    EXPECT_NE(page.find("const SETS=[[0]];"), std::string::npos);
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
          "scaled from ft to m, turned 90\u00b0 about Z", "DMRS 0 12 101 0", "18 elements"})
        EXPECT_NE(page.find(part), std::string::npos) << part;

    const std::string bad = dir.Path() + "/no/such/page.html";
    const ProgramRun failed = RunProgram(PdsReviewProgram(), {"--quiet", "report", bad});
    EXPECT_EQ(failed.exitStatus, 4);
    EXPECT_NE(failed.err.find("pdsreview: report " + bad + ": status 4: cannot write " + bad),
              std::string::npos)
        << failed.err;
}

} // namespace
