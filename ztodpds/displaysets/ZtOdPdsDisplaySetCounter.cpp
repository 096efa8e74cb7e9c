#include "displaysets/ZtOdPdsDisplaySetCounter.h"

#include "ztutil/ZtUSysString.h"
#include "ztutil/ZtUWideString.h"

int ZtOdPdsDisplaySetCounter::Line(ZtUWideStringBuffer& line) {
    if (ZtUSysString::WideStrncmp(line.GetString(), L"<Display Set>", 13) == 0)
        ++count_;
    return 1;
}
