#pragma once
#include "ztutil/ZtUAutoCLocaleOverride.h"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

// Overrides by each of the host's numbers (0 all, 1 to 5 one each, anything else none) in
// a thread whose locale is not "C" in any category, and checks through `name` (the
// platform's name of a category's locale) which categories are "C" inside, and that none
// is afterwards.
inline void ExpectEachNumberOverridesItsCategories(std::string (*name)(int)) {
    const int categories[] = {LC_COLLATE, LC_CTYPE, LC_MONETARY, LC_NUMERIC, LC_TIME};
    for (int number : {0, 1, 2, 3, 4, 5, 17, -1}) {
        {
            ZtUAutoCLocaleOverride override(number);
            for (int i = 0; i < 5; ++i) {
                const bool overridden = number == 0 || number == i + 1;
                EXPECT_EQ(name(categories[i]) == "C", overridden) << number << " " << i;
            }
        }
        for (int category : categories)
            EXPECT_NE(name(category), "C") << number;
    }
}
