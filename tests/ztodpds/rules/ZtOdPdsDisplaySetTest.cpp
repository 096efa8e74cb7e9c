#include "DisplaySetTestSupport.h"

#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::wstring>;
using Expected = std::vector<std::string>;

TEST_F(DisplaySets, NestedScopeGivesTheSixConditionsInOrder) {
    EXPECT_EQ(Read({L"10 Main pipes", L"<Definition>", L"FIND Level 3, 7", L"KEEP ONLY Color 2",
                    L"ADD", L"FIND File a.dgn", L"THROW AWAY Level 9", L"END FIND", L"END FIND"}),
              1);
    ASSERT_EQ(Count(), 1u);
    EXPECT_EQ(Name(0), "Main pipes");
    EXPECT_TRUE(Spec(0).IsSelectAll());
    EXPECT_EQ(Each(Spec(0), Full), (std::vector<std::string>{
                                       "-|ZtStdLevel/Level|5|6|Level 7",
                                       "-|ZtStdColour/Colour|5|6|Colour 2",
                                       "-|ZtStdLevel/Level|69|6|Level 3",
                                       "-|ZtStdColour/Colour|5|6|Colour 2",
                                       "-|ZtStdSourceFile/Source File|69|6|a.dgn",
                                       "-|ZtStdLevel/Level|5|7|Level 9",
                                   }));
    EXPECT_TRUE(Set(0).GetComments().IsEmpty());
}

TEST_F(DisplaySets, StatementLanguage) {
    struct Case {
        const char* what;
        Lines definition;    // the lines behind "<Definition>"
        Expected conditions; // empty: no selection set
    };
    const Case cases[] = {
        {"one FIND needs no END FIND", {L"FIND Level 1"}, {"L1"}},
        {"no FIND, only steps", {L"ADD Level 1", L"KEEP ONLY Level 2"}, {}},
        {"one character behind the keyword is skipped", {L"FIND-Level 1"}, {"L1"}},
        {"whatever it is", {L"FINDLevel 1"}, {}},
        {"a second blank begins the criterion", {L"FIND  Level 1"}, {}},
        {"statements are trimmed", {L"  FIND Level 1  "}, {"L1"}},
        {"keywords are upper case", {L"find Level 1"}, {}},
        {"FIND without a criterion is dropped",
         {L"FIND", L"FIND ALL BUT", L"FIND Level 4"},
         {"L4"}},
        {"unknown criterion is dropped", {L"FIND Frob 1", L"FIND Level 4"}, {"L4"}},
        {"the first FIND stays", {L"FIND Level 1", L"FIND Level 2"}, {"L1"}},
        {"FIND ALL BUT", {L"FIND ALL BUT Level 1, 2"}, {"L1~7", "L2~7"}},
        {"the FIND comes first wherever it stands",
         {L"ADD Level 2", L"FIND Level 1", L"KEEP ONLY Color 3"},
         {"L2", "C3", "*L1", "C3"}},
        {"steps apply in order, without precedence",
         {L"FIND Level 1", L"KEEP ONLY Level 2", L"ADD Level 3"},
         {"L1", "L2", "*L3"}},
        {"ADD ALL BUT and THROW AWAY negate their step",
         {L"FIND Level 1", L"ADD ALL BUT Level 2", L"THROW AWAY Color 3"},
         {"L2~7", "C3~7", "*L1", "C3~7"}},
        {"ADD Frob opens no scope: its lines go to the enclosing scope",
         {L"FIND Level 1", L"ADD Frob 1", L"FIND Level 2", L"KEEP ONLY Level 3", L"END FIND"},
         {"L1", "L3"}},
        {"two negations cancel",
         {L"FIND Level 1", L"ADD ALL BUT", L"FIND ALL BUT Level 2", L"END FIND"},
         {"L1", "*L2"}},
        {"a nested scope without FIND makes the whole set empty",
         {L"FIND Level 1", L"ADD", L"KEEP ONLY Level 2", L"END FIND", L"ADD Level 3"},
         {}},
        {"an unknown reference makes it empty", {L"FIND Level 1", L"ADD Display Set x"}, {}},
        {"ENDFIND is no keyword, END FIND NOW is one",
         {L"FIND Level 1", L"ADD", L"FIND Level 2", L"ENDFIND", L"KEEP ONLY Level 3",
          L"END FIND NOW", L"KEEP ONLY Level 4"},
         {"L2", "L3", "L4", "*L1", "L4"}},
        {"after the root's END FIND nothing more is read",
         {L"FIND Level 1", L"END FIND", L"ADD Level 2", L"END FIND", L"END FIND",
          L"KEEP ONLY Level 3"},
         {"L1"}},
        {"ADDING is ADD with the text NG", {L"FIND Level 1", L"ADDING"}, {"L1"}},
        {"a wildcard comparison negated",
         {L"FIND Level 1", L"THROW AWAY Data name  = P*"},
         {"L1", "P*~13+41", "P*~3+41"}},
    };
    for (const Case& c : cases) {
        Lines lines{L"1 set", L"<Definition>"};
        lines.insert(lines.end(), c.definition.begin(), c.definition.end());
        const std::size_t before = Count();
        Read(lines);
        if (c.conditions.empty()) {
            EXPECT_EQ(Count(), before) << c.what;
            continue;
        }
        ASSERT_EQ(Count(), before + 1) << c.what;
        EXPECT_EQ(Conditions(before), c.conditions) << c.what;
    }
}

