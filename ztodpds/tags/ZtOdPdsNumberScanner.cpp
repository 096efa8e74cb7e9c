#include "tags/ZtOdPdsNumberScanner.h"

#include "ztutil/ZtUWideString.h"

#include <cwchar>
#include <limits>

namespace {

// The white space and the sign in front of a number: where its digits begin.
const wchar_t* SkipToDigits(const wchar_t* p, bool* negative) {
    while (ZtUIsWhiteSpace(*p))
        ++p;
    *negative = *p == L'-';
    if (*p == L'-' || *p == L'+')
        ++p;
    return p;
}

} // namespace

// Inline in each of the scans, so that the one limit each passes folds in and a number
// of a few digits pays for no call.
[[gnu::always_inline]] inline bool ZtOdPdsNumberScanner::Integer(std::uint64_t limit,
                                                                 std::int64_t* value) {
    bool negative = false;
    const wchar_t* p = SkipToDigits(at_, &negative);
    if (*p < L'0' || *p > L'9')
        return false;
    // A character below '0' wraps to a large digit.
    auto digitAt = [](const wchar_t* at) {
        return static_cast<std::uint32_t>(*at) - static_cast<std::uint32_t>(L'0');
    };
    // Eighteen digits make less than 10^18, which 64 bits hold: the digits are taken
    // first with no test but their own, and only a longer number, whose magnitude may
    // have wrapped, is taken again with the cap applied.
    const wchar_t* const digits = p;
    std::uint64_t magnitude = 0;
    for (std::uint32_t digit; (digit = digitAt(p)) < 10; ++p)
        magnitude = magnitude * 10 + digit;
    // The magnitude stops at one past the limit, which the negative side still reaches,
    // so that it never overflows.
    const std::uint64_t cap = limit + 1;
    if (p - digits > 18) {
        // A magnitude up to cap / 10 takes a digit without overflow, and one above it
        // passes the cap with any digit.
        const std::uint64_t mostTimesTen = cap / 10;
        magnitude = 0;
        for (const wchar_t* at = digits; at != p; ++at) {
            const std::uint64_t next = magnitude * 10 + digitAt(at);
            magnitude = magnitude > mostTimesTen || next > cap ? cap : next;
        }
    }
    if (negative)
        *value = magnitude >= cap ? -static_cast<std::int64_t>(limit) - 1
                                  : -static_cast<std::int64_t>(magnitude);
    else
        *value = static_cast<std::int64_t>(magnitude > limit ? limit : magnitude);
    at_ = p;
    return true;
}

bool ZtOdPdsNumberScanner::Int64(std::int64_t* value) {
    return Integer(std::numeric_limits<std::int64_t>::max(), value);
}

bool ZtOdPdsNumberScanner::Int32(std::int32_t* value) {
    std::int64_t wide = 0;
    if (!Integer(std::numeric_limits<std::int32_t>::max(), &wide))
        return false;
    *value = static_cast<std::int32_t>(wide);
    return true;
}

namespace {

// A number of at most 16 decimal digits with at most one point among them, whose digits
// make an integer below 2^53, is that integer divided by a power of ten that a double
// holds exactly: one correctly rounded division, as wcstod rounds. Anything else (an
// exponent, hexadecimal, more digits) is left to wcstod. Gives the end of the number, or
// null.
const wchar_t* ScanPlainDecimal(const wchar_t* text, double* value) {
    static constexpr double kPowersOfTen[] = {1e0, 1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7, 1e8,
                                              1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16};
    bool negative = false;
    const wchar_t* p = SkipToDigits(text, &negative);
    std::uint64_t mantissa = 0;
    int digits = 0;
    int fraction = -1;
    for (;; ++p) {
        if (*p >= L'0' && *p <= L'9') {
            if (++digits > 16)
                return nullptr;
            mantissa = mantissa * 10 + static_cast<std::uint64_t>(*p - L'0');
            fraction += fraction >= 0 ? 1 : 0;
        } else if (*p == L'.' && fraction < 0) {
            fraction = 0;
        } else {
            break;
        }
    }
    // No digits at all, or what makes a longer number. A point with no digit behind it
    // ends the number as wcstod ends it.
    if (digits == 0 || *p == L'e' || *p == L'E' || *p == L'x' || *p == L'X' ||
        mantissa >= (std::uint64_t{1} << 53))
        return nullptr;
    const double magnitude =
        static_cast<double>(mantissa) / kPowersOfTen[fraction < 0 ? 0 : fraction];
    *value = negative ? -magnitude : magnitude;
    return p;
}

} // namespace

bool ZtOdPdsNumberScanner::Double(double* value) {
    if (const wchar_t* end = ScanPlainDecimal(at_, value)) {
        at_ = end;
        return true;
    }
    wchar_t* end = nullptr;
    const double number = std::wcstod(at_, &end);
    if (end == at_)
        return false;
    *value = number;
    at_ = end;
    return true;
}

bool ZtOdPdsNumberScanner::UorVector(ZtOdPdsUorVector* vector) {
    ZtOdPdsUorVector read;
    if (!Int64(&read.x) || !Int64(&read.y) || !Int64(&read.z))
        return false;
    *vector = read;
    return true;
}
