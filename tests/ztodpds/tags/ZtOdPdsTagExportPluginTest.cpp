#include "TagTestSupport.h"

#include "plugin/ZtOdPdsStatus.h"
#include "support/ZtTestRecordingProgress.h"
#include "tags/ZtOdPdsTagRecord.h"
#include "ztplugin/ZtOpSelectionSet.h"
#include "ztutil/ZtUVector.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <new>
#include <vector>

namespace {

// Straight down from `height` above (2, 1, 0): the view direction is exactly -Z, so that
// every value below is exact in UORs.
ZtOpView* DownView(TagDocument& doc, double height, ZtOpGroupItem* folder = nullptr) {
    return doc.AddView({2, 1, height}, {2, 1, 0}, 0.7853981633974483, folder);
}

// A point half a UOR off the whole numbers, so that the cut is safe from rounding.
ZtLPos3f Beside(const ZtLPos3f& p) {
    return p + ZtLVec3f(0.5005, 0.2505, 0);
}

// Two models (zeta before alpha in the scene), a tag on each kind of element and one on
// nothing, over two views.
struct TwoModels {
    TwoModels() {
        ZtOaPartition* zeta = doc.AddModel(L"/data/zeta.dgn");
        ZtOaPartition* alpha = doc.AddModel(L"C:\\plant\\alpha.dgn");
        TagDocument::AddElement(zeta, Element(1), 0x0001000200030004ull);
        TagDocument::AddElement(alpha, Element(3), 0);
        TagDocument::AddElement(alpha, Element(5), 0xFF);

        ZtOpView* first = DownView(doc, 10);
        TagDocument::AddPlane(first, 0, {0, 0, 1}, 12); // against the view: far
        TagDocument::AddPlane(first, 1, {0, 0, -1}, 2); // along it: near
        AddTag(first, 1, 1, L"Zeta");
        AddTag(first, 2, 7, L"Nothing here");
        AddTag(first, 3, 3, L"Alpha");
        ZtOpView* second = DownView(doc, 20);
        AddTag(second, 4, 5, L"Two\r\nlines.");
    }
    static ZtLBox3f Element(double x) {
        return ZtLBox3f({x - 0.125, 0.875, -0.125}, {x + 0.125, 1.125, 0.125});
    }
    static void AddTag(ZtOpView* view, std::uint64_t id, double x, const wchar_t* body) {
        const ZtLPos3f at(x, 1, 0.125);
        const ZtLPos3f second = Beside(at);
        TagDocument::AddTag(view, id, at, body, &second);
    }

