#include "review/OpenRoad.h"

#include "review/AttributeSource.h"
#include "review/ModelReadAhead.h"
#include "review/PassProgress.h"
#include "ztlddgn/ZtDgnLoaderPlugin.h"
#include "ztlddgn/ZtDgnModel.h"
#include "ztplugin/ZtOpProgress.h"
#include "ztplugin/ZtOpSceneProps.h"
#include "ztplugin/ZtOpState.h"
#include "ztutil/ZtUParallel.h"
#include "ztutil/ZtUSysFile.h"

#include <cerrno>
#include <cmath>
#include <cstring>
#include <map>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

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

// Why the host can't load the reference's file, or empty if it may try.
std::string CannotLoad(const ZtOpSceneRef& ref, const ZtDgnLoaderPlugin* dgnLoader) {
    const ZtUWideString& loadFile = ref.GetLoadFile();
    // An empty name (`name{}`, or one that a NUL cut to nothing) leaves no file to load
    // whatever the input files asked for.
    if (ref.GetSourceName().IsEmpty())
        return "no file to load: the control file gives the model an empty name";
    if (loadFile.IsEmpty())
        return "no file to load: there is no cache file, and only cache files are asked for";
    if (ZtUSysFile::HasFileExtensionW(loadFile.GetString(), L"kvc"))
        return "cache files are not read by this host";
    if (!dgnLoader)
        return std::string("no DGN loader: another plug-in holds the name ") +
               ZtDgnLoaderPlugin::kRegisteredName;
    // No system opens a path this long, so such a name is refused before it is made
    // absolute and converted: it may be as long as the control file that gives it.
    if (loadFile.GetLength() > kLongestOpenablePath)
        return "cannot open the file: " + std::string(std::strerror(ENAMETOOLONG));
    return "";
}

// Whether two placements are the same map. A control file's "nan" gives NaN, which here
// matches NaN, so that references placed alike share their model whatever the numbers.
bool SamePlacement(const ZtLAffine3f& a, const ZtLAffine3f& b) {
    auto same = [](double x, double y) { return x == y || (std::isnan(x) && std::isnan(y)); };
    for (int row = 0; row < 3; ++row) {
        if (!same(a.GetTranslation()[row], b.GetTranslation()[row]))
            return false;
        for (int column = 0; column < 3; ++column)
            if (!same(a.GetMatrix().Get(row, column), b.GetMatrix().Get(row, column)))
                return false;
    }
    return true;
}

// Where the models take their attributes from, and the first failure of a read.
struct Attaching {
    AttributeSource* source;
    std::string* error;
};

// Loads the models of a scene set's references into the document's scene, gives them
// their attributes, and places them. References to one file placed alike share its model: a control
// file that names one model thousands of times takes its memory once. A reference that places the
// file elsewhere (in other units, the one thing that differs between the references of one control
// file) gets a model of its own, so that the scene shows the file in each place.
class ModelPlacer {
public:
    ModelPlacer(ZtOpState& state, ZtOpSceneSetPlugin& loader, void* record, ZtOpSceneSet& set,
                ZtDgnLoaderPlugin* dgnLoader, const ZtUWideStringBuffer& folder,
                ZtOpProgress* progress, const Attaching& attaching)
        : state_(state), loader_(loader), record_(record), set_(set), dgnLoader_(dgnLoader),
          folder_(folder), progress_(progress), attaching_(attaching) {}

    // Starts reading, on up to `threads` threads (0: one a core), the file of each
    // reference that Place will load first, in the order it will load them, when there
    // are two files or more and threads for them; Place takes each model when its turn
    // comes, and the road's calls and outputs are those of reading each file at that turn.
    void ReadAhead(std::size_t threads) {
        threads = ZtUThreadsFor(threads);
        std::vector<std::wstring> paths;
        for (std::size_t i = 0; i < set_.GetSceneRefs().Size(); ++i) {
            const ZtOpSceneRef& ref = *set_.GetSceneRefs()[i];
            if (!CannotLoad(ref, dgnLoader_).empty() || ahead_.count(ref.GetLoadFile().Str()))
                continue;
            ahead_.emplace(ref.GetLoadFile().Str(), paths.size());
            paths.push_back(PathOf(ref.GetLoadFile()));
        }
        if (std::min(threads, paths.size()) > 1)
            readAhead_ = std::make_unique<ModelReadAhead>(std::move(paths), threads, progress_);
        else
            ahead_.clear();
    }

