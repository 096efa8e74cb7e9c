#pragma once
#include <string>

// The project database of the big generated scene (ZtTestBigModel): element_attributes
// with four rows for each linked piece (entity 12, the piece's number as occurrence): a
// line number shared by four pieces, a nominal size, a spec and a service, each of a few
// values. Written to `path` (replaced); false with the reason in `error`.
bool ZtTestWriteBigAttributes(const std::string& path, int elements, std::string* error);