TEST_F(DisplaySets, LineStatesHeaderAndComment) {
    Read({L" 12 Main  pipes ", L"North rack", L"FIND Level 9", L"  Second bay  ", L"<Other>",
          L"FIND Level 8", L"<Definition>", L"FIND Level 1", L"<Other>", L"KEEP ONLY Level 7",
          L"<Definition>", L"KEEP ONLY Level 2", L" <Definition>"});
    EXPECT_EQ(Made(), (Expected{"Main  pipes: L1 L2"}));
    ASSERT_EQ(Set(0).GetComments().Size(), 1u);
    EXPECT_EQ(Set(0).GetComments()[0]->GetId(), 0u);
    EXPECT_EQ(Set(0).GetComments()[0]->GetBody().Str(),
              L"North rack\n\rFIND Level 9\n\r  Second bay  ");
}

TEST_F(DisplaySets, HeaderForms) {
    struct Case {
        const wchar_t* header;
        int number;
        const wchar_t* name;
    };
    const Case cases[] = {
        {L"10 Main pipes", 10, L"Main pipes"},
        {L"Main pipes", 0, L"pipes"},
        {L"7\tTabbed", 7, L""},
        {L"-3 x", -3, L"x"},
    };
    for (const Case& c : cases) {
        ZtOdPdsDisplaySet set(&context);
        set.AddRef();
        set.Begin();
        ZtUWideStringBuffer line(c.header);
        set.Line(line);
        EXPECT_EQ(set.GetNumber(), c.number);
        EXPECT_EQ(set.GetName().Str(), c.name);
        EXPECT_EQ(set.GetState(), ZtOdPdsDisplaySet::kComment);
        EXPECT_EQ(ZtOdPdsDisplaySetDict::Instance()->Find(c.name), &set);
        EXPECT_EQ(set.GetRefCount(), 2);
        ZtOdPdsDisplaySetDict::Destroy();
        EXPECT_EQ(set.GetRefCount(), 1);
    }
}

TEST_F(DisplaySets, AngleLineInPlaceOfTheHeaderLeavesTheSetUnnamedAndUnlisted) {
    Read({L"<Definition>", L"FIND Level 1"});
    EXPECT_EQ(Made(), (Expected{": L1"}));
    EXPECT_EQ(ZtOdPdsDisplaySetDict::Instance()->Find(L""), nullptr);
}

TEST_F(DisplaySets, HeaderWithoutDefinitionYieldsNothing) {
    EXPECT_EQ(Read({L"1 a", L"FIND Level 1"}), 1);
    EXPECT_EQ(Count(), 0u);
}

