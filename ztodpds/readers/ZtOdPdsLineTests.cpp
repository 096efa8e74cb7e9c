#include "readers/ZtOdPdsLineTests.h"

#include "ztutil/ZtUSysString.h"
#include "ztutil/ZtUWideString.h"

namespace {

bool IsFramedBy(const ZtUWideStringBuffer& line, wchar_t first, wchar_t last) {
    return line.CharAtPos(0) == first && line.CharAtPos(line.GetLength() - 1) == last;
}

} // namespace

bool ZtOdPdsIsSectionLine(const ZtUWideStringBuffer& line) {
    return IsFramedBy(line, L'[', L']');
}

bool ZtOdPdsIsAngleLine(const ZtUWideStringBuffer& line) {
    return IsFramedBy(line, L'<', L'>');
}

bool ZtOdPdsLineStartsWith(const ZtUWideStringBuffer& line, const wchar_t* keyword,
                           unsigned int* length) {
    const std::size_t keywordLength = ZtUSysString::WideStrlen(keyword);
    if (line.GetLength() < keywordLength)
        return false;
    ZtUWideStringBuffer start;
    line.ExtractSubString(0, keywordLength, &start);
    if (!(start == (keyword ? keyword : L"")))
        return false;
    if (length)
        *length = static_cast<unsigned int>(keywordLength);
    return true;
}
