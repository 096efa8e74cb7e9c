#pragma once
#include <charconv>
#include <string>

// An option's value as one number of type T: the whole text, nothing before or after it.
template <class T> bool ParseWhole(const std::string& text, T* value) {
    const char* first = text.data();
    const char* last = first + text.size();
    const auto [end, error] = std::from_chars(first, last, *value);
    return !text.empty() && error == std::errc() && end == last;
}
