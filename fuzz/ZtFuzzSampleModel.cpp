#include "ZtFuzzSampleModel.h"

#include "ZtFuzzSupport.h"

#include "ztlddgn/ZtDgnModel.h"
#include "ztlddgn/ZtDgnReader.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUSysString.h"

#include <memory>
#include <string>

ZtDgnModel* ZtFuzzAddSampleModel(ZtOpState& state) {
    std::string reason;
    std::unique_ptr<ZtDgnModel> model =
        ZtDgnReadModel(ZtUSysString::Utf8ToWide(ZT_SOURCE_DIR "/examples/plant/pipes.dgn").c_str(),
                       state.EditNameDict(), true, nullptr, &reason);
    ZtFuzzCheck(model != nullptr, "the sample model did not load");
    ZtDgnModel* loaded = model.get();
    state.GetRootNode()->AddChild(model.release());
    return loaded;
}
