#include "ztutil/ZtUAutoCLocaleOverride.h"

#include <clocale>
#include <locale.h>

namespace {

int CategoryMask(int category) {
    switch (category) {
    case ZtUAutoCLocaleOverride::kAll:
        return LC_ALL_MASK;
    case ZtUAutoCLocaleOverride::kCollate:
        return LC_COLLATE_MASK;
    case ZtUAutoCLocaleOverride::kCtype:
        return LC_CTYPE_MASK;
    case ZtUAutoCLocaleOverride::kMonetary:
        return LC_MONETARY_MASK;
    case ZtUAutoCLocaleOverride::kNumeric:
        return LC_NUMERIC_MASK;
    case ZtUAutoCLocaleOverride::kTime:
        return LC_TIME_MASK;
    default:
        return 0;
    }
}

} // namespace

ZtUAutoCLocaleOverride::ZtUAutoCLocaleOverride(int category) {
    const int mask = CategoryMask(category);
    if (mask == 0)
        return;
    // The new locale is the thread's current one with the category replaced, so that the
    // other categories stay as they were. All categories need no base; the C library
    // would not take one over then.
    locale_t base = static_cast<locale_t>(0);
    if (mask != LC_ALL_MASK) {
        base = ::duplocale(::uselocale(static_cast<locale_t>(0)));
        if (base == static_cast<locale_t>(0))
            return;
    }
    const locale_t replaced = ::newlocale(mask, "C", base);
    if (replaced == static_cast<locale_t>(0)) {
        if (base != static_cast<locale_t>(0))
            ::freelocale(base);
        return;
    }
    previous_ = ::uselocale(replaced);
    override_ = replaced;
}

ZtUAutoCLocaleOverride::~ZtUAutoCLocaleOverride() {
    if (!override_)
        return;
    ::uselocale(static_cast<locale_t>(previous_));
    ::freelocale(static_cast<locale_t>(override_));
}