TEST_F(DisplaySets, ReferencesShareTheTreesOfEarlierSets) {
    Read(
        {L"10 Main pipes", L"<Definition>", L"FIND Level 3, 7", L"KEEP ONLY Color 2", L"END FIND"});
    Read({L"11 Other pipes", L"<Definition>", L"FIND ALL BUT Display Set Main pipes", L"END FIND"});
    ZtOdPdsDisplaySetDict* dict = ZtOdPdsDisplaySetDict::Instance();
    EXPECT_EQ(dict->Find(L"Main pipes")->GetTree(), dict->Find(L"Other pipes")->GetTree());
    // A later set that refers to the same tree gets it as the earlier sets left it.
    Read({L"12 Again", L"<Definition>", L"FIND Display Set Main pipes"});
    // The negation runs through the shared tree in place. Colour 2, shared by both groups
    // of the first set, is toggled twice and stays plain, and flag 64 stays where earlier
    // emits put it: the result is no complement of the first set. This is how sharing
    // works, and it is kept.
    EXPECT_EQ(Made(), (Expected{"Main pipes: L7 C2 *L3 C2",
                                "Other pipes: C2 *L3~7 *L7~7 *L3~7 *C2 *C2 *L7~7 *C2",
                                "Again: *C2 *L3~7 *L7~7 *L3~7 *C2 *C2 *L7~7 *C2"}));
}

TEST_F(DisplaySets, ReferencesFindOnlySetsThatEndedBefore) {
    Read({L"1 self", L"<Definition>", L"FIND Display Set self"});
    Read({L"2 ahead", L"<Definition>", L"FIND Display Set later"});
    Read({L"3 later", L"<Definition>", L"FIND Level 1"});
    Read({L"4 empty", L"<Definition>", L"KEEP ONLY Level 1"});
    Read({L"5 on empty", L"<Definition>", L"FIND Display Set empty"});
    Read({L"6 two", L"<Definition>", L"FIND Display Set later, later"});
    EXPECT_EQ(Made(), (Expected{"later: L1", "two: L1 *L1"}));
}

TEST_F(DisplaySets, LaterSetOfTheSameNameReplacesTheEarlierOne) {
    Read({L"1 dup", L"<Definition>", L"FIND Level 1"});
    Read({L"2 dup", L"<Definition>", L"FIND Level 2"});
    Read({L"3 user", L"<Definition>", L"FIND Display Set dup"});
    // A set that refers to its own name finds itself, which has no tree yet.
    Read({L"4 dup", L"<Definition>", L"FIND Display Set dup"});
    EXPECT_EQ(Made(), (Expected{"dup: L1", "dup: L2", "user: L2"}));
    EXPECT_EQ(ZtOdPdsDisplaySetDict::Instance()->Find(L"dup")->GetNumber(), 4);
    EXPECT_EQ(ZtOdPdsDisplaySetDict::Instance()->Find(L"Dup"), nullptr);
}

TEST_F(DisplaySets, SetThatRefersToTheSameSetTwiceIsAbandonedBeforeACycle) {
    Read({L"1 x", L"<Definition>", L"FIND Level 1", L"KEEP ONLY Level 2"});
    EXPECT_EQ(Read({L"2 y", L"<Definition>", L"FIND Display Set x", L"KEEP ONLY Display Set x"}),
              0);
    EXPECT_EQ(ZtOdPdsDisplaySetDict::Instance()->Find(L"y")->GetTree(), nullptr);
    // The referenced tree is still sound.
    Read({L"3 z", L"<Definition>", L"FIND Display Set x"});
    EXPECT_EQ(Made(), (Expected{"x: L1 L2", "z: L1 L2"}));
}

TEST(ZtOdPdsDisplaySetDict, HoldsOneCountOnASetAddedTwiceUntilDestroyed) {
    auto* set = new ZtOdPdsDisplaySet(nullptr);
    set->AddRef();
    ZtOdPdsDisplaySetDict* dict = ZtOdPdsDisplaySetDict::Instance();
    EXPECT_EQ(dict->Find(L""), nullptr);
    dict->Add(set);
    dict->Add(set);
    EXPECT_EQ(set->GetRefCount(), 2);
    ZtOdPdsDisplaySetDict::Destroy();
    ZtOdPdsDisplaySetDict::Destroy();
    EXPECT_EQ(set->GetRefCount(), 1);
    EXPECT_EQ(ZtOdPdsDisplaySetDict::Instance()->Size(), 0u);
    set->Release();
    ZtOdPdsDisplaySetDict::Destroy();
}

} // namespace
