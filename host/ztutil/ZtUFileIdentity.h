#pragma once
#include <cstdint>

// Which file a name or a descriptor leads to, whatever the way: the device and the
// file's number on it (on Windows, the volume's serial number and the file index), so
// that two names of one file, through links or not, compare equal.
struct ZtUFileIdentity {
    std::uint64_t device = 0;
    std::uint64_t file = 0;

    friend bool operator==(const ZtUFileIdentity&, const ZtUFileIdentity&) = default;
};
