#pragma once
#include "ztlinear/ZtLColor3f.h"

#include <optional>
#include <string>

class ZtOpState;

// The options --redline-color and --redline-thickness: the look of the redlines that the
// document's redline tool draws, and so of the redline tags that a tag import makes.

// "R,G,B": three decimal numbers from 0 to 1, separated by commas with no blanks. False
// with a message for the user otherwise.
bool ParseRedlineColor(const std::string& text, ZtLColor3f* color, std::string* error);
// A whole decimal number from 1 to 1000. False with a message for the user otherwise.
bool ParseRedlineThickness(const std::string& text, int* thickness, std::string* error);

// Sets what is given on the document's redline tool and leaves the rest as it is.
void ApplyRedlineOptions(ZtOpState& state, const std::optional<ZtLColor3f>& color,
                         const std::optional<int>& thickness);
