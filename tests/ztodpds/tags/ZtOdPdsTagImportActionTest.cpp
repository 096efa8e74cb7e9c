#include "TagTestSupport.h"

#include "support/ZtTestRecordingProgress.h"
#include "ztutil/ZtUSysString.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>

namespace {

using Ids = std::vector<std::vector<unsigned long long>>;

// Camera space worked out by hand: the point seen from `eye` along `dir` with `up`,
// on the image plane at distance 1.
ZtLPos2f CameraSpace(const ZtLPos3f& p, const ZtLPos3f& eye, const ZtLVec3f& dir,
                     const ZtLVec3f& up) {
    const ZtLVec3f r = p - eye;
    const double depth = r.Dot(dir);
    return {r.Dot(dir.Cross(up)) / depth, r.Dot(up) / depth};
}

void ExpectPlane(const ZtOpView& view, int index, const ZtLVec3f& normal, double distance) {
    const ZtOaClipPlane* plane = view.AnonView().GetClipPlaneSet().Get(index);
    ASSERT_TRUE(plane->IsEnabled()) << index;
    ExpectNear(plane->GetNormal(), normal);
    EXPECT_NEAR(plane->GetPlane3f().GetDistance(), distance, 1e-12);
}

// An action over a document at a factor of 1.
class ImportAction : public ::testing::Test {
protected:
    TagDocument document{1.0};
    ZtOdPdsTagImportAction action{&document.state, document.state.GetRootNode()};
};

// Runs one action over the text at a factor of 1; the action for inspection.
struct Imported {
    explicit Imported(const std::string& text, double factor = 1.0)
        : document(factor), action(&document.state, document.state.GetRootNode()) {
        status = action.Perform(document.Write(text).c_str(), nullptr);
    }
    TagDocument document;
    ZtOdPdsTagImportAction action;
    int status = -1;
};

// The format's example, field by field and in units of its model's factor, is the
// import-tags case's JSON output.

TEST(ZtOdPdsTagImportAction, WithoutStickyKeysTheDefaultsMakeOneView) {
    Imported run(Tag(1) + Tag(2) + Tag(3));
    ASSERT_EQ(run.status, 0);
    ASSERT_EQ(CommentIds(run.action), (Ids{{1, 2, 3}}));
    const ZtOpView& view = ViewAt(run.action, 0);
    const ZtNvCamera& camera = view.AnonView().GetViewPoint().GetCamera();
    ExpectNear(camera.GetPosition(), {1, 0, 0});
    ExpectNear(camera.ViewDir(), {-1, 0, 0});
    ExpectNear(camera.GetUp(), {0, 0, 1});
    EXPECT_DOUBLE_EQ(camera.GetHeightField(), 0.7853981633974483);
    EXPECT_TRUE(EnabledPlanes(view).empty());
    // The redline tool of a new document: red, one unit thick.
    EXPECT_EQ(TagAt(view, 2).GetLineColor(), ZtLColor3f(1, 0, 0));
    EXPECT_EQ(TagAt(view, 2).GetLineThickness(), 1);
    // A tag without `p` points from its position to itself; the origin lies on the line
    // of sight.
    ExpectNear(TagAt(view, 0).GetPos2dA(), {0, 0});
    EXPECT_EQ(TagAt(view, 0).GetPos2dA(), TagAt(view, 0).GetPos2dB());
}

// The first of two tags, with a counted `body` (UTF-8, LF line ends).
std::string Counted(const std::string& body) {
    const std::size_t units = ZtUSysString::Utf8ToWide(body).size();
    return Head(1) + "text{" + std::to_string(units) + "\n" + body + "}}\n" + Tag(2);
}

std::string Between(const std::string& text) {
    return Tag(1) + text + Tag(2);
}

TEST(ZtOdPdsTagImportAction, WhatATagFileImports) {
    using U64 = std::numeric_limits<std::uint64_t>;
    const std::uint64_t int64Max = std::numeric_limits<std::int64_t>::max();
    const std::string good = "text{4\nnote}}\n";
    // The comment ids view by view, the highest id if given, and the first body if given.
    struct Case {
        std::string text;
        Ids views;
        std::optional<std::uint64_t> highest = std::nullopt;
        std::optional<std::wstring> body = std::nullopt;
    };
    const Case cases[] = {
        // What stands between two tags decides their views.
        {Between(""), {{1, 2}}},
        {Between("target{0 0 0}\n"), {{1}, {2}}}, // the same value still asks for a new view
        {Between("eye{5 0 0}\n"), {{1}, {2}}},
        {Between("persp_ang{45}\n"), {{1}, {2}}},
        {Between("clip_near{0}\n"), {{1}, {2}}},
        {Between("clip_far{-3}\n"), {{1}, {2}}},
        {Between("up{1 0 0}\n"), {{1, 2}}},
        {Between("up{}\n"), {{1, 2}}},
        {Between("target{1 2}\n"), {{1, 2}}}, // too few numbers: ignored
        {Between("eye{a b c}\n"), {{1, 2}}},
        {Between("persp_ang{}\n"), {{1, 2}}},
        {Between("clip_near{x}\n"), {{1, 2}}},
        {Between("Target{1 2 3}\n"), {{1, 2}}}, // keys are exact
        {Between("file{1n{other.dgn}}\n"), {{1, 2}}},
        {Between("p{1 2 3}\ntext{3\nabc}\nl{1 2 3 4}\n"), {{1, 2}}}, // nested keys at top level
        {Between("tag{5 1 7 0.0 0 0 0\ntext{2\nxy}}\n"), {{1, 2}}},  // a dropped tag
        // Bad tags are dropped without a trace.
        {"tag{5 1 1 0.0 0 0 0\n" + good, {}, 0},           // third value not 0
        {"tag{5 1 0 0.0 0 0\n" + good, {}, 0},             // six values
        {"tag{5 1 0 x 0 0 0\n" + good, {}, 0},             // fourth value no number
        {"tag{x 1 0 0.0 0 0 0\n" + good, {}, 0},           // no identifier
        {"tag{5 1 99999999999 0.0 0 0 0\n" + good, {}, 0}, // saturates, and is not 0
        {Head(5) + "p{1 2}\n" + good, {}, 0},              // `p` too short
        {Head(5) + "text{4\nnote}p{1 2 x}}\n", {}, 0},     // ... also behind the text
        {Head(5) + "}\n", {}, 0},                          // no text
        {Head(5) + "text{4 note}}\n", {}, 0},              // no line end in the text
        {Head(5) + "text{1\n}}\n", {}, 0},                 // an empty body
        {"persp_ang{0}\n" + Head(5) + good, {}, 0},        // no valid frustum
        {"persp_ang{180}\n" + Head(5) + good, {}, 0},
        // ... until a key gives a valid camera again.
        {"persp_ang{0}\n" + Tag(1) + Tag(2) + "persp_ang{30}\n" + Tag(3), {{3}}},
        // Identifiers are taken as they stand: 0 leaves the highest at 0, repeated ones are
        // both imported, a negative one is a large unsigned one, an overlong one saturates.
        {Tag(0) + Tag(0), {{0, 0}}, 0},
        {Head(-1) + "text{2\nok}}\n" + Tag(4), {{U64::max(), 4}}, U64::max()},
        {"tag{123456789012345678901234567890 1 0 0 0 0 0\ntext{2\nok}}\n", {{int64Max}}, int64Max},
        // Counted bodies keep braces, line ends and wide characters.
        {Counted("one line"), {{1, 2}}, {}, L"one line"},
        {Counted("two\nlines"), {{1, 2}}, {}, L"two\r\nlines"},
        {Counted("\n\nblank lines\n"), {{1, 2}}, {}, L"\r\n\r\nblank lines\r\n"},
        {Counted("braces { and } and {{ in it"), {{1, 2}}, {}, L"braces { and } and {{ in it"},
        {Counted("}{ first"), {{1, 2}}, {}, L"}{ first"},
        {Counted("tag{1 1 0 0 0 0 0 inside"), {{1, 2}}, {}, L"tag{1 1 0 0 0 0 0 inside"},
        {Counted("Ventil \xC3\xBC\xC3\xA4 \xE2\x82\xAC"),
         {{1, 2}},
         {},
         L"Ventil \u00FC\u00E4 \u20AC"},
        // A character beyond the Basic Multilingual Plane counts as two units.
        {Counted("pipe \xF0\x9F\x94\xA7 {x} ok"),
         {{1, 2}},
         {},
         std::wstring{L"pipe "} + wchar_t(0xD83D) + wchar_t(0xDD27) + L" {x} ok"},
        // A text without a line end keeps the body before it, whose line ends are then
        // widened once more, as every text's are.
        {Head(3) + "text{6\nab\ncd}text{12}}\n", {{3}}, {}, L"ab\r\r\ncd"},
        // A `}` in the last two characters of a body ends the text early, and the brace
        // left over ends the read; a `{` there leaves the tag open to the end of the file.
        {Head(1) + "text{5\nabc}d}}\n" + Tag(2), {{1}}, {}, L"abc"},
        {Tag(1) + Head(2) + "text{5\nabc{d}}\n" + Tag(3), {{1}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        Imported run(c.text);
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(CommentIds(run.action), c.views);
        if (c.highest) {
            EXPECT_EQ(run.action.GetHighestId(), *c.highest);
        }
        if (c.body && !c.views.empty()) {
            EXPECT_EQ(ViewAt(run.action, 0).GetComments()[0]->GetBody().Str(), *c.body);
        }
    }
}

TEST(ZtOdPdsTagImportAction, StickyValuesTakeEffectAtTheNextTag) {
    // The order of keys between two tags makes no difference; keys behind the last tag
    // change nothing.
    Imported a("eye{10 0 0}\ntarget{0 10 0}\n" + Tag(1) + "target{0 0 0}\neye{0 10 0}\n");
    Imported b("target{0 10 0}\neye{10 0 0}\n" + Tag(1) + "persp_ang{10}\n");
    for (Imported* run : {&a, &b}) {
        const ZtNvCamera& camera = ViewAt(run->action, 0).AnonView().GetViewPoint().GetCamera();
        ExpectNear(camera.GetPosition(), {10, 0, 0});
        ExpectNear(camera.ViewDir(), ZtLVec3f(-1, 1, 0).Normalized());
        EXPECT_EQ(run->action.GetFolder().GetNumChildren(), 1u);
    }
    // A clip plane read after a tag belongs to the next view only; a later clip_near{0}
    // takes the near plane away again, and the far plane then takes the first place.
    Imported run(Tag(1) + "clip_far{50}\n" + Tag(2) + "clip_near{20}\n" + Tag(3) +
                 "clip_near{0}\n" + Tag(4));
    ASSERT_EQ(CommentIds(run.action), (Ids{{1}, {2}, {3}, {4}}));
    EXPECT_TRUE(EnabledPlanes(ViewAt(run.action, 0)).empty());
    EXPECT_EQ(EnabledPlanes(ViewAt(run.action, 1)), (std::vector<int>{0}));
    ExpectPlane(ViewAt(run.action, 1), 0, {1, 0, 0}, 1 - 50.0);
    EXPECT_EQ(EnabledPlanes(ViewAt(run.action, 2)), (std::vector<int>{0, 1}));
    ExpectPlane(ViewAt(run.action, 2), 0, {-1, 0, 0}, -(1 - 20.0));
    ExpectPlane(ViewAt(run.action, 2), 1, {1, 0, 0}, 1 - 50.0);
    EXPECT_EQ(EnabledPlanes(ViewAt(run.action, 3)), (std::vector<int>{0}));
    // The sticky keys in front of a dropped tag stay in force.
    Imported sticky("eye{7 0 0}\ntag{5 1 1 0.0 0 0 0\ntext{4\nnote}}\n" + Tag(6));
    EXPECT_EQ(CommentIds(sticky.action), (Ids{{6}}));
    ExpectNear(ViewAt(sticky.action, 0).AnonView().GetViewPoint().GetCamera().GetPosition(),
               {7, 0, 0});
}

TEST(ZtOdPdsTagImportAction, HeadValuesMayTakeAnyFormOfTheirField) {
    // Blanks and signs before a number, the fourth value as any floating-point number,
    // line ends between the values: only the line end before the nested blocks matters.
    Imported run("tag{  +12\t1 -0 -1.5e3 -10 +20 30\ntext{2\nok}}\n"
                 "tag{13 2147483648 0 nan 1 2 3\ntext{2\nok}}\n"
                 "tag{14\n1\n0\n0\n1 2 3\ntext{2\nok}}\n");
    ASSERT_EQ(CommentIds(run.action), (Ids{{12, 13, 14}}));
    ExpectNear(TagAt(ViewAt(run.action, 0), 0).GetPos3d(), {-10, 20, 30});
}

TEST(ZtOdPdsTagImportAction, NestedBlocksOfATag) {
    // The last `p` holds; a later text with a line end replaces the body; unknown blocks
    // are skipped; `p` and text may come in any order.
    Imported run(Head(1, 10, 0, 0) + "p{1 1 1}\nx{y}\ntext{5\nfirst}p{0 2 3}\ntext{6\nsecond}}\n" +
                 Head(2, 5, 0, 0) + "text{3\nabc}\np{-4 0 7}}\n");
    ASSERT_EQ(CommentIds(run.action), (Ids{{1, 2}}));
    const ZtOpView& view = ViewAt(run.action, 0);
    EXPECT_EQ(view.GetComments()[0]->GetBody().Str(), L"second");
    const ZtLPos3f eye(1, 0, 0);
    const ZtLVec3f dir(-1, 0, 0), up(0, 0, 1);
    ExpectNear(TagAt(view, 0).GetPos2dB(), CameraSpace({0, 2, 3}, eye, dir, up));
    ExpectNear(TagAt(view, 1).GetPos2dB(), CameraSpace({-4, 0, 7}, eye, dir, up));
}

TEST(ZtOdPdsTagImportAction, CrLfFilesReadLikeLfFiles) {
    const std::string text = "target{0 0 0}\neye{10 0 0}\nclip_near{2}\n" + Head(1) +
                             "p{0 1 0}\ntext{9\nline\nline}}\n" + Tag(2);
    std::string crlf;
    for (char c : text)
        crlf += c == '\n' ? std::string("\r\n") : std::string(1, c);
    Imported lf(text);
    Imported dos(crlf);
    ASSERT_EQ(CommentIds(dos.action), (Ids{{1, 2}}));
    EXPECT_EQ(CommentIds(dos.action), CommentIds(lf.action));
    const ZtOpView& a = ViewAt(lf.action, 0);
    const ZtOpView& b = ViewAt(dos.action, 0);
    EXPECT_EQ(b.GetComments()[0]->GetBody().Str(), L"line\r\nline");
    EXPECT_EQ(TagAt(a, 0).GetPos2dB(), TagAt(b, 0).GetPos2dB());
    EXPECT_EQ(EnabledPlanes(b), (std::vector<int>{0}));
}

TEST_F(ImportAction, Statuses) {
    EXPECT_EQ(action.Perform(nullptr, nullptr), 1);
    EXPECT_EQ(action.Perform(L"/nonexistent/t.tag", nullptr), 1);
    EXPECT_EQ(action.Perform(document.Write("").c_str(), nullptr), 0);
    EXPECT_EQ(action.Perform(document.Write("file{0n{}}\nfile{1n{a.dgn}}\n").c_str(), nullptr), 0);
    EXPECT_EQ(action.GetFolder().GetNumChildren(), 0u);
    // A file that is gone between the passes.
    EXPECT_EQ(action.ImportFile(&document.state, L"/nonexistent/t.tag", 3, nullptr), 1);

    // Without a factor the file is not read at all.
    ZtOpState bare;
    ZtOdPdsTagImportAction unitless(&bare, bare.GetRootNode());
    EXPECT_EQ(unitless.Perform(document.Write(Tag(1)).c_str(), nullptr), 6);
    EXPECT_EQ(unitless.Perform(nullptr, nullptr), 1);
    ZtOdPdsTagImportAction nothing(nullptr, nullptr);
    EXPECT_EQ(nothing.Perform(document.Write(Tag(1)).c_str(), nullptr), 6);
    EXPECT_EQ(unitless.GetFolder().GetNumChildren(), 0u);
}

TEST_F(ImportAction, TheFirstPassCountsLinesThatBeginATag) {
    EXPECT_EQ(action.CountTags(L"/nonexistent/t.tag"), 0);
    EXPECT_EQ(action.CountTags(document.Write(Tag(1) + Tag(2)).c_str()), 2);
    // Indented: imported, not counted. A body line beginning "tag{": counted.
    EXPECT_EQ(action.CountTags(document.Write("  " + Tag(1)).c_str()), 0);
    EXPECT_EQ(action.CountTags(document.Write(Head(1) + "text{9\nx\ntag{yy}}\n").c_str()), 2);
}

TEST_F(ImportAction, TwoFilesThroughOneAction) {
    const std::wstring first =
        document.Write("eye{4 0 0}\n" + Tag(5) + Tag(1) + "eye{9 0 0}\n", "a.tag");
    const std::wstring second = document.Write(Tag(3), "b.tag");
    ASSERT_EQ(action.Perform(first.c_str(), nullptr), 0);
    ASSERT_EQ(action.Perform(second.c_str(), nullptr), 0);
    EXPECT_EQ(action.GetHighestId(), 5u);
    // A view never spans two files; the second file starts from where the first ended.
    ASSERT_EQ(CommentIds(action), (Ids{{5, 1}, {3}}));
    ExpectNear(ViewAt(action, 1).AnonView().GetViewPoint().GetCamera().GetPosition(), {9, 0, 0});
}

// Every text block puts one more CR before each LF of a body. A thousand LFs widened by
// 3,999 text blocks take 3,999,000 of the file's 4,000,000 CRs, so a second such tag is
// dropped; one text block over a thousand LFs takes the rest exactly, the next is dropped, a
// body without LFs costs nothing, and the next file has the whole budget again.
TEST_F(ImportAction, TheWideningOfLineEndsHasABudgetPerFile) {
    const auto widened = [](int id, int texts, const std::string& line) {
        std::string body;
        for (int i = 0; i < 1000; ++i)
            body += line;
        std::string tag = Head(id) + "text{" + std::to_string(body.size() + 2) + "\n" + body + "}";
        for (int i = 1; i < texts; ++i)
            tag += "text{2}";
        return tag + "}\n";
    };
    const std::wstring path =
        document.Write(widened(1, 3999, "l\n") + widened(2, 3999, "l\n") + widened(3, 1, "l\n") +
                       widened(4, 1, "l\n") + widened(5, 9, "l "));
    ASSERT_EQ(action.Perform(path.c_str(), nullptr), 0);
    ASSERT_EQ(action.Perform(path.c_str(), nullptr), 0);
    ASSERT_EQ(CommentIds(action), (Ids{{1, 3, 5}, {1, 3, 5}}));
    EXPECT_EQ(ViewAt(action, 1).GetComments()[0]->GetBody().Str().substr(0, 4001),
              L"l" + std::wstring(3999, L'\r') + L"\n");
}

TEST_F(ImportAction, ClipPlanesTakeTheFirstFreePlaces) {
    ZtOpView* view = ZtOdPdsTagViewpoint().MakeView();
    ASSERT_NE(view, nullptr);
    view->AnonView().EditClipPlaneSet()->Edit(1)->SetEnabled(true);
    for (int i = 0; i < 7; ++i)
        ZtOdPdsAddTagClipPlane(i % 2 ? -1.0 : 1.0, i + 1.0, view);
    // Places 0 and 2 to 5 filled in turn, and the last two go to place 5 again.
    EXPECT_EQ(EnabledPlanes(*view), (std::vector<int>{0, 1, 2, 3, 4, 5}));
    ExpectPlane(*view, 0, {-1, 0, 0}, 0);
    ExpectPlane(*view, 2, {1, 0, 0}, -1);
    ExpectPlane(*view, 5, {-1, 0, 0}, 6);
    ZtOdPdsAddTagClipPlane(1.0, 1.0, nullptr);
    delete view;
}

TEST_F(ImportAction, ProgressIsTheShareOfCountedTags) {
    ZtTestRecordingProgress progress;
    ASSERT_EQ(action.Perform(document.Write(Tag(1) + Tag(2) + "bad{}\n" + Tag(3) + Tag(4)).c_str(),
                             &progress),
              0);
    EXPECT_EQ(progress.seen, (std::vector<double>{0.25, 0.5, 0.75, 1.0}));
}

} // namespace
