// The block reader over a file, as the tag import and the control file use it. The first
// byte chooses counted text values and whether the enclosing block's name is read first;
// every block's children are read out too. The plain reading, which takes runs of
// characters at once, must give what the tracked one gives character by character.

#include "ZtFuzzSupport.h"

#include "readers/ZtOdPdsBlock.h"
#include "readers/ZtOdPdsBlockFileSource.h"
#include "readers/ZtOdPdsBlockTracker.h"

#include <optional>
#include <string>
#include <vector>

namespace {

class Unheard : public ZtOdPdsDiagnostics {
public:
    void Report(const ZtOdPdsDiagnostic&) override {}
};

// The name read first, then each block's name and value followed by its children's.
std::vector<std::wstring> Read(const std::wstring& path, std::uint8_t choice, std::size_t size,
                               Unheard* sink) {
    ZtOdPdsBlockFileSource source(choice & 1 ? ZtOdPdsCountedText : 0);
    ZtFuzzCheck(source.Open(path.c_str()) == 1, "cannot open the input file");
    std::optional<ZtOdPdsBlockTracker> tracker;
    if (sink)
        tracker.emplace(*sink, L"input.txt");
    std::vector<std::wstring> read;
    if (choice & 2) {
        ZtUWideStringBuffer name;
        if (tracker ? source.ReadName(&name, *tracker) : source.ReadName(&name))
            read.push_back(name.Str());
    }
    ZtOdPdsBlock block;
    ZtOdPdsBlock child;
    std::size_t children = 0;
    while (tracker ? source.NextBlock(&block, *tracker) : source.NextBlock(&block)) {
        ZtFuzzCheck(block.GetValue().GetLength() < size, "a value longer than the input");
        read.push_back(block.GetName().Str());
        read.push_back(block.GetValue().Str());
        std::optional<ZtOdPdsBlockTracker> inner;
        if (sink)
            inner.emplace(*sink, L"input.txt");
        while (inner ? block.NextChild(&child, *inner) : block.NextChild(&child)) {
            ZtFuzzCheck(++children <= size, "more children than characters");
            read.push_back(child.GetName().Str());
            read.push_back(child.GetValue().Str());
        }
    }
    return read;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const std::wstring path = ZtFuzzWrite("input.txt", data + 1, size - 1);
    Unheard unheard;
    ZtFuzzCheck(Read(path, data[0], size, nullptr) == Read(path, data[0], size, &unheard),
                "the plain reading differs from the tracked one");
    return 0;
}
