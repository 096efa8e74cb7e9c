#pragma once
#include "ztlddgn/ZtDgnModel.h"

#include <memory>
#include <string>

class ZtOpProgress;
class ZtUNameDict;

// Whether `path` is a V7 design file whose control block gives the units, without reading
// its elements; false with the reason in `reason`, as ZtDgnReadModel gives it.
bool ZtDgnProbeModel(const wchar_t* path, std::string* reason);

// Reads a V7 design file, 2D or 3D, into a model. A file that is no design file, or whose
// control block can't give the units, gives null and the reason in `reason`. A file cut
// short inside its elements loads the elements before the cut, with a warning in the
// model; so do elements too short for their headers and linkages that run past their
// element, which are passed over. `names` and `progress` may be null.
std::unique_ptr<ZtDgnModel> ZtDgnReadModel(const wchar_t* path, ZtUNameDict* names, bool option10,
                                           ZtOpProgress* progress, std::string* reason);
// Reads as ZtDgnReadModel does, into a model left unnamed (ZtDgnModel::BindNames), with
// option 10 unset. It touches nothing shared, so files may be read on threads at once.
std::unique_ptr<ZtDgnModel> ZtDgnDecodeModel(const wchar_t* path, ZtOpProgress* progress,
                                             std::string* reason);
