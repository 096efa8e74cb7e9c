#include "check/FileCheck.h"

#include "check/CheckCatalog.h"
#include "check/FileVerdicts.h"
#include "check/FindingCollector.h"
#include "check/SourceText.h"
#include "displaysets/ZtOdPdsDstImportAction.h"
#include "loader/ZtOdPdsDriLoaderPlugin.h"
#include "plugin/ZtOdPdsStatus.h"
#include "tags/ZtOdPdsTagImportAction.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztlddgn/ZtDgnReader.h"
#include "ztplugin/ZtOpGuid.h"
#include "ztplugin/ZtOpSceneProps.h"
#include "ztplugin/ZtOpSceneSet.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUSysDescriptor.h"
#include "ztutil/ZtUSysFile.h"
#include "ztutil/ZtUSysString.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <map>

namespace {

// A document whose one empty model gives the units factor the tag import needs. The
// factor plays no part in what the import drops, so 1 serves.
struct CheckDocument {
    CheckDocument() {
        auto* units = new ZtDgnModel(L"", state.EditNameDict());
        units->SetUorsPerMaster(1.0);
        state.GetRootNode()->AddChild(units);
    }
    ZtOpState state;
};

Finding CannotOpen(const std::wstring& path) {
    Finding finding = FileKindError(path, "cannot open the file: ");
    // The system's reason; what it opens but the host's stream does not is no file.
    const int descriptor = ZtUSysDescriptor::OpenForReading(ZtUSysString::WideToPath(path));
    if (descriptor >= 0) {
        ZtUSysDescriptor::Close(descriptor);
        finding.message += "it is not a regular file";
    } else {
        finding.message += errno == EISDIR ? "it is a folder" : std::strerror(errno);
    }
    return finding;
}

void CheckTags(const std::wstring& path, FindingCollector& collector) {
    CheckDocument document;
    ZtOdPdsTagImportAction action(&document.state, document.state.GetRootNode());
    action.SetDiagnostics(&collector);
    const int status = action.Perform(path.c_str(), nullptr);
    action.FinishReport();
    if (status == kZtOdPdsNoFile)
        collector.Add(CannotOpen(path));
}

void CheckDisplaySets(const std::wstring& path, FindingCollector& collector) {
    CheckDocument document;
    ZtOdPdsDstImportAction action(&document.state);
    action.SetDiagnostics(&collector);
    if (action.Perform(path.c_str(), nullptr) == kZtOdPdsNoFile)
        collector.Add(CannotOpen(path));
}

// The models a control file names, each where its name stands: missing, or no design
// file the DGN loader reads.
void CheckModels(const std::wstring& controlFile, const FindingCollector& collector,
                 FindingCollector& out) {
    ZtUWideStringBuffer folder;
    ZtUSysFile::PopPathW(controlFile.c_str(), &folder, nullptr);
    std::map<std::wstring, std::string> probed;
    for (const FindingCollector::NamedModel& model : collector.Models()) {
        Finding finding;
        finding.name = "model-file";
        finding.dropsData = true;
        finding.at = {model.file, model.at.line, model.at.column};
        finding.note = "the reference to it brings in nothing";
        if (model.name.empty()) {
            finding.message = "the model's name is " + std::to_string(model.length) +
                              " characters long: no system opens a path that long";
            out.Add(finding);
            continue;
        }
        ZtUWideStringBuffer path;
        ZtUSysFile::MakeAbsoluteW(folder.GetString(), model.name.c_str(), &path);
        auto [known, added] = probed.try_emplace(path.Str());
        if (added && !ZtDgnProbeModel(path.GetString(), &known->second) && known->second.empty())
            known->second = "it can't be read";
        if (known->second.empty())
            continue;
        finding.message = "the model " + ZtUSysString::WideToUtf8(model.name) +
                          " is not loaded: " + known->second;
        out.Add(finding);
    }
}

void CheckControl(const std::wstring& path, const SideFiles& options, FindingCollector& collector) {
    CheckDocument document;
    ZtOdPdsDriLoaderPlugin loader;
    loader.SetDiagnostics(&collector);
    loader.IStateCreated(&document.state);
    ZtUData flag;
    flag.SetBool(options.tags);
    loader.ISetParameter(ZtOdPdsDriLoaderPlugin::kParamImportTags, flag);
    flag.SetBool(options.displaySets);
    loader.ISetParameter(ZtOdPdsDriLoaderPlugin::kParamImportDisplaySets, flag);
    ZtOpSceneSet set;
    void* record = nullptr;
    const int status = loader.IReadSet(ZtUWideString(path), &set, &record);
    if (status == kZtOdPdsUnreadableSet && !collector.HasFindings())
        collector.Add(CannotOpen(path));
    if (status != kZtOdPdsOk)
        return;
    CheckModels(path, collector, collector);
    loader.IFinishSet(record, &document.state.EditSceneProps(), document.state.GetRootNode(),
                      nullptr);
    loader.IStateDestroyed(&document.state);
}

// A note for each file that the stream read as Windows-1252, at its first such byte.
void NoteLegacyReads(FindingCollector& collector) {
    std::map<std::wstring, bool> noted;
    for (const ZtUSysFile::LegacyRead& read : ZtUSysFile::TakeLegacyReads()) {
        if (!noted.emplace(read.path, true).second)
            continue;
        Finding finding;
        finding.name = "encoding";
        finding.severity = Severity::kNote;
        const auto [line, column] = SourceText(read.path).PositionOf(read.firstCharacter);
        finding.at = {read.path, line, column};
        finding.message = "the file is not UTF-8: " + std::to_string(read.bytes) +
                          (read.bytes == 1 ? " byte is" : " bytes are") +
                          " read as Windows-1252 characters";
        finding.note = "save the file as UTF-8 to be sure what its characters are";
        collector.Add(finding);
    }
}

} // namespace

std::optional<FileKind> FileKindOf(std::wstring_view path) {
    const std::wstring name(path);
    if (ZtUSysFile::HasFileExtensionW(name.c_str(), L"dri"))
        return FileKind::kControl;
    if (ZtUSysFile::HasFileExtensionW(name.c_str(), L"dst"))
        return FileKind::kDisplaySets;
    if (ZtUSysFile::HasFileExtensionW(name.c_str(), L"tag"))
        return FileKind::kTags;
    return std::nullopt;
}

std::optional<FileKind> FileKindNamed(std::string_view name) {
    if (name == "dri")
        return FileKind::kControl;
    if (name == "dst")
        return FileKind::kDisplaySets;
    if (name == "tag")
        return FileKind::kTags;
    return std::nullopt;
}

const char* FileKindWords(FileKind kind) {
    switch (kind) {
    case FileKind::kControl:
        return "control file";
    case FileKind::kDisplaySets:
        return "display-set file";
    default:
        return "tag file";
    }
}

std::vector<Finding> CheckFile(const std::wstring& path, FileKind kind, const SideFiles& options) {
    ZtUSysFile::TakeLegacyReads();
    // The check's own documents draw GUIDs; a host that checks beside its real document
    // must show the GUIDs it would show without the check.
    const ZtOpGuidSequenceMark guids;
    FindingCollector collector;
    switch (kind) {
    case FileKind::kControl:
        CheckControl(path, options, collector);
        break;
    case FileKind::kDisplaySets:
        CheckDisplaySets(path, collector);
        break;
    case FileKind::kTags:
        CheckTags(path, collector);
        break;
    }
    NoteLegacyReads(collector);
    return JudgeFiles(path, kind, collector);
}
