#include "ztutil/ZtUAutoCLocaleOverride.h"

#include <clocale>
#include <locale.h>
#include <string>

namespace {

int PlatformCategory(int category) {
    switch (category) {
    case ZtUAutoCLocaleOverride::kAll:
        return LC_ALL;
    case ZtUAutoCLocaleOverride::kCollate:
        return LC_COLLATE;
    case ZtUAutoCLocaleOverride::kCtype:
        return LC_CTYPE;
    case ZtUAutoCLocaleOverride::kMonetary:
        return LC_MONETARY;
    case ZtUAutoCLocaleOverride::kNumeric:
        return LC_NUMERIC;
    case ZtUAutoCLocaleOverride::kTime:
        return LC_TIME;
    default:
        return -1;
    }
}

// What the override replaced: the thread's per-thread-locale setting and the category's
// locale name.
struct Saved {
    int perThread;
    int category;
    std::string name;
};

void RestoreThreadSetting(int perThread) {
    if (perThread != -1)
        ::_configthreadlocale(perThread);
}

} // namespace

// The C library's locale is process-wide unless the thread asks for its own; the
// override turns the thread's own locale on, so that setlocale touches no other thread.
ZtUAutoCLocaleOverride::ZtUAutoCLocaleOverride(int category) {
    const int lc = PlatformCategory(category);
    if (lc < 0)
        return;
    // A C library without thread locales (Wine's msvcrt says -1) leaves the process's
    // locale to override: the host reads and writes files from one thread.
    const int perThread = ::_configthreadlocale(_ENABLE_PER_THREAD_LOCALE);
    const char* current = ::setlocale(lc, nullptr);
    auto* saved = new Saved{perThread, lc, current ? current : "C"};
    if (!::setlocale(lc, "C")) {
        RestoreThreadSetting(perThread);
        delete saved;
        return;
    }
    override_ = saved;
}

ZtUAutoCLocaleOverride::~ZtUAutoCLocaleOverride() {
    auto* saved = static_cast<Saved*>(override_);
    if (!saved)
        return;
    ::setlocale(saved->category, saved->name.c_str());
    RestoreThreadSetting(saved->perThread);
    delete saved;
}
