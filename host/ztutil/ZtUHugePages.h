#pragma once
#include <cstddef>

// Asks the system to back the whole 2 MiB pages inside [block, block + bytes) with huge
// pages: a large array written once from end to end then takes one page fault for each
// 2 MiB rather than for each 4 KiB. Only advice; where huge pages are not to be had, the
// memory works all the same.
void ZtUAdviseHugePages(void* block, std::size_t bytes);
