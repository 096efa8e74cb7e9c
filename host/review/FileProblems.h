#pragma once
#include <string>

class ZtOpState;

// What the host can tell the user of why a file could not be used, beyond a status code
// that covers several causes. Each is empty when nothing shows.

// Why `path` can't be read as a file, with the operating system's reason.
std::string ReadProblem(const std::string& path);
// Why a file can't be written at `path`, found from its folder.
std::string WriteProblem(const std::string& path);
// Whether the document's scene holds a model, which gives tags their units.
bool HasModel(const ZtOpState& state);
