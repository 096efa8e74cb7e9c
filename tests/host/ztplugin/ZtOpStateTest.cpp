#include "ztplugin/ZtOpState.h"
#include "ztplugin/ZtOpLock.h"
#include "ztplugin/ZtOpNextCommentIdElement.h"
#include "ztplugin/ZtOpSavedItemsElement.h"

#include <gtest/gtest.h>

namespace {

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

} // namespace
