#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpSelectionSet.h"
#include "ztplugin/ZtOpState.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace {

ZtOpSelectionSet* NewSet(const wchar_t* name) {
    auto* set = new ZtOpSelectionSet;
    set->SetName(name);
    return set;
}

TEST(ZtOpGuid, FreshGuidsAreDistinctAndShapedLikeRandomOnes) {
    std::set<ZtOpGuid> seen;
    for (int i = 0; i < 1000; ++i) {
        const ZtOpGuid guid = ZtOpGuid::Create();
        EXPECT_TRUE(seen.insert(guid).second);
        const std::string text = guid.ToString();
        ASSERT_EQ(text.size(), 36u);
        EXPECT_EQ(text[8], '-');
        EXPECT_EQ(text[14], '4');
        EXPECT_NE(std::string("89ab").find(text[19]), std::string::npos);
    }
    EXPECT_EQ(ZtOpGuid(0x0123456789abcdefull, 0xfedcba9876543210ull).ToString(),
              "01234567-89ab-cdef-fedc-ba9876543210");
}

// Scratch work under a mark leaves the sequence where it stood: the GUIDs drawn after it
// are those that would have come without the scratch work.
TEST(ZtOpGuid, AMarkHoldsTheSequenceForWhatComesAfterIt) {
    ZtOpGuid next;
    {
        const ZtOpGuidSequenceMark mark;
        next = ZtOpGuid::Create();
        {
            const ZtOpGuidSequenceMark inner;
            ZtOpGuid::Create();
        }
        EXPECT_NE(ZtOpGuid::Create(), next);
    }
    EXPECT_EQ(ZtOpGuid::Create(), next);
}

TEST(ZtOpSelectionSetsElement, AppendMovesItemsAndRenewsDuplicateGuids) {
    ZtOpState state;
    ZtOpSelectionSetsElement* element = ZtOpSelectionSetsElement::Require(state.EditElementList());
    ZtOpFolderItem first;
    first.AddChild(NewSet(L"a"));
    const ZtOpGuid guidA = first.GetChild(0)->GetGuid();
    element->AppendCreateGuidIfDuplicate(&first);
    EXPECT_EQ(first.GetNumChildren(), 0u);

    // A second import whose items carry GUIDs present already, among themselves too, and
    // inside a folder.
    ZtOpFolderItem second;
    ZtOpSelectionSet* copy = NewSet(L"a again");
    copy->SetGuid(guidA);
    second.AddChild(copy);
    auto* folder = new ZtOpFolderItem;
    ZtOpSelectionSet* inner = NewSet(L"inner");
    inner->SetGuid(guidA);
    folder->AddChild(inner);
    second.AddChild(folder);
    const ZtOpGuid folderGuid = folder->GetGuid();
    element->AppendCreateGuidIfDuplicate(&second);

    const ZtOpFolderItem* root = element->Get();
    ASSERT_EQ(root->GetNumChildren(), 3u);
    EXPECT_EQ(root->GetChild(1), copy);
    EXPECT_EQ(root->GetChild(2), folder);
    EXPECT_EQ(root->GetChild(0)->GetGuid(), guidA);
    EXPECT_NE(copy->GetGuid(), guidA);
    EXPECT_NE(inner->GetGuid(), guidA);
    EXPECT_NE(inner->GetGuid(), copy->GetGuid());
    EXPECT_EQ(folder->GetGuid(), folderGuid);
}

} // namespace
