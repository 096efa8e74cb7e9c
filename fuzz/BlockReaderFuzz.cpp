// The block reader over a file, as the tag import and the control file use it. The first
// byte chooses counted text values and whether the enclosing block's name is read first;
// every block's children are read out too.

#include "ZtFuzzSupport.h"

#include "readers/ZtOdPdsBlock.h"
#include "readers/ZtOdPdsBlockFileSource.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const std::wstring path = ZtFuzzWrite("input.txt", data + 1, size - 1);
    ZtOdPdsBlockFileSource source(data[0] & 1 ? ZtOdPdsCountedText : 0);
    ZtFuzzCheck(source.Open(path.c_str()) == 1, "cannot open the input file");
    if (data[0] & 2) {
        ZtUWideStringBuffer name;
        source.ReadName(&name);
    }
    ZtOdPdsBlock block;
    ZtOdPdsBlock child;
    std::size_t children = 0;
    while (source.NextBlock(&block)) {
        ZtFuzzCheck(block.GetValue().GetLength() < size, "a value longer than the input");
        while (block.NextChild(&child))
            ZtFuzzCheck(++children <= size, "more children than characters");
    }
    return 0;
}
