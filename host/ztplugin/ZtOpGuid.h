#pragma once
#include <cstdint>
#include <string>

// The identity of a saved item. Fresh GUIDs come from a fixed pseudo-random sequence that
// starts alike in every process, so that a run of the host gives the same GUIDs each time.
// They are distinct in practice; whoever must be sure tests for duplicates.
class ZtOpGuid {
public:
    ZtOpGuid() = default;
    ZtOpGuid(std::uint64_t high, std::uint64_t low) : high_(high), low_(low) {}

    // The next GUID of the process's sequence, in the shape of a random (version 4) GUID.
    static ZtOpGuid Create();

    std::uint64_t GetHigh() const { return high_; }
    std::uint64_t GetLow() const { return low_; }
    bool IsNull() const { return high_ == 0 && low_ == 0; }
    // The usual text form, lower-case hex: 8-4-4-4-12 digits.
    std::string ToString() const;

    bool operator==(const ZtOpGuid& other) const = default;
    auto operator<=>(const ZtOpGuid& other) const = default;

private:
    std::uint64_t high_ = 0;
    std::uint64_t low_ = 0;
};

// Holds the process's sequence of GUIDs where it stands while it lives: GUIDs drawn
// meanwhile, for a scratch document that goes before it does, leave the sequence as if
// they had not been drawn, so that what a run shows does not depend on such work.
class ZtOpGuidSequenceMark {
public:
    ZtOpGuidSequenceMark();
    ~ZtOpGuidSequenceMark();
    ZtOpGuidSequenceMark(const ZtOpGuidSequenceMark&) = delete;
    ZtOpGuidSequenceMark& operator=(const ZtOpGuidSequenceMark&) = delete;

private:
    std::uint64_t mark_;
};
