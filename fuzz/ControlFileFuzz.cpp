// The host's road for a control file: the loader reads it, each model it names is loaded
// from the folder beside it and placed, and the loader finishes the set into the document.
// The folder holds two of the sample's models, which the seeds name.

#include "ZtFuzzSupport.h"

#include "loader/ZtOdPdsDriLoaderPlugin.h"
#include "review/OpenRoad.h"
#include "ztplugin/ZtOpState.h"

#include <filesystem>

namespace {

void CopySampleModels() {
    for (const char* name : {"pipes.dgn", "steel.dgn"})
        std::filesystem::copy_file(ZT_SOURCE_DIR "/examples/plant/" + std::string(name),
                                   ZtFuzzFile(name),
                                   std::filesystem::copy_options::overwrite_existing);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool copied = (CopySampleModels(), true);
    (void)copied;
    const std::wstring path = ZtFuzzWrite("review.dri", data, size);
    ZtOpState state;
    ZtOdPdsDriLoaderPlugin loader;
    std::unique_ptr<OpenedSceneSet> sceneSet;
    OpenControlFile(state, loader, path, OpenParameters(), &sceneSet);
    return 0;
}
