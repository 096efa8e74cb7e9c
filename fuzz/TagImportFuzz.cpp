// The tag import as the host's menu runs it, into a document with a model that gives the
// units factor and the elements that tags are pinned to.

#include "ZtFuzzSampleModel.h"
#include "ZtFuzzSupport.h"

#include "tags/ZtOdPdsTagImportPlugin.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUWideString.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ZtUWideString path(ZtFuzzWrite("input.tag", data, size));
    ZtOpState state;
    ZtFuzzAddSampleModel(state);
    ZtOdPdsTagImportPlugin plugin;
    plugin.IExport(0, &state, nullptr, &path);
    return 0;
}
