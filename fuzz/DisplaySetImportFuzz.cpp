// The display-set import as the host's menu runs it, into a document with a model, and
// then every selection set it made evaluated over the model, as the select step does.

#include "ZtFuzzSampleModel.h"
#include "ZtFuzzSupport.h"

#include "displaysets/ZtOdPdsDstImportPlugin.h"
#include "review/SelectionEvaluation.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUWideString.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ZtUWideString path(ZtFuzzWrite("input.dst", data, size));
    ZtOpState state;
    ZtFuzzAddSampleModel(state);
    ZtOdPdsDstImportPlugin plugin;
    if (plugin.IExport(0, &state, nullptr, &path) == 0)
        ComputeSelections(state);
    return 0;
}
