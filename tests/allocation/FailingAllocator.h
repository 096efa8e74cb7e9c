#pragma once
#include <cstdint>

// The test program's global operator new, which can be told to fail one allocation: the
// Nth counted from when it is armed throws std::bad_alloc, and every other one succeeds.
// It also counts the allocations not yet freed, so that a run can be checked for what it
// leaves behind without a sanitizer.
namespace FailingAllocator {

// Counts from now on, and fails the `failAt`th allocation (never for 0).
void Arm(std::uint64_t failAt);
// Stops counting and failing; returns how many allocations were made since Arm.
std::uint64_t Disarm();
// Whether the allocation to fail was reached since Arm.
bool Failed();
// Allocations made and not yet freed, over the whole program.
std::int64_t Live();

} // namespace FailingAllocator
