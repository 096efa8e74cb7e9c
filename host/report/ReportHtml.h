#pragma once
#include <array>
#include <cstdint>
#include <string>
#include <string_view>

// The small writers of the review page's text: escaped markup, numbers and colours.

// Appends `text` with the characters that mean markup escaped, and each line end (LF, CR
// or a pair of them) as one LF.
void AppendEscaped(std::string& out, const std::string& text);
std::string Escaped(const std::string& text);
// The same as a bidirectional isolate (<bdi>): a text from a file, whose direction marks
// and overrides then reach no further than the text itself.
void AppendIsolated(std::string& out, const std::string& text);
std::string Isolated(const std::string& text);

// A number in its shortest exact form, for what a reader of the page computes with.
std::string Exact(double value);
// A pixel position to two decimals: a hundredth of a pixel is more than a browser shows.
std::string Px(double value);
// A pixel coordinate of a drawing, as short as two decimals allow ("12", "3.5", "-0.25"),
// kept within ten million pixels of the origin; one that is not a number is 0.
void AppendCoord(std::string& out, double value);

// An RGBA colour.
using Rgba = std::array<std::uint8_t, 4>;
// A colour for each key (a level or a colour number), spread round the hue circle.
Rgba KeyColour(int key);
// "#rrggbb".
std::string Hex(const Rgba& colour);

// Base64 with padding, as in a data URI.
std::string Base64(std::string_view bytes);
