#pragma once
#include "ztutil/ZtUWideString.h"

// What the loader hands the host at the end of reading a control file and gets back when
// the models have loaded: the control file's path and its folder, against which the
// files beside it are found. It lives on the heap from IReadSet to IFinishSet.
struct ZtOdPdsDriLoadRecord {
    explicit ZtOdPdsDriLoadRecord(const ZtUWideString& controlFile);

    ZtUWideString path;
    ZtUWideStringBuffer directory;
};
