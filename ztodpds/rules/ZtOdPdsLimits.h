#pragma once
#include <cstddef>
#include <cstdint>

// Bounds on the work of one display set, so that no input can exhaust the stack or the
// memory, or keep the rewriting going for ever. A set that passes one is abandoned: it
// yields no selection set.

// Scopes open at once while its statements are read; the root scope counts 1.
constexpr std::size_t kZtOdPdsMaxScopeDepth = 10000;
// Nodes on the longest path of its evaluated tree; a lone statement has depth 1.
constexpr std::size_t kZtOdPdsMaxTreeDepth = 10000;
// Conditions of its flat form, and of its find query.
constexpr std::uint64_t kZtOdPdsMaxConditions = 1000000;
// Conditions of the find queries made from one file, all its sets together: sets that
// repeat others can make output far larger than the file. The set that would pass it is
// abandoned, and so is every set behind it.
constexpr std::uint64_t kZtOdPdsMaxFileConditions = 4000000;
// Operations that Distribute may allocate for it.
constexpr std::uint64_t kZtOdPdsMaxNewNodes = 2000000;
// Rotations that Flatten may make for it.
constexpr std::uint64_t kZtOdPdsMaxRotations = 10000000;
