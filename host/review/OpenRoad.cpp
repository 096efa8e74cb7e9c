#include "review/OpenRoad.h"

#include "review/AttributeSource.h"
#include "review/PassProgress.h"
#include "ztlddgn/ZtDgnLoaderPlugin.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztplugin/ZtOpProgress.h"
#include "ztplugin/ZtOpSceneProps.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUSysFile.h"

#include <cerrno>
#include <cstring>
#include <map>
#include <string_view>

namespace {

constexpr const char* kInputFilesEnum = "ztodpds_dri_input_files_enum";
// Longer than any path a system opens: Windows' longest is 32,767 units, POSIX's 4,096
// bytes.
constexpr std::size_t kLongestOpenablePath = 32767;

void SetParameters(ZtOpSceneSetPlugin& loader, const OpenParameters& parameters) {
    ZtUData value;
    value.SetBool(parameters.importTags);
    loader.ISetParameter(0, value);
    value.SetBool(parameters.importDisplaySets);
    loader.ISetParameter(1, value);
    ZtUStringBuffer name;
    ZtUName::MakeEnumName(kInputFilesEnum, parameters.inputFiles, &name);
    value.SetName(new ZtUName(name.GetString(), nullptr));
    loader.ISetParameter(2, value);
}

// The models already in the scene, by the load file of the first reference to each: all
// load files resolve against the same folder, and the references outlive the map.
using LoadedModels = std::map<std::wstring_view, ZtDgnModel*>;

// Where the models take their attributes from, and the first failure of a read.
struct Attaching {
    AttributeSource* source;
    std::string* error;
};

// Loads the model of one reference into the scene; null with the reason in `why`.
// References to a file already loaded share its model: a control file that names one
// model thousands of times takes its memory once.
ZtDgnModel* LoadRef(ZtOpState& state, ZtDgnLoaderPlugin* dgnLoader, const ZtOpSceneRef& ref,
                    const ZtUWideStringBuffer& folder, LoadedModels& loaded, ZtOpProgress* progress,
                    const Attaching& attaching, std::string* why) {
    const ZtUWideString& loadFile = ref.GetLoadFile();
    if (loadFile.IsEmpty()) {
        *why = "no file to load: there is no cache file, and only cache files are asked for";
        return nullptr;
    }
    if (ZtUSysFile::HasFileExtensionW(loadFile.GetString(), L"kvc")) {
        *why = "cache files are not read by this host";
        return nullptr;
    }
    if (!dgnLoader) {
        *why = std::string("no DGN loader: another plug-in holds the name ") +
               ZtDgnLoaderPlugin::kRegisteredName;
        return nullptr;
    }
    if (auto found = loaded.find(loadFile.Str()); found != loaded.end())
        return found->second;
    // No system opens a path this long, so such a name is refused before it is made
    // absolute and converted: it may be as long as the control file that gives it.
    if (loadFile.GetLength() > kLongestOpenablePath) {
        *why = "cannot open the file: " + std::string(std::strerror(ENAMETOOLONG));
        return nullptr;
    }
    ZtUWideStringBuffer path;
    ZtUSysFile::MakeAbsoluteW(folder.GetString(), loadFile.GetString(), &path);
    std::unique_ptr<ZtDgnModel> model =
        dgnLoader->LoadModel(path.GetString(), state.EditNameDict(), progress, why);
    if (!model)
        return nullptr;
    if (attaching.source && attaching.error->empty())
        attaching.source->Attach(*model, attaching.error);
    ZtDgnModel* added = model.get();
    state.GetRootNode()->AddChild(model.release());
    loaded.emplace(loadFile.Str(), added);
    return added;
}

// The files beside the control file that finishing the set imports, one progress pass
// each.
std::size_t CountSideFiles(const ZtUWideStringBuffer& folder, const OpenParameters& parameters) {
    std::size_t count = 0;
    for (ZtUSysDirHandle walk = ZtUSysFile::OpenDirW(folder.GetString()); walk.IsValid();
         walk.Next()) {
        ZtUSysFileInfoHandle* info = walk.OpenFileInfo();
        const wchar_t* name = info->GetFullNameW();
        count += (parameters.importTags && ZtUSysFile::HasFileExtensionW(name, L"tag")) ||
                 (parameters.importDisplaySets && ZtUSysFile::HasFileExtensionW(name, L"dst"));
        ZtUSysFile::CloseFileInfo(info);
    }
    return count;
}

} // namespace

std::optional<int> InputFilesValue(const std::string& name) {
    const char* const names[] = {"model", "cache", "either"};
    for (int value = 0; value < 3; ++value)
        if (name == names[value])
            return value;
    return std::nullopt;
}

int OpenControlFile(ZtOpState& state, ZtOpSceneSetPlugin& loader, const std::wstring& path,
                    const OpenParameters& parameters, std::unique_ptr<OpenedSceneSet>* sceneSet,
                    ZtOpProgress* progress, AttributeSource* attributes, std::string* attachError) {
    // The DGN loader is there before the control file is read, so that the loader can
    // switch its option off for the models' load.
    ZtDgnLoaderPlugin* dgnLoader = ZtDgnRegisterLoaderPlugin();
    loader.IStateCreated(&state);
    SetParameters(loader, parameters);

    auto opened = std::make_unique<OpenedSceneSet>();
    void* record = nullptr;
    const int status = loader.IReadSet(ZtUWideString(path), &opened->set, &record);
    if (status != 0)
        return status;

    ZtUWideStringBuffer folder;
    ZtUSysFile::PopPathW(path.c_str(), &folder, nullptr);
    const std::size_t count = opened->set.GetSceneRefs().Size();
    const std::size_t sideFiles = CountSideFiles(folder, parameters);
    // The bar runs once: the models share their part by count, the side files theirs.
    const double modelsEnd = sideFiles == 0 ? 1.0 : 0.5;
    opened->refs.resize(count);
    LoadedModels loaded;
    std::string attachFailure;
    const Attaching attaching{attributes, attachError ? attachError : &attachFailure};
    for (std::size_t i = 0; i < count; ++i) {
        ZtOpSceneRef* ref = opened->set.GetSceneRefs()[i];
        if (progress)
            progress->BeginSubOperation(modelsEnd * static_cast<double>(i + 1) /
                                        static_cast<double>(count));
        OpenedRef& outcome = opened->refs[i];
        if (ZtDgnModel* model = LoadRef(state, dgnLoader, *ref, folder, loaded, progress, attaching,
                                        &outcome.notLoaded)) {
            outcome.model = model;
            loader.IPlaceSceneRef(record, &opened->set, ref, model);
        }
        if (progress)
            progress->EndSubOperation();
    }

    // The control file opens into the document: its view and side files go straight to
    // the document's scene properties.
    if (progress) {
        progress->BeginSubOperation(1.0);
        PassProgress passes(*progress, sideFiles);
        loader.IFinishSet(record, &state.EditSceneProps(), state.GetRootNode(), &passes);
        progress->EndSubOperation();
    } else {
        loader.IFinishSet(record, &state.EditSceneProps(), state.GetRootNode(), nullptr);
    }
    *sceneSet = std::move(opened);
    return status;
}