    TagDocument doc{kTagTestFactor};
};

// Unfiled tags first, then the files by name; each viewpoint key only where it changes,
// across groups; no clip distance of -1; no `l` for a null value; LF line ends counted.
const char* const kTwoModelsText = "file{0n{}}\n"
                                   "target{2000 1000 9000}\n"
                                   "clip_far{12000}\n"
                                   "clip_near{2000}\n"
                                   "persp_ang{45}\n"
                                   "eye{2000 1000 10000}\n"
                                   "tag{2 1 0 0.000000 7000 1000 125\n"
                                   "p{7500 1250 125}\n"
                                   "text{12\nNothing here}}\n"
                                   "file{1n{alpha.dgn}}\n"
                                   "tag{3 1 0 0.000000 3000 1000 125\n"
                                   "p{3500 1250 125}\n"
                                   "text{5\nAlpha}}\n"
                                   "target{2000 1000 19000}\n"
                                   "eye{2000 1000 20000}\n"
                                   "tag{4 1 0 0.000000 5000 1000 125\n"
                                   "p{5500 1250 125}\n"
                                   "l{0 0 0 255}\n"
                                   "text{10\nTwo\nlines.}}\n"
                                   "file{2n{zeta.dgn}}\n"
                                   "target{2000 1000 9000}\n"
                                   "clip_far{12000}\n"
                                   "clip_near{2000}\n"
                                   "eye{2000 1000 10000}\n"
                                   "tag{1 1 0 0.000000 1000 1000 125\n"
                                   "p{1500 1250 125}\n"
                                   "l{1 2 3 4}\n"
                                   "text{4\nZeta}}\n";

// A second export with the same plug-in starts afresh.
TEST(ZtOdPdsTagExportPlugin, WritesGroupsAndStickyKeysAsTheFormatSays) {
    TwoModels scene;
    ZtOdPdsTagExportPlugin plugin;
    for (const char* name : {"out.tag", "again.tag"}) {
        std::string text;
        ASSERT_EQ(scene.doc.Export(plugin, &text, nullptr, name), kZtOdPdsOk);
        EXPECT_EQ(text, kTwoModelsText);
        EXPECT_EQ(plugin.GetTagCount(), 4);
        EXPECT_EQ(plugin.GetWrittenCount(), 4);
        EXPECT_DOUBLE_EQ(plugin.GetUorsPerMaster(), kTagTestFactor);
        ASSERT_NE(plugin.GetUnfiledRecords(), nullptr);
        EXPECT_EQ(plugin.GetUnfiledRecords()->Size(), 1u);
    }
}

// Statuses in the order of the tests: file name, state, factor, saved views, file.
TEST(ZtOdPdsTagExportPlugin, StatusesOfIExport) {
    ZtOdPdsTagExportPlugin plugin;
    TagDocument doc(kTagTestFactor);
    const ZtUWideString name(doc.dir.WideFile("s.tag").c_str());
    EXPECT_EQ(plugin.IExport(0, nullptr, nullptr, nullptr), kZtOdPdsNoFile);
    EXPECT_EQ(plugin.IExport(0, nullptr, nullptr, &name), kZtOdPdsNoState);

    ZtOpState noModel;
    EXPECT_EQ(plugin.IExport(0, &noModel, nullptr, &name), kZtOdPdsNoUnits);
    EXPECT_EQ(plugin.GetUorsPerMaster(), 0.0);

    // A document whose element list has no saved views: nothing is written.
    struct NoViews : ZtOpState {
        const ZtOpElementList& GetElementList() const override { return empty; }
        ZtOpElementList empty;
    } noViews;
    auto* units = new ZtDgnModel(L"", noViews.EditNameDict());
    units->SetUorsPerMaster(kTagTestFactor);
    noViews.GetRootNode()->AddChild(units);
    EXPECT_EQ(plugin.IExport(0, &noViews, nullptr, &name), kZtOdPdsNoUnits);
    EXPECT_EQ(ZtTestReadBytes(doc.dir.File("s.tag")), "");

    const ZtUWideString folder(doc.dir.WideFile("").c_str());
    EXPECT_EQ(plugin.IExport(0, &doc.state, nullptr, &folder), kZtOdPdsNoFile);

    // Views without tags: an empty file, and success.
    DownView(doc, 10);
    std::string text = "not written";
    EXPECT_EQ(doc.Export(plugin, &text), kZtOdPdsOk);
    EXPECT_EQ(text, "");
}

// Tags without a 3D position or without their comment count, but make no record; nested
// folders are walked in order; other saved items are passed over. Only the root's
// children move the gathering's part of the bar, and the writing's part ends short of
// the end when tags were dropped.
TEST(ZtOdPdsTagExportPlugin, GatheringWalksFoldersAndCountsDroppedTags) {
    ZtTestRecordingProgress progress;
    TagDocument doc(kTagTestFactor);
    auto* folder = new ZtOpFolderItem;
    doc.Root()->AddChild(folder);
    auto* selection = new ZtOpSelectionSet;
    selection->EditComments().PushBack(new ZtOpComment(50));
    doc.Root()->AddChild(selection);
    ZtOpView* inner = DownView(doc, 10, folder);
    ZtOpView* outer = DownView(doc, 10);
    TagDocument::AddTag(inner, 1, {2, 1, 0}, L"one");
    TagDocument::AddTag(inner, 2, {2, 1, 0}, L"no comment", nullptr, false);
    TagDocument::AddTag(outer, 3, {2, 1, 0}, L"no position", nullptr, true, 0);
    TagDocument::AddTag(outer, 4, {2, 1, 0}, L"");

    ZtOdPdsTagExportPlugin plugin;
    std::string text;
    ASSERT_EQ(doc.Export(plugin, &text, &progress), kZtOdPdsOk);
    EXPECT_EQ(plugin.GetTagCount(), 4);
    EXPECT_EQ(plugin.GetWrittenCount(), 2);
    EXPECT_NE(text.find("tag{1 "), std::string::npos);
    EXPECT_NE(text.find("tag{4 1 0 0.000000 2000 1000 0\np{"), std::string::npos);
    EXPECT_NE(text.find("text{0\n}}\n"), std::string::npos) << "an empty comment is written";
    EXPECT_EQ(text.find("tag{2 "), std::string::npos);
    EXPECT_EQ(text.find("tag{3 "), std::string::npos);
    // Gathering: 1/3, 2/3, 3/3 of 0.25, and its end; writing: 1/4 and 2/4 of the rest;
    // then its end.
    const std::vector<double> expected = {0.25 / 3,        0.5 / 3,         0.25, 0.25,
                                          0.25 + 0.75 / 4, 0.25 + 0.75 / 2, 1.0};
    ASSERT_EQ(progress.seen.size(), expected.size()) << ::testing::PrintToString(progress.seen);
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_NEAR(progress.seen[i], expected[i], 1e-12) << i;
}

// A model's file name is a group's name in the file: one with braces and line ends would
// end its block early and forge records of its own, so they are written as '_'.
TEST(ZtOdPdsTagExportPlugin, GroupNamesCannotForgeBlocks) {
    TagDocument doc(kTagTestFactor);
    ZtOaPartition* model =
        doc.AddModel(L"/data/p}}\ntag{666 1 0 0.0 1 2 3\r\ntext{10\nINJECTED}.dgn");
    TagDocument::AddElement(model, TwoModels::Element(1), 0);
    TagDocument::AddTag(DownView(doc, 10), 1, {1, 1, 0.125}, L"One");
    ZtOdPdsTagExportPlugin plugin;
    std::string text;
    ASSERT_EQ(doc.Export(plugin, &text), kZtOdPdsOk);
    EXPECT_EQ(text.substr(0, text.find('\n') + 1),
              "file{0n{p___tag_666 1 0 0.0 1 2 3__text_10_INJECTED_.dgn}}\n");
    EXPECT_EQ(text.find("INJECTED}"), std::string::npos);
}

// Several comments may share an identifier: a tag takes the first of them in its view,
// and each view's comments are its own.
TEST(ZtOdPdsTagExportPlugin, ATagTakesTheFirstCommentWithItsIdentifier) {
    TagDocument doc(kTagTestFactor);
    ZtOpView* first = DownView(doc, 10);
    TagDocument::AddTag(first, 7, {2, 1, 0}, L"first");
    auto* later = new ZtOpComment(7);
    later->SetBody(L"later");
    first->EditComments().PushBack(later);
    ZtOpView* second = DownView(doc, 10);
    TagDocument::AddTag(second, 7, {2, 1, 0}, L"own", nullptr, false);
    auto* own = new ZtOpComment(7);
    own->SetBody(L"own");
    second->EditComments().PushBack(own);
    ZtOdPdsTagExportPlugin plugin;
    std::string text;
    ASSERT_EQ(doc.Export(plugin, &text), kZtOdPdsOk);
    EXPECT_NE(text.find("text{5\nfirst}}\n"), std::string::npos) << text;
    EXPECT_NE(text.find("text{3\nown}}\n"), std::string::npos) << text;
    EXPECT_EQ(text.find("later"), std::string::npos);
}

// An exception between the open and the close, here from the bar in the middle of the
// writing, as from an allocation that fails, ends the export with a status and gives the
// stream up: the old file stays, and no temporary file is left beside it.
TEST(ZtOdPdsTagExportPlugin, AnExceptionWhileWritingLeavesTheOldFile) {
    TwoModels models;
    ASSERT_TRUE(ZtTestWriteBytes(models.doc.dir.File("out.tag"), "old\n"));
    ZtTestRecordingProgress progress;
    progress.onReport = [&progress] {
        if (progress.seen.size() > 5)
            throw std::bad_alloc();
    };
    ZtOdPdsTagExportPlugin plugin;
    EXPECT_EQ(models.doc.Export(plugin, nullptr, &progress), kZtOdPdsNoState);
    EXPECT_EQ(progress.seen.size(), 6u);
    EXPECT_EQ(ZtTestReadBytes(models.doc.dir.File("out.tag")), "old\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(models.doc.dir.Path()), {}), 1);
}

} // namespace
