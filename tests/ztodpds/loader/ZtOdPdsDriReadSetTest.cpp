#include "DriTestSupport.h"

#include "ztutil/ZtUSysString.h"

#include <filesystem>
#include <vector>

namespace {

using ReadSet = DriLoaderTest;

TEST_F(ReadSet, StatusesOfTheFirstBlock) {
    struct Case {
        const char* text;
        int status;
    };
    const Case cases[] = {
        {"", 64},
        {"no brace at all\nanywhere\n", 64},
        {"foo{}", 128},
        {"DESIGNREVIEW_CONTROL{}", 128},
        {"DesignReview_Control {}", 0}, // the name is trimmed
        {"DesignReview_Control{}", 0},
        {"comment line\nanother one\nDesignReview_Control{\n}\n", 0},
        // Text before the name on its own line is part of it.
        {"x DesignReview_Control{}", 128},
        // A closing brace before the first block leaves depth below 0, and the first
        // opening brace that follows names no block.
        {"}\nDesignReview_Control{dgn{name{a.dgn}}}", 128},
        {"}\nDesignReview_Control{}", 64},
        // Unfinished: the blocks read so far stand.
        {"DesignReview_Control{", 0},
    };
    for (const Case& c : cases) {
        ZtOpSceneSet set;
        EXPECT_EQ(Read(c.text, &set), c.status) << c.text;
        EXPECT_EQ(record_ != nullptr, c.status == 0) << c.text;
    }
}

// A file that cannot be opened, a folder among them, gives 64; a failure leaves the set,
// the record and option 10 alone.
TEST_F(ReadSet, FailuresLeaveSetRecordAndDgnOptionAlone) {
    std::filesystem::create_directory(folder_.File("folder.dri"));
    ZtTestWriteBytes(folder_.File("empty.dri"), "");
    ZtTestWriteBytes(folder_.File("other.dri"), "foo{dgn{name{a.dgn}}}");
    const std::pair<const char*, int> cases[] = {
        {"missing.dri", 64}, {"folder.dri", 64}, {"empty.dri", 64}, {"other.dri", 128}};
    for (const auto& [name, status] : cases) {
        ZtOpSceneSet set;
        set.SetLinearUnits(ZtOaUnit::kMiles);
        record_ = reinterpret_cast<void*>(1); // IReadSet nulls it first
        EXPECT_EQ(loader_.IReadSet(ZtUWideString(folder_.WideFile(name)), &set, &record_), status)
            << name;
        EXPECT_EQ(record_, nullptr);
        EXPECT_EQ(set.GetSceneRefs().Size(), 0u);
        EXPECT_EQ(set.GetLinearUnits(), ZtOaUnit::kMiles);
        EXPECT_TRUE(DgnOption10());
    }
}

// What follows "DesignReview_Control{" in a control file, the names (UTF-8) and units of
// its references, and the units of the set.
struct ReferencesCase {
    const char* name; // of the test
    ZtOaUnit::Linear setUnits;
    const char* text;
    std::vector<std::pair<std::string, ZtOaUnit::Linear>> refs;
};

const ZtOaUnit::Linear kM = ZtOaUnit::kMetres, kFt = ZtOaUnit::kFeet;

// Each control file read by a loader of its own.
const ReferencesCase kReferences[] = {
    // One reference for each dgn with a name, its first; nothing outside the first block.
    {"OneForEachNamedDgn",
     kM,
     "\ndgn{name{pipes.dgn}}\n"
     "dgn{ other{x} name{ steel.dgn } name{second.dgn} }\n"
     "dgn{nothing{here}}\n"
     "dgn{}\n"
     "DGN{name{capitals.dgn}}\n"
     "dgn{x{name{nested.dgn}} name{ \n sub/equip.dgn\t}}\n"
     "dgn{name{pipes.dgn}}\n"
     "unknown{name{u.dgn} dgn{name{inner.dgn}}}\n"
     "}\n"
     "dgn{name{behind.dgn}}\n",
     {{"pipes.dgn", kM}, {"steel.dgn", kM}, {"sub/equip.dgn", kM}, {"pipes.dgn", kM}}},
    // Blocks before an unfinished block stand.
    {"BlocksBeforeAnUnfinishedBlockStand",
     kFt,
     "\ndgn{name{a.dgn}}\nmaster_unit{ft}\ndgn{name{b.dgn}",
     {{"a.dgn", kM}}},
    // With counted texts a brace behind "text" would start a count.
    {"CountedTextsStartNoCount", kM, "text{5 }{}dgn{name{a.dgn}}}", {{"a.dgn", kM}}},
    // A master unit goes to later references and to the set; an unknown one is metres.
    {"MasterUnitGoesToLaterReferences",
     kFt,
     "dgn{name{a.dgn}} master_unit{FT} dgn{name{b.dgn}} master_unit{mm} dgn{name{c.dgn}} "
     "master_unit{ft}}",
     {{"a.dgn", kM}, {"b.dgn", kFt}, {"c.dgn", ZtOaUnit::kMillimetres}}},
    {"UnknownUnitIsMetres",
     kM,
     "master_unit{in} master_unit{foot} dgn{name{a.dgn}}}",
     {{"a.dgn", kM}}},
    // Model files need not exist; wide names survive.
    {"ModelFilesNeedNotExist", kM, "dgn{name{/no/such/model.dgn}}}", {{"/no/such/model.dgn", kM}}},
    {"WideNamesSurvive",
     kM,
     "dgn{name{r\xc3\xb6hre-\xf0\x9f\x94\xa7.dgn}}}",
     {{"r\xc3\xb6hre-\xf0\x9f\x94\xa7.dgn", kM}}},
};

class References : public DriLoaderTest, public ::testing::WithParamInterface<ReferencesCase> {};

// Every reference loads the model it names, where it stands, and in place.
TEST_P(References, NamesAndUnitsOfTheReferences) {
    const ReferencesCase& c = GetParam();
    ZtOpSceneSet set;
    ASSERT_EQ(Read(std::string("DesignReview_Control{") + c.text, &set), 0) << c.text;
    ASSERT_EQ(set.GetSceneRefs().Size(), c.refs.size()) << c.text;
    for (std::size_t i = 0; i < c.refs.size(); ++i) {
        const ZtOpSceneRef* ref = set.GetSceneRefs()[i];
        EXPECT_EQ(ZtUSysString::WideToUtf8(ref->GetSourceName().Str()), c.refs[i].first) << c.text;
        EXPECT_EQ(ref->GetLinearUnits(), c.refs[i].second) << c.text << " " << i;
        EXPECT_EQ(ref->GetLoadFile(), ref->GetSourceName());
        EXPECT_EQ(ref->GetLoadKind(), 2);
        EXPECT_EQ(ref->GetTransform(), ZtLAffine3f());
    }
    EXPECT_EQ(set.GetLinearUnits(), c.setUnits) << c.text;
}

// The case's name stands for it in test names and messages.
void PrintTo(const ReferencesCase& c, std::ostream* out) {
    *out << c.name;
}

INSTANTIATE_TEST_SUITE_P(ControlFiles, References, ::testing::ValuesIn(kReferences),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(ReadSet, InputFilesChooseBetweenModelAndCacheFile) {
    std::filesystem::create_directory(folder_.File("sub"));
    ZtTestWriteBytes(folder_.File("a.kvc"), "cache");
    ZtTestWriteBytes(folder_.File("sub/c.kvc"), "cache");
    const std::string review = "DesignReview_Control{dgn{name{a.dgn}} dgn{name{ b.dgn }}"
                               " dgn{name{sub/c.dgn}} dgn{name{./sub/../a}}}";
    const std::wstring aCache = folder_.WideFile("a.kvc");
    const std::wstring cCache = folder_.WideFile("sub/c.kvc");
    struct Case {
        int inputFiles;
        std::vector<std::wstring> loadFiles;
    };
    const Case cases[] = {
        {0, {L"a.dgn", L"b.dgn", L"sub/c.dgn", L"./sub/../a"}},
        {1, {aCache, L"", cCache, aCache}},
        {2, {aCache, L"b.dgn", cCache, aCache}},
    };
    for (const Case& c : cases) {
        SetInputFiles(c.inputFiles);
        ZtOpSceneSet set;
        ASSERT_EQ(Read(review, &set), 0);
        ASSERT_EQ(set.GetSceneRefs().Size(), 4u);
        // The source name is the name as written, whatever is loaded.
        const wchar_t* names[] = {L"a.dgn", L"b.dgn", L"sub/c.dgn", L"./sub/../a"};
        for (std::size_t i = 0; i < 4; ++i) {
            const ZtOpSceneRef* ref = set.GetSceneRefs()[i];
            EXPECT_EQ(ref->GetLoadFile().Str(), c.loadFiles[i]) << c.inputFiles << " " << i;
            EXPECT_EQ(ref->GetSourceName().Str(), std::wstring(names[i]));
            EXPECT_EQ(ref->GetLoadKind(), 2);
        }
    }
}

TEST_F(ReadSet, ACacheFileIsLookedForBesideTheControlFileNotTheWorkingFolder) {
    std::filesystem::create_directory(folder_.File("reviews"));
    ZtTestWriteBytes(folder_.File("a.kvc"), "cache");
    SetInputFiles(1);
    ZtOpSceneSet set;
    ASSERT_EQ(Read("DesignReview_Control{dgn{name{a.dgn}} dgn{name{../a.dgn}}}", &set,
                   "reviews/review.dri"),
              0);
    EXPECT_EQ(set.GetSceneRefs()[0]->GetLoadFile().Str(), L"");
    EXPECT_EQ(set.GetSceneRefs()[1]->GetLoadFile().Str(), folder_.WideFile("a.kvc"));
}

} // namespace
