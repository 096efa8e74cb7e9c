#include "tags/ZtOdPdsNumberScanner.h"

#include "ztutil/ZtUWideString.h"

#include <cwchar>
#include <limits>

bool ZtOdPdsNumberScanner::Integer(std::uint64_t limit, std::int64_t* value) {
    const wchar_t* p = at_;
    while (ZtUIsWhiteSpace(*p))
        ++p;
    const bool negative = *p == L'-';
    if (*p == L'-' || *p == L'+')
        ++p;
    if (*p < L'0' || *p > L'9')
        return false;
    // The magnitude stops at one past the limit, which the negative side still reaches,
    // so that it never overflows: a magnitude up to cap / 10 takes a digit without
    // overflow, and one above it passes the cap with any digit. One division a number.
    const std::uint64_t cap = limit + 1;
    const std::uint64_t mostTimesTen = cap / 10;
    std::uint64_t magnitude = 0;
    for (; *p >= L'0' && *p <= L'9'; ++p) {
        const auto digit = static_cast<std::uint64_t>(*p - L'0');
        const std::uint64_t next = magnitude * 10 + digit;
        magnitude = magnitude > mostTimesTen || next > cap ? cap : next;
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

bool ZtOdPdsNumberScanner::Double(double* value) {
    wchar_t* end = nullptr;
    const double number = std::wcstod(at_, &end);
    if (end == at_)
        return false;
    *value = number;
    at_ = end;
    return true;
}
