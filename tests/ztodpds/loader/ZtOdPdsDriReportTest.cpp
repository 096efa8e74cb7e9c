#include "DriTestSupport.h"

#include "support/ZtTestRecordingDiagnostics.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using C = ZtOdPdsCheck;

// A control file read by a loader of its own, with a sink or without: its status and
// references as "source name -> load file (units)".
std::vector<std::string> ReadReferences(const std::wstring& path, ZtOdPdsDiagnostics* sink) {
    ZtOdPdsDriLoaderPlugin loader;
    loader.SetDiagnostics(sink);
    ZtOpSceneSet set;
    void* record = nullptr;
    std::vector<std::string> read{
        std::to_string(loader.IReadSet(ZtUWideString(path.c_str()), &set, &record))};
    loader.IFinishSet(record, nullptr, nullptr, nullptr);
    for (std::size_t i = 0; i < set.GetSceneRefs().Size(); ++i) {
        const ZtOpSceneRef* ref = set.GetSceneRefs()[i];
        read.push_back(ZtUSysString::WideToUtf8(ref->GetSourceName().Str()) + " -> " +
                       ZtUSysString::WideToUtf8(ref->GetLoadFile().Str()) + " (" +
                       std::to_string(ref->GetLinearUnits()) + ")");
    }
    return read;
}

TEST(ZtOdPdsDriReport, EachBlockTheLoaderCannotUseIsReportedWhereItStands) {
    const struct Case {
        std::string text;
        std::vector<ZtTestHeard> heard;
    } cases[] = {
        {"Lines before the block are the file's own.\nDesignReview_Control{\ntransform{1 0 0\n"
         "0 1 0\n0 0 1}\nold_origin{0 0 0}\nnew_origin{1 2 3}\nmaster_unit{ft}\ndgn{name{a.dgn}}\n"
         "master_unit{m}\n}\n",
         {}},
        {"DesignReview_Control{\ntransform{1 0 0 0 1 0 0 0}\ntransform{1 0 0 0 1 0 0 0 1 5}\n"
         "transform{1 0 0 0 1 0 0 0 1}\n}\n",
         {{C::kNumberCount, 2, 1, 9}, {C::kNumberCount, 3, 1, 9}, {C::kOverridden, 3, 1}}},
        {"DesignReview_Control{\nmaster_unit{furlong}\nnew_origin{1 2 3}\nold_origin{0 0 0}\n}\n",
         {{C::kUnknownUnit, 2, 13}, {C::kOriginOrder, 4, 1, 1}}},
        {"DesignReview_Control{\ndgn{file{x} name{}}\ndgn{other{x}}\ndgn{name{a.dgn} name{b.dgn}}\n"
         "DGN{name{c.dgn}}\n# note\n}\ndgn{name{d.dgn}}\n",
         {{C::kUnknownKey, 2, 5, kZtOdPdsKeyInModel},
          {C::kModelName, 2, 18, 1},
          {C::kUnknownKey, 3, 5, kZtOdPdsKeyInModel},
          {C::kModelName, 3, 1, 0},
          {C::kModelName, 4, 17, 2},
          {C::kUnknownKey, 5, 1, kZtOdPdsKeyControlFile},
          {C::kStrayText, 6, 1},
          {C::kTextAfterEnd, 8, 1}}},
        {"foo{}\n", {{C::kNotControlFile, 1, 1, 1}}},
        {"", {{C::kNotControlFile, 0, 0, 0}}},
        {"DesignReview_Control{\ndgn{name{a.dgn}\n",
         {{C::kUnclosedBlock, 2, 1}, {C::kUnclosedBlock, 1, 1}}},
    };
    for (const Case& c : cases) {
        ZtTestTempDir dir;
        ASSERT_TRUE(ZtTestWriteBytes(dir.File("r.dri"), c.text));
        ZtTestRecordingDiagnostics heard;
        EXPECT_EQ(ReadReferences(dir.WideFile("r.dri"), &heard),
                  ReadReferences(dir.WideFile("r.dri"), nullptr))
            << c.text;
        EXPECT_EQ(heard.Heard({C::kFactModel}), c.heard) << c.text;
    }
}

TEST(ZtOdPdsDriReport, TheModelsNamedAreFactsWithTheirPlaces) {
    ZtTestTempDir dir;
    ASSERT_TRUE(
        ZtTestWriteBytes(dir.File("r.dri"), "DesignReview_Control{\n\ndgn{name{ a b.dgn }}\n}\n"));
    ZtTestRecordingDiagnostics heard;
    ReadReferences(dir.WideFile("r.dri"), &heard);
    ASSERT_EQ(heard.Heard(), (std::vector<ZtTestHeard>{{C::kFactModel, 3, 10}}));
    EXPECT_EQ(heard.records[0].text, "a b.dgn");

    ZtTestRecordingDiagnostics notOne;
    ASSERT_TRUE(ZtTestWriteBytes(dir.File("n.dri"), "}\nx{}\n"));
    ReadReferences(dir.WideFile("n.dri"), &notOne);
    ASSERT_EQ(notOne.Heard(), (std::vector<ZtTestHeard>{{C::kNotControlFile, 0, 0, 0}}));
    EXPECT_EQ(notOne.records[0].diagnostic.related.line, 1u) << "the stray brace";
}

} // namespace
