// The host's text stream. The first byte chooses the byte-order mark put before the rest
// (none, UTF-8, UTF-16 LE, UTF-16 BE) and the size of the line buffer; the file is read
// by characters and again by lines, which must give the same units.

#include "ZtFuzzSupport.h"

#include "ztutil/ZtUSysFile.h"

#include <string>
#include <vector>

namespace {

ZtUFile* Open(const std::wstring& path) {
    ZtUFile* file =
        ZtUSysFile::fopenW(path.c_str(), ZtUSysFile::kAccessRead, ZtUSysFile::kOpenExisting,
                           ZtUSysFile::kTranslateText, ZtUSysFile::kShareReadWrite, 0, 0600);
    ZtFuzzCheck(file != nullptr, "cannot open the input file");
    return file;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    static const std::string kMarks[] = {"", "\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"};
    std::string bytes = kMarks[data[0] % 4];
    bytes.append(reinterpret_cast<const char*>(data + 1), size - 1);
    const std::wstring path =
        ZtFuzzWrite("input.txt", reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());

    std::wstring units;
    ZtUFile* file = Open(path);
    for (unsigned c; (c = ZtUSysFile::fgetwc(file)) != ZtUFile::kEnd;) {
        ZtFuzzCheck(c < 0xFFFF, "a character beyond UTF-16");
        units += static_cast<wchar_t>(c);
    }
    ZtFuzzCheck(ZtUSysFile::fgetwc(file) == ZtUFile::kEnd, "characters after the end");
    ZtUSysFile::fclose(file);
    // A NUL unit ends a line's text early, so only texts without one compare.
    if (units.find(L'\0') != std::wstring::npos)
        return 0;

    const int count = 2 + data[0] / 4 % 64;
    std::vector<wchar_t> buffer(static_cast<std::size_t>(count));
    std::wstring lines;
    file = Open(path);
    while (const wchar_t* line = ZtUSysFile::fgetws(buffer.data(), count, file)) {
        const std::wstring piece(line);
        ZtFuzzCheck(!piece.empty() && piece.size() < static_cast<std::size_t>(count),
                    "a line piece of the wrong length");
        ZtFuzzCheck(piece.find(L'\n') >= piece.size() - 1, "a line piece past its line end");
        lines += piece;
    }
    ZtUSysFile::fclose(file);
    ZtFuzzCheck(lines == units, "lines and characters differ");
    return 0;
}
