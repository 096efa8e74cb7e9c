#include "TagTestSupport.h"

#include "support/ZtTestRecordingDiagnostics.h"
#include "ztplugin/ZtOpComment.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using C = ZtOdPdsCheck;
using namespace std::string_literals;

// The views of a folder as "name: id body, id body, ..." lines.
std::vector<std::string> DescribeViews(const ZtOpFolderItem& folder) {
    std::vector<std::string> out;
    for (std::size_t i = 0; i < folder.GetNumChildren(); ++i) {
        const auto* view = static_cast<const ZtOpView*>(folder.GetChild(i));
        std::string line = ZtUSysString::WideToUtf8(view->GetName().Str()) + ":";
        for (std::size_t k = 0; k < view->GetComments().Size(); ++k)
            line += " " + std::to_string(view->GetComments()[k]->GetId()) + " " +
                    ZtUSysString::WideToUtf8(view->GetComments()[k]->GetBody().Str()) + ",";
        line += " " + std::to_string(view->GetRedlines().Size()) + " redlines";
        out.push_back(line);
    }
    return out;
}

// Imports `files` with one action, with a sink or without; what came in.
std::vector<std::string> Import(TagDocument& document, const std::vector<std::wstring>& files,
                                ZtOdPdsDiagnostics* sink) {
    ZtOdPdsTagImportAction action(&document.state, document.state.GetRootNode());
    action.SetDiagnostics(sink);
    for (const std::wstring& file : files)
        EXPECT_EQ(action.Perform(file.c_str(), nullptr), 0);
    action.FinishReport();
    std::vector<std::string> views = DescribeViews(action.GetFolder());
    views.push_back("highest " + std::to_string(action.GetHighestId()));
    return views;
}

const char* const kText = "\ntext{2\nab}}\n";

TEST(ZtOdPdsTagReport, EachDropAndPassOverIsReportedWhereItStands) {
    const std::string head = "tag{7 1 0 0.0 1 2 3";
    const struct Case {
        std::string text;
        std::vector<ZtTestHeard> heard;
    } cases[] = {
        {"target{1 2 3}\neye{10 0 0}\n" + head +
             "\np{1 2 3}\nl{1 2 3 4}\ntext{5\nHello}}\n"
             "file{0n{a}}\n",
         {}},
        {"tag{7 1 x" + std::string(kText), {{C::kTagHead, 1, 1, 2}}},
        {"tag{7 1 2 0.0 1 2 3" + std::string(kText), {{C::kTagKind, 1, 1, 2}}},
        {head + "\np{1 2}" + kText, {{C::kTagPoint, 2, 1}}},
        {head + "\n}\n" + head + "\ntext{2 ab}}\n" + head + "\ntext{2\n}}\n",
         {{C::kTagText, 1, 1, 0}, {C::kTagText, 3, 1, 1}, {C::kTagText, 5, 1, 2}}},
        {"persp_ang{0}\n" + head + kText + head + kText + head + kText + "persp_ang{45}\n" + head +
             kText,
         {{C::kTagCamera, 2, 1, 0}}},
        {"eye{1 2}\ntarget{1 2 3}\ntarget{4 5 6}\n" + head + kText + "clip_far{9}\n",
         {{C::kStickyValue, 1, 1, 3}, {C::kStickyUnused, 2, 1, 0}, {C::kStickyUnused, 7, 1, 1}}},
        {"Target{1 2 3}\np{1 2 3}\n" + head + "\nq{1}" + kText + "up{1 0 0}\nup{0 0 1}\n",
         {{C::kUnknownKey, 1, 1, kZtOdPdsKeyTagFile},
          {C::kUnknownKey, 2, 1, kZtOdPdsKeyTagFile},
          {C::kUnknownKey, 4, 1, kZtOdPdsKeyInTag},
          {C::kIgnoredKey, 7, 1}}},
        {"tag{5 1 0 0.0 1 2 3" + std::string(kText) + "tag{5 1 0 0.0 1 2 3" + kText,
         {{C::kTagIdRepeated, 4, 1, 5}}},
        // A count too large takes in the tag behind it; one too small reads braces.
        {head + "\ntext{40\nshort}}\ntag{8 1 0 0.0 1 2 3\ntext{5\nhello}}\n",
         {{C::kTextCount, 2, 1, 40}}},
        {head + "\ntext{3\nab{c}d}}\n", {{C::kTextCount, 2, 1, 3}}},
        {head + "\ntext{3\nab}cd}}\n",
         {{C::kTextCount, 2, 1, 3}, {C::kStrayText, 3, 4}, {C::kStrayBrace, 3, 7, 0}}},
        // A one-character body written with its count takes the rest of the file.
        {head + "\ntext{1\nx}}\n" + head + kText, {{C::kUnclosedBlock, 1, 1, 1}}},
        // The keys before it did have a tag to take them.
        {"eye{10 0 0}\n" + head + "\ntext{1\nx}}\n", {{C::kUnclosedBlock, 2, 1, 1}}},
        {head + kText + "}\n" + head + kText, {{C::kStrayBrace, 4, 1, 1}}},
        {"tag{1 1 0\0 0.0 1 2 3"s + kText, {{C::kNulCut, 1, 10, 1}, {C::kTagHead, 1, 1, 3}}},
        {head + "\nnote" + kText, {{C::kStrayText, 2, 1}}},
    };
    for (const Case& c : cases) {
        TagDocument document(1.0);
        const std::wstring path = document.Write(c.text);
        ZtTestRecordingDiagnostics heard;
        EXPECT_EQ(Import(document, {path}, &heard), Import(document, {path}, nullptr)) << c.text;
        EXPECT_EQ(heard.Heard({C::kFactBlocks}), c.heard) << c.text;
    }
}