    // The model of `ref`, placed; null with the reason in `why`, and the reference left
    // unplaced. The loader places the reference (IPlaceSceneRef, which reads the model's
    // units), and the model's partition takes the reference's placement in the scene.
    ZtDgnModel* Place(ZtOpSceneRef& ref, std::string* why) {
        if (*why = CannotLoad(ref, dgnLoader_); !why->empty())
            return nullptr;
        std::vector<ZtDgnModel*>& models = loaded_[ref.GetLoadFile().Str()];
        ZtDgnModel* fresh = models.empty() ? Load(ref.GetLoadFile(), why) : nullptr;
        if (models.empty() && !fresh)
            return nullptr;
        if (fresh)
            models.push_back(fresh);
        const ZtLAffine3f before = ref.GetTransform();
        // Every model of the list is the same file, with the same units.
        loader_.IPlaceSceneRef(record_, &set_, &ref, models.front());
        const ZtLAffine3f placement = ref.GetPlacement(set_.GetLinearUnits());
        if (fresh) {
            fresh->SetTransform(placement);
            return fresh;
        }
        for (ZtDgnModel* model : models)
            if (SamePlacement(model->GetTransform(), placement))
                return model;
        ZtDgnModel* again = Load(ref.GetLoadFile(), why);
        if (!again) {
            ref.EditTransform() = before;
            return nullptr;
        }
        again->SetTransform(placement);
        models.push_back(again);
        return again;
    }

private:
    // Reads the file, resolved against the control file's folder, into the scene, with its
    // attributes while no read of the source has failed.
    ZtDgnModel* Load(const ZtUWideString& loadFile, std::string* why) {
        std::unique_ptr<ZtDgnModel> model;
        if (const auto ahead = ahead_.find(loadFile.Str()); ahead != ahead_.end()) {
            const std::size_t file = ahead->second;
            ahead_.erase(ahead);
            model = readAhead_->Take(file, progress_, why);
            if (model)
                dgnLoader_->AdoptModel(*model, state_.EditNameDict());
        } else {
            model = dgnLoader_->LoadModel(PathOf(loadFile).c_str(), state_.EditNameDict(),
                                          progress_, why);
        }
        if (!model)
            return nullptr;
        if (attaching_.source && attaching_.error->empty())
            attaching_.source->Attach(*model, attaching_.error);
        ZtDgnModel* added = model.get();
        state_.GetRootNode()->AddChild(model.release());
        return added;
    }

    // The load file resolved against the control file's folder.
    std::wstring PathOf(const ZtUWideString& loadFile) const {
        ZtUWideStringBuffer path;
        ZtUSysFile::MakeAbsoluteW(folder_.GetString(), loadFile.GetString(), &path);
        return path.GetString();
    }

    ZtOpState& state_;
    ZtOpSceneSetPlugin& loader_;
    void* record_;
    ZtOpSceneSet& set_;
    ZtDgnLoaderPlugin* dgnLoader_;
    const ZtUWideStringBuffer& folder_;
    ZtOpProgress* progress_;
    Attaching attaching_;
    // The models of each load file; the references whose names the keys view outlive the
    // placer.
    std::map<std::wstring_view, std::vector<ZtDgnModel*>> loaded_;
    // The files read ahead, by load file, until Load takes their models.
    std::map<std::wstring_view, std::size_t> ahead_;
    std::unique_ptr<ModelReadAhead> readAhead_;
};

} // namespace

std::vector<std::wstring> SideFilesOf(const std::wstring& controlFile,
                                      const OpenParameters& parameters) {
    ZtUWideStringBuffer folder;
    ZtUSysFile::PopPathW(controlFile.c_str(), &folder, nullptr);
    std::vector<std::wstring> files;
    for (const wchar_t* extension : {L"tag", L"dst"}) {
        const bool wanted =
            extension[0] == L't' ? parameters.importTags : parameters.importDisplaySets;
        if (!wanted)
            continue;
        for (ZtUSysDirHandle walk = ZtUSysFile::OpenDirW(folder.GetString()); walk.IsValid();
             walk.Next()) {
            // Closed however the step ends, memory running out for the list included.
            const std::unique_ptr<ZtUSysFileInfoHandle, void (*)(ZtUSysFileInfoHandle*)> info(
                walk.OpenFileInfo(), ZtUSysFile::CloseFileInfo);
            if (ZtUSysFile::HasFileExtensionW(info->GetFullNameW(), extension))
                files.emplace_back(info->GetFullNameW());
        }
    }
    return files;
}

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
    // Memory that runs out in the host between the two calls still hands the record back:
    // with nothing to finish, IFinishSet only frees it.
    struct HandBack {
        ZtOpSceneSetPlugin& loader;
        void*& record;
        ~HandBack() {
            if (record)
                loader.IFinishSet(record, nullptr, nullptr, nullptr);
        }
    } handBack{loader, record};

    ZtUWideStringBuffer folder;
    ZtUSysFile::PopPathW(path.c_str(), &folder, nullptr);
    const std::size_t count = opened->set.GetSceneRefs().Size();
    opened->sideFiles = SideFilesOf(path, parameters);
    const std::size_t sideFiles = opened->sideFiles.size();
    // The bar runs once: the models share their part by count, the side files theirs, one
    // pass each.
    const double modelsEnd = sideFiles == 0 ? 1.0 : 0.5;
    opened->refs.resize(count);
    std::string attachFailure;
    ModelPlacer placer(state, loader, record, opened->set, dgnLoader, folder, progress,
                       {attributes, attachError ? attachError : &attachFailure});
    placer.ReadAhead(parameters.threads);
    for (std::size_t i = 0; i < count; ++i) {
        ZtOpSceneRef* ref = opened->set.GetSceneRefs()[i];
        if (progress)
            progress->BeginSubOperation(modelsEnd * static_cast<double>(i + 1) /
                                        static_cast<double>(count));
        OpenedRef& outcome = opened->refs[i];
        outcome.model = placer.Place(*ref, &outcome.notLoaded);
        if (progress)
            progress->EndSubOperation();
    }

    // The control file opens into the document: its view and side files go straight to
    // the document's scene properties.
    if (progress) {
        progress->BeginSubOperation(1.0);
        PassProgress passes(*progress, sideFiles);
        loader.IFinishSet(std::exchange(record, nullptr), &state.EditSceneProps(),
                          state.GetRootNode(), &passes);
        progress->EndSubOperation();
    } else {
        loader.IFinishSet(std::exchange(record, nullptr), &state.EditSceneProps(),
                          state.GetRootNode(), nullptr);
    }
    *sceneSet = std::move(opened);
    return status;
}
