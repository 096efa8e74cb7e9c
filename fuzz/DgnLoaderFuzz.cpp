// The host's DGN loader on a design file, with the loader's option 10 from the file's
// last byte.

#include "ZtFuzzSupport.h"

#include "ztlddgn/ZtDgnModel.h"
#include "ztlddgn/ZtDgnReader.h"
#include "ztutil/ZtUName.h"

#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring path = ZtFuzzWrite("input.dgn", data, size);
    ZtUNameDict names;
    std::string reason;
    const bool option10 = size == 0 || (data[size - 1] & 1) != 0;
    std::unique_ptr<ZtDgnModel> model =
        ZtDgnReadModel(path.c_str(), &names, option10, nullptr, &reason);
    ZtFuzzCheck(model != nullptr || !reason.empty(), "no model and no reason");
    return 0;
}