TEST(ZtOdPdsTagReport, WhatARunOrAReportReachesIsInItsFigures) {
    TagDocument document(1.0);
    std::string text = "persp_ang{180}\n";
    for (int id = 1; id <= 6; ++id) {
        text += "tag{" + std::to_string(id) + " 1 0 0.0 1 2 3\ntext{" +
                (id == 5 ? "1\nx" : "2\nab") + "}}\n";
        if (id == 3)
            text += "persp_ang{45}\n";
    }
    ZtTestRecordingDiagnostics heard;
    Import(document, {document.Write(text)}, &heard);
    ASSERT_EQ(heard.Heard(), (std::vector<ZtTestHeard>{{C::kTagCamera, 2, 1, 180},
                                                       {C::kFactBlocks, 0, 0, 6},
                                                       {C::kUnclosedBlock, 15, 1, 1}}));
    EXPECT_EQ(heard.records[0].diagnostic.figures[1], 2)
        << "the tags behind the first that no camera takes";
    EXPECT_EQ(heard.records[0].diagnostic.related.line, 1u) << "where the angle was set";
    EXPECT_EQ(heard.records[1].diagnostic.figures[1], 4) << "tag blocks read";
    const ZtOdPdsDiagnostic& unclosed = heard.records[2].diagnostic;
    EXPECT_EQ(unclosed.figures[1], 1) << "the count";
    EXPECT_EQ(unclosed.figures[2], 2) << "the tag lines never read as tags";
    EXPECT_EQ(unclosed.related.line, 16u) << "where the count stands";
}

// The loader's tag files are one action: what carries over from one file to the next is
// judged as the import carries it.
TEST(ZtOdPdsTagReport, ViewpointKeysAndIdentifiersCarryOverFromFileToFile) {
    TagDocument document(1.0);
    const std::wstring first =
        document.Write("tag{1 1 0 0.0 1 2 3" + std::string(kText) + "eye{5 0 0}\n", "a.tag");
    const std::wstring second = document.Write(
        "tag{2 1 0 0.0 1 2 3" + std::string(kText) + "tag{1 1 0 0.0 1 2 3" + kText, "b.tag");
    ZtTestRecordingDiagnostics heard;
    Import(document, {first, second}, &heard);
    EXPECT_EQ(heard.Heard({C::kFactBlocks}),
              (std::vector<ZtTestHeard>{{C::kTagIdRepeated, 4, 1, 1}}));
    const ZtTestRecordingDiagnostics::Record& repeated =
        *std::find_if(heard.records.begin(), heard.records.end(), [](const auto& record) {
            return record.diagnostic.check == C::kTagIdRepeated;
        });
    EXPECT_EQ(repeated.file, ZtUSysString::WideToUtf8(second));
    EXPECT_EQ(repeated.relatedFile, ZtUSysString::WideToUtf8(first));
    EXPECT_EQ(repeated.diagnostic.related.line, 1u);
}

} // namespace
