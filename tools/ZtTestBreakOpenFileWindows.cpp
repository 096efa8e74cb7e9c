#include "tools/ZtTestFiles.h"

// Windows has no way to swap a descriptor under its holder that the tests could use: the
// tests that need a broken file skip here.
bool ZtTestBreakOpenFile(const std::string&) {
    return false;
}

bool ZtTestCanBreakOpenFiles() {
    return false;
}
