// A BCF archive brought in as import-bcf does: read, made into a tag file over the scene
// of the sample's pipe model, and that file through the library's tag import. The input
// is the archive's entries rather than its zip bytes, so that the engine mutates the XML
// and not the compressed stream: a line "== NAME" begins each entry, and the bytes up to
// the next such line are its content.

#include "ZtFuzzSampleModel.h"
#include "ZtFuzzSupport.h"

#include "bcf/BcfImport.h"
#include "bcf/BcfRead.h"
#include "bcf/BcfZip.h"
#include "report/ReportScene.h"
#include "review/ReviewRun.h"
#include "tags/ZtOdPdsTagImportPlugin.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztutil/ZtUSysString.h"
#include "ztutil/ZtUWideString.h"

#include <fstream>
#include <string>
#include <string_view>

namespace {

bool Zip(std::string_view input, const std::string& path) {
    BcfZipWriter zip(path, 0);
    std::size_t at = input.rfind("== ", 0) == 0 ? 0 : input.find("\n== ");
    while (at != std::string_view::npos) {
        at += input[at] == '\n' ? 4 : 3;
        const std::size_t lineEnd = input.find('\n', at);
        const std::string name(input.substr(at, lineEnd - at));
        const std::size_t start = lineEnd == std::string_view::npos ? input.size() : lineEnd + 1;
        const std::size_t next = input.find("\n== ", start);
        const std::size_t end = next == std::string_view::npos ? input.size() : next;
        if (!zip.Add(name, std::string(input.substr(start, end - start))))
            return false;
        at = next;
    }
    return zip.Close();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path = ZtFuzzFile("input.bcfzip");
    if (!Zip({reinterpret_cast<const char*>(data), size}, path))
        return 0;
    BcfArchive archive;
    std::vector<std::string> problems;
    std::string error;
    if (!ReadBcfArchive(path, &archive, &problems, &error)) {
        ZtFuzzCheck(!error.empty(), "an archive that was not read, and no reason");
        return 0;
    }
    ReviewRun run;
    const ZtDgnModel* model = ZtFuzzAddSampleModel(run.state);
    const BcfTagFile tags =
        BcfTagFileOfArchive(archive, GatherReportScene(run), model->GetUorsPerMaster(), 1);
    ZtFuzzCheck(tags.tags >= archive.topics.size(), "a topic that made no tag");
    ZtFuzzCheck(tags.nextTagId == 1 + tags.tags, "tag ids that do not follow the tags");
    const std::string tagPath = ZtFuzzFile("input.tag");
    std::ofstream(tagPath, std::ios::binary | std::ios::trunc) << tags.text;
    const ZtUWideString wide(ZtUSysString::PathToWide(tagPath));
    ZtOdPdsTagImportPlugin plugin;
    ZtFuzzCheck(plugin.IExport(0, &run.state, nullptr, &wide) == 0,
                "a tag file the import refused");
    return 0;
}
