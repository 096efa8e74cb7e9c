#include "review/AttributeSource.h"

// Debian ships neither SQLite nor libpq for MinGW, so the Windows build reads no project
// database. The source is not named: a URI may hold a password.
std::unique_ptr<AttributeSource> AttributeSource::Open(const std::string&, std::string* error) {
    *error = "--attributes: this build reads no attribute sources; the Windows build is made "
             "without SQLite and libpq";
    return nullptr;
}

bool AttributeSource::Available() {
    return false;
}
