#include "tags/ZtOdPdsTagCounter.h"

#include "ztutil/ZtUSysString.h"
#include "ztutil/ZtUWideString.h"

int ZtOdPdsTagCounter::Line(ZtUWideStringBuffer& line) {
    if (ZtUSysString::WideStrncmp(line.GetString(), L"tag{", 4) == 0)
        ++count_;
    return 1;
}
