#include "ztutil/ZtUAutoCLocaleOverride.h"

#include <gtest/gtest.h>

#include <cwchar>
#include <langinfo.h>
#include <locale.h>
#include <string>

namespace {

std::string CategoryName(int category) {
    return ::nl_langinfo(_NL_LOCALE_NAME(category));
}

// Runs with a thread locale other than "C" in every category, restored afterwards.
class ZtUAutoCLocaleOverrideTest : public ::testing::Test {
protected:
    void SetUp() override {
        locale_ = ::newlocale(LC_ALL_MASK, "C.UTF-8", static_cast<locale_t>(0));
        if (locale_ == static_cast<locale_t>(0))
            GTEST_SKIP() << "the C.UTF-8 locale is not installed";
        previous_ = ::uselocale(locale_);
    }
    void TearDown() override {
        if (locale_ == static_cast<locale_t>(0))
            return;
        ::uselocale(previous_);
        ::freelocale(locale_);
    }

    locale_t locale_ = static_cast<locale_t>(0);
    locale_t previous_ = static_cast<locale_t>(0);
};

TEST_F(ZtUAutoCLocaleOverrideTest, OverridesItsCategoriesAndRestoresThem) {
    const std::string user = CategoryName(LC_NUMERIC);
    ASSERT_NE(user, "C");
    // By the host's numbers: 0 is all, 1 to 5 one each, anything else none.
    const int categories[] = {LC_COLLATE, LC_CTYPE, LC_MONETARY, LC_NUMERIC, LC_TIME};
    for (int number : {0, 1, 2, 3, 4, 5, 17, -1}) {
        {
            ZtUAutoCLocaleOverride override(number);
            for (int i = 0; i < 5; ++i) {
                const bool overridden = number == 0 || number == i + 1;
                EXPECT_EQ(CategoryName(categories[i]), overridden ? "C" : user)
                    << number << " " << i;
            }
        }
        for (int category : categories)
            EXPECT_EQ(CategoryName(category), user) << number;
        EXPECT_EQ(::uselocale(static_cast<locale_t>(0)), locale_);
    }
}

TEST_F(ZtUAutoCLocaleOverrideTest, OverridesNest) {
    {
        ZtUAutoCLocaleOverride outer(4);
        {
            ZtUAutoCLocaleOverride inner(2);
            EXPECT_EQ(CategoryName(LC_NUMERIC), "C");
            EXPECT_EQ(CategoryName(LC_CTYPE), "C");
        }
        EXPECT_EQ(CategoryName(LC_NUMERIC), "C");
        EXPECT_NE(CategoryName(LC_CTYPE), "C");
    }
    EXPECT_EQ(::uselocale(static_cast<locale_t>(0)), locale_);
}

// Where a locale with a decimal comma is installed, numbers print with a point inside.
TEST(ZtUAutoCLocaleOverride, NumbersPrintWithAPoint) {
    locale_t comma = static_cast<locale_t>(0);
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "de_DE", "fr_FR"})
        if ((comma = ::newlocale(LC_ALL_MASK, name, static_cast<locale_t>(0))))
            break;
    if (comma == static_cast<locale_t>(0))
        GTEST_SKIP() << "no locale with a decimal comma is installed";
    const locale_t previous = ::uselocale(comma);
    wchar_t text[32];
    std::swprintf(text, 32, L"%.1f", 1.5);
    EXPECT_STREQ(text, L"1,5");
    {
        ZtUAutoCLocaleOverride override(4);
        std::swprintf(text, 32, L"%.1f", 1.5);
        EXPECT_STREQ(text, L"1.5");
    }
    ::uselocale(previous);
    ::freelocale(comma);
}

} // namespace
