#include "review/RunFiles.h"

#include "ztutil/ZtUSysDescriptor.h"
#include "ztutil/ZtUSysFile.h"
#include "ztutil/ZtUSysString.h"

#include <optional>

namespace {

constexpr const char* kStandardOutput = "it is pdsreview's standard output";
constexpr const char* kStandardError = "it is pdsreview's standard error";

std::optional<ZtUFileIdentity> IdentityOf(const std::string& path) {
    ZtUFileIdentity identity;
    if (path.empty() || !ZtUSysFile::IdentifyW(ZtUSysString::PathToWide(path).c_str(), &identity))
        return std::nullopt;
    return identity;
}

std::optional<ZtUFileIdentity> IdentityOfDescriptor(int descriptor) {
    ZtUFileIdentity identity;
    if (!ZtUSysDescriptor::Identify(descriptor, &identity))
        return std::nullopt;
    return identity;
}

} // namespace

std::string RefusedOutput(const std::vector<NamedFile>& inputs,
                          const std::vector<NamedFile>& outputs) {
    for (const NamedFile& output : outputs) {
        const std::string refused = output.step + ": ";
        if (output.path == "-")
            return refused +
                   "'-' is standard output, which carries pdsreview's report; name a file";
        const std::optional<ZtUFileIdentity> written = IdentityOf(output.path);
        if (!written)
            continue;
        if (written == IdentityOfDescriptor(1))
            return refused + kStandardOutput;
        if (written == IdentityOfDescriptor(2))
            return refused + kStandardError;
        for (const NamedFile& input : inputs)
            if (written == IdentityOf(input.path))
                return refused + "it is the same file as " + input.path + ", which " + input.step +
                       " reads; pdsreview writes over no file that the run reads";
    }
    return {};
}

StepFiles::StepFiles(ReviewRun& run, const Step& step) : run_(run), step_(step) {
    for (const RunInput& input : run.inputs)
        scope_.Protect(input.file, "it is a file that this run read (" + input.step + ")");
    if (const std::optional<ZtUFileIdentity> out = IdentityOfDescriptor(1))
        scope_.Protect(*out, kStandardOutput);
    if (const std::optional<ZtUFileIdentity> err = IdentityOfDescriptor(2))
        scope_.Protect(*err, kStandardError);
}

StepFiles::~StepFiles() {
    const std::string label =
        step_.argument.empty() ? step_.name : step_.name + " " + step_.argument;
    for (const ZtUFileIdentity& read : scope_.GetReads())
        run_.inputs.push_back({read, label});
}

void StepFiles::AddWarnings() {
    for (const std::string& warning : scope_.GetWarnings())
        run_.warnings.push_back(step_.name + " " + step_.argument + ": " + warning);
}
