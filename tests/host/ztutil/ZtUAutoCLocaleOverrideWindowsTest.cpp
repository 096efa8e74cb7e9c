#include "LocaleOverrideCases.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cwchar>
#include <locale.h>
#include <string>

namespace {

std::string CategoryName(int category) {
    const char* name = ::setlocale(category, nullptr);
    return name ? name : "";
}

// Runs in a locale with a decimal comma (the thread's own where the C library has them)
// and puts the C locale back afterwards.
class ZtUAutoCLocaleOverrideTest : public ::testing::Test {
protected:
    void SetUp() override {
        perThread_ = ::_configthreadlocale(_ENABLE_PER_THREAD_LOCALE);
        if (!::setlocale(LC_ALL, "German_Germany.1252") && !::setlocale(LC_ALL, "de-DE"))
            GTEST_SKIP() << "no locale with a decimal comma";
    }
    void TearDown() override {
        ::setlocale(LC_ALL, "C");
        if (perThread_ != -1)
            ::_configthreadlocale(perThread_);
    }

    int perThread_ = 0;
};

TEST_F(ZtUAutoCLocaleOverrideTest, OverridesItsCategoriesAndRestoresThem) {
    ExpectEachNumberOverridesItsCategories(CategoryName);
    wchar_t text[32];
    {
        ZtUAutoCLocaleOverride override(ZtUAutoCLocaleOverride::kNumeric);
        std::swprintf(text, 32, L"%.1f", 1.5);
        EXPECT_STREQ(text, L"1.5");
    }
    std::swprintf(text, 32, L"%.1f", 1.5);
    EXPECT_STREQ(text, L"1,5");
}

} // namespace
