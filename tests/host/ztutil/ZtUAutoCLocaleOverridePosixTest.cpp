#include "LocaleOverrideCases.h"

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
    ExpectEachNumberOverridesItsCategories(CategoryName);
    EXPECT_EQ(::uselocale(static_cast<locale_t>(0)), locale_);
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
