// The tag export of a document whose views and tags came from the input by the tag
// import, over a model that the tags are picked on.

#include "ZtFuzzSampleModel.h"
#include "ZtFuzzSupport.h"

#include "tags/ZtOdPdsTagExportPlugin.h"
#include "tags/ZtOdPdsTagImportPlugin.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUSysString.h"
#include "ztutil/ZtUWideString.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ZtUWideString input(ZtFuzzWrite("input.tag", data, size));
    ZtOpState state;
    ZtFuzzAddSampleModel(state);
    ZtOdPdsTagImportPlugin import;
    if (import.IExport(0, &state, nullptr, &input) != 0)
        return 0;
    const ZtUWideString output(ZtUSysString::Utf8ToWide(ZtFuzzNewFile("output.tag")));
    ZtOdPdsTagExportPlugin plugin;
    const int status = plugin.IExport(0, &state, nullptr, &output);
    ZtFuzzCheck(status == 0 || status == 6, "the export of an imported document failed");
    return 0;
}
