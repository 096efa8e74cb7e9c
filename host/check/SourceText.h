#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// A checked file's text as the readers see it (through the host's stream, decoded and with
// CR LF made LF), split into lines at each LF: what a finding's source line shows, and
// where a character offset stands.
class SourceText {
public:
    // Reads `path`; an empty text if it can't be read.
    explicit SourceText(const std::wstring& path);

    // Line `line` (from 1) without its line end; empty past the end.
    std::wstring_view Line(std::uint32_t line) const;
    // The line and column (from 1) of the character at `offset`.
    std::pair<std::uint32_t, std::uint32_t> PositionOf(std::uint64_t offset) const;

private:
    std::wstring text_;
    std::vector<std::size_t> lineStarts_;
};
