#include "ztplugin/ZtOpState.h"
#include "ztplugin/ZtOpLock.h"
#include "ztplugin/ZtOpNextCommentIdElement.h"
#include "ztplugin/ZtOpSavedItemsElement.h"

#include <gtest/gtest.h>

namespace {

TEST(ZtOpState, ANewDocumentsElementsAndTools) {
    ZtOpState state;
    ASSERT_NE(ZtOpSavedViewsElement::Get(&state), nullptr);
    EXPECT_EQ(ZtOpSavedViewsElement::Get(&state)->Get()->GetNumChildren(), 0u);
    const ZtOpSelectionSetsElement* sets = ZtOpSelectionSetsElement::Get(&state);
    ASSERT_NE(sets, nullptr);
    EXPECT_EQ(sets->Get()->GetNumChildren(), 0u);
    EXPECT_EQ(ZtOpSelectionSetsElement::Require(state.EditElementList()), sets);
    EXPECT_EQ(ZtOpSelectionSetsElement::Get(nullptr), nullptr);
    EXPECT_EQ(ZtOpSavedViewsElement::Get(nullptr), nullptr);
    EXPECT_EQ(state.GetNextTagId(0), 1u);
    EXPECT_EQ(state.GetNextCommentId(0), 1u);
}

template <class Element> void* EditOf(ZtOpState* state, ZtOpLock* lock) {
    return Element::Edit(state, lock);
}

TEST(ZtOpState, AnElementIsEditedOnlyUnderALockOfItsClassAndState) {
    const std::pair<const ZtOpElementClass*, void* (*)(ZtOpState*, ZtOpLock*)> elements[] = {
        {ZtOpNextCommentIdElement::GetClass(), EditOf<ZtOpNextCommentIdElement>},
        {ZtOpSelectionSetsElement::GetClass(), EditOf<ZtOpSelectionSetsElement>},
        {ZtOpSavedViewsElement::GetClass(), EditOf<ZtOpSavedViewsElement>},
    };
    ZtOpState state;
    ZtOpState other;
    for (const auto& [elementClass, edit] : elements) {
        EXPECT_EQ(edit(&state, nullptr), nullptr) << elementClass->name;
        {
            ZtOpAutoLock lock(elementClass, &state, 0);
            EXPECT_TRUE(state.GetElementList().IsLocked(elementClass));
            EXPECT_NE(edit(&state, lock), nullptr) << elementClass->name;
            EXPECT_EQ(edit(&other, lock), nullptr) << elementClass->name;
            for (const auto& [otherClass, otherEdit] : elements)
                if (otherClass != elementClass) {
                    EXPECT_EQ(otherEdit(&state, lock), nullptr) << elementClass->name;
                }
        }
        EXPECT_FALSE(state.GetElementList().IsLocked(elementClass));
    }
    ZtOpAutoLock stateless(ZtOpSelectionSetsElement::GetClass(), nullptr, 0);
    EXPECT_EQ(static_cast<ZtOpLock*>(stateless), nullptr);
}

TEST(ZtOpState, TheNextIdsLiveInTheirElement) {
    ZtOpState state;
    state.SetNextTagId(7);
    state.SetNextCommentId(12);
    const ZtOpNextCommentIdElement* element = ZtOpNextCommentIdElement::Get(state.GetElementList());
    ASSERT_NE(element, nullptr);
    EXPECT_EQ(element->GetTagId(), 7u);
    EXPECT_EQ(element->GetCommentId(), 12u);
    ZtOpAutoLock lock(ZtOpNextCommentIdElement::GetClass(), &state, 0);
    ZtOpNextCommentIdElement::Edit(&state, lock)->EditTagId() = 40;
    ZtOpNextCommentIdElement::Edit(&state, lock)->EditCommentId() = 41;
    EXPECT_EQ(state.GetNextTagId(), 40u);
    EXPECT_EQ(state.GetNextCommentId(), 41u);
}

} // namespace
