#pragma once

class ZtUWideStringBuffer;

// Tests by which line consumers recognise a line, on the line as delivered (untrimmed).
// The first two expect a non-empty line, as the line pump delivers.

// "[...]": a section header.
bool ZtOdPdsIsSectionLine(const ZtUWideStringBuffer& line);
// "<...>": a display-set marker.
bool ZtOdPdsIsAngleLine(const ZtUWideStringBuffer& line);
// True if `line` begins with `keyword`, with anything behind it; then writes the
// keyword's length to `length` (if given), which is left alone otherwise.
bool ZtOdPdsLineStartsWith(const ZtUWideStringBuffer& line, const wchar_t* keyword,
                           unsigned int* length);
