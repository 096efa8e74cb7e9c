#include "tags/ZtOdPdsTagImportPlugin.h"
#include "TagTestSupport.h"
#include "ztplugin/ZtOpLock.h"
#include "ztplugin/ZtOpNextCommentIdElement.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztutil/ZtUString.h"

#include <gtest/gtest.h>

namespace {

const ZtOpFolderItem& SavedViews(const ZtOpState& state) {
    return *ZtOpSavedViewsElement::Get(&state)->Get();
}

TEST(ZtOdPdsTagImportPlugin, StatusesInTheOrderOfTheirTests) {
    ZtOdPdsTagImportPlugin plugin;
    TagDocument document(1.0);
    const ZtUWideString file(document.Write(Tag(1)));
    const ZtUWideString missing(L"/nonexistent/t.tag");
    EXPECT_EQ(plugin.IExport(0, nullptr, nullptr, nullptr), 1);
    EXPECT_EQ(plugin.IExport(0, &document.state, nullptr, nullptr), 1);
    EXPECT_EQ(plugin.IExport(0, nullptr, nullptr, &file), 3);
    EXPECT_EQ(plugin.IExport(0, &document.state, nullptr, &missing), 1);
    ZtOpState bare;
    EXPECT_EQ(plugin.IExport(0, &bare, nullptr, &file), 6);
    EXPECT_EQ(bare.GetNextTagId(), 1u);
    EXPECT_EQ(SavedViews(document.state).GetNumChildren(), 0u);
    EXPECT_EQ(plugin.IExport(0, &document.state, nullptr, &file), 0);
    EXPECT_EQ(SavedViews(document.state).GetNumChildren(), 1u);
}

TEST(ZtOdPdsTagImportPlugin, NextIdsMovePastTheImportedOnes) {
    struct Case {
        std::uint64_t tag, comment; // before
        std::string text;
        std::uint64_t expectTag, expectComment;
    };
    // Ids past the highest imported one, below it, and a tag id equal to it: the
    // import-tags case.
    const Case cases[] = {
        {100, 40, Tag(3) + Tag(40) + Tag(12), 41, 41}, // an equal comment id counts as too low
        {5, 7, "", 5, 7},                              // no usable tag: highest 0
        {0, 9, "bad{}\n", 1, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text + std::to_string(c.tag) + "," + std::to_string(c.comment));
        TagDocument document(1.0);
        document.state.SetNextTagId(c.tag);
        document.state.SetNextCommentId(c.comment);
        ZtOdPdsTagImportPlugin plugin;
        const ZtUWideString file(document.Write(c.text));
        ASSERT_EQ(plugin.IExport(0, &document.state, nullptr, &file), 0);
        EXPECT_EQ(document.state.GetNextTagId(0), c.expectTag);
        EXPECT_EQ(document.state.GetNextCommentId(0), c.expectComment);
    }
}

TEST(ZtOdPdsTagImportPlugin, EachImportAppendsBehindTheDocumentsViews) {
    TagDocument document(1.0);
    auto* own = new ZtOpView;
    own->SetName(L"Own view");
    ZtOpSavedViewsElement::Require(document.state.EditElementList())->Edit()->AddChild(own);
    ZtOdPdsTagImportPlugin plugin;
    const ZtUWideString file(document.Write(Tag(2) + "eye{3 0 0}\n" + Tag(1)));
    ASSERT_EQ(plugin.IExport(0, &document.state, nullptr, &file), 0);
    ASSERT_EQ(plugin.IExport(0, &document.state, nullptr, &file), 0);
    const ZtOpFolderItem& views = SavedViews(document.state);
    ASSERT_EQ(views.GetNumChildren(), 5u);
    EXPECT_EQ(views.GetChild(0), own);
    EXPECT_TRUE(own->GetComments().IsEmpty());
    const wchar_t* names[] = {L"Own view", L"Tag View 2", L"Tag View 1", L"Tag View 2",
                              L"Tag View 1"};
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_EQ(views.GetChild(i)->GetName().Str(), names[i]);
    // A second import starts from the default viewpoint again.
    const auto* again = static_cast<const ZtOpView*>(views.GetChild(3));
    EXPECT_EQ(again->AnonView().GetViewPoint().GetCamera().GetPosition(), ZtLPos3f(1, 0, 0));
    EXPECT_EQ(document.state.GetNextTagId(), 3u);
    // The locks are given back.
    ZtOpAutoLock viewsLock(ZtOpSavedViewsElement::GetClass(), &document.state, 0);
    ZtOpAutoLock idsLock(ZtOpNextCommentIdElement::GetClass(), &document.state, 0);
    EXPECT_NE(static_cast<ZtOpLock*>(viewsLock), nullptr);
    EXPECT_NE(static_cast<ZtOpLock*>(idsLock), nullptr);
}

} // namespace
