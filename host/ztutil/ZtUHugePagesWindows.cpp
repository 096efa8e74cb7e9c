#include "ztutil/ZtUHugePages.h"

// Large pages on Windows need a privilege that a desktop user lacks; nothing to ask for.
void ZtUAdviseHugePages(void*, std::size_t) {}
