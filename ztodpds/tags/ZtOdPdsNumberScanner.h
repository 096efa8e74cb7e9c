#pragma once
#include "tags/ZtOdPdsUorVector.h"

#include <cstdint>

// Reads the numbers of a tag file's values one after the other, as the formats "%I64d",
// "%d" and "%g" of the C library's scan would, but portably: each number may have white
// space in front of it, then an optional sign and decimal digits; a floating-point
// number may have any form that wcstod takes. An integer beyond the range of its field
// saturates at the field's limits. A number that fails leaves its field alone and the
// scanner where it stood.
class ZtOdPdsNumberScanner {
public:
    // `text` must end with a NUL and outlive the scanner.
    explicit ZtOdPdsNumberScanner(const wchar_t* text) : at_(text) {}

    bool Int64(std::int64_t* value);
    bool Int32(std::int32_t* value);
    // Read under the C numeric locale by the caller, so that the decimal sign is a point.
    bool Double(double* value);
    // Three Int64 numbers, or none: the vector is left alone unless all three scan.
    bool UorVector(ZtOdPdsUorVector* vector);

private:
    // The digits with their sign, clamped to [-limit - 1, limit].
    bool Integer(std::uint64_t limit, std::int64_t* value);

    const wchar_t* at_;
};
