// The line pump and the display-set consumers it feeds: the lines must keep the pump's
// promise (no line end inside, at most 511 characters), and the whole file is read as the
// body of one definition section, so that every line reaches the rule language.

#include "ZtFuzzSupport.h"

#include "displaysets/ZtOdPdsDefinitionSection.h"
#include "displaysets/ZtOdPdsDisplaySetCounter.h"
#include "readers/ZtOdPdsInputConsumer.h"
#include "readers/ZtOdPdsTextFile.h"
#include "ztplugin/ZtOpSavedItem.h"
#include "ztutil/ZtUName.h"
#include "ztutil/ZtUWideString.h"

namespace {

class LineChecker : public ZtOdPdsInputConsumer {
public:
    int Begin() override { return 1; }
    int End() override { return 1; }
    int Line(ZtUWideStringBuffer& line) override {
        ZtFuzzCheck(line.GetLength() >= 1 && line.GetLength() <= 511, "a line of a wrong length");
        ZtFuzzCheck(line.Str().find(L'\n') == std::wstring::npos, "a line end inside a line");
        return 1;
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring path = ZtFuzzWrite("input.dst", data, size);
    LineChecker checker;
    ZtOdPdsDisplaySetCounter counter;
    ZtOdPdsInputConsumer* const passes[] = {&checker, &counter};
    for (ZtOdPdsInputConsumer* consumer : passes) {
        ZtOdPdsTextFile file;
        ZtFuzzCheck(file.Open(path.c_str()) != 0, "cannot open the input file");
        ZtFuzzCheck(file.ReadLines(*consumer) == 1, "a read of a good file failed");
    }

    ZtUNameDict names;
    ZtOpFolderItem folder;
    ZtOdPdsDstContext context;
    context.names = &names;
    context.folder = &folder;
    ZtOdPdsTextFile file;
    ZtFuzzCheck(file.Open(path.c_str()) != 0, "cannot open the input file");
    ZtOdPdsDefinitionSection section(&context, counter.GetCount(), nullptr);
    file.ReadLines(section);
    ZtFuzzCheck(static_cast<int>(folder.GetNumChildren()) <= counter.GetCount(),
                "more sets than the count");
    return 0;
}
