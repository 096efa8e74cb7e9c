#include "loader/ZtOdPdsDriLoaderPlugin.h"

#include "displaysets/ZtOdPdsDstImportAction.h"
#include "displaysets/ZtOdPdsWalkDirectory.h"
#include "loader/ZtOdPdsDriLoadRecord.h"
#include "loader/ZtOdPdsDriReporter.h"
#include "loader/ZtOdPdsDriValues.h"
#include "plugin/ZtOdPdsComponents.h"
#include "plugin/ZtOdPdsGuard.h"
#include "plugin/ZtOdPdsStatus.h"
#include "readers/ZtOdPdsBlock.h"
#include "readers/ZtOdPdsBlockFileSource.h"
#include "tags/ZtOdPdsFindUORsPerMaster.h"
#include "tags/ZtOdPdsTagImportAction.h"
#include "ztlinear/ZtLAffine3f.h"
#include "ztnav/ZtNvViewPoint.h"
#include "ztobject/ZtOaPartition.h"
#include "ztplugin/ZtOpDB.h"
#include "ztplugin/ZtOpNextCommentIdElement.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpScene.h"
#include "ztplugin/ZtOpSceneProps.h"
#include "ztplugin/ZtOpSceneSet.h"
#include "ztutil/ZtUResource.h"
#include "ztutil/ZtUSysFile.h"

#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace {

constexpr const char* kInputFilesEnum = "ztodpds_dri_input_files_enum";
constexpr const char* kDgnLoaderName = "ZtKvcLoaderPlugin:ztlddgn";
// The plug-in's type number for the host.
constexpr unsigned int kTypeNumber = 5;
// The DGN loader's option that stays off while the models of a control file load.
constexpr int kDgnLoaderOption = 10;
// The reference's load kind for a model file.
constexpr int kLoadKindModel = 2;
// The viewpoint's part flag that goes with its world-up.
constexpr unsigned kWorldUpPart = 4;

} // namespace

ZtOdPdsDriLoaderPlugin::ZtOdPdsDriLoaderPlugin()
    : ZtOpSceneSetPlugin(kTypeNumber, "ZtOdPdsDriLoaderPlugin", 1) {}

ZtOdPdsDriLoaderPlugin::~ZtOdPdsDriLoaderPlugin() = default;

void ZtOdPdsDriLoaderPlugin::IStateCreated(ZtOpState* state) {
    state_ = state;
}

void ZtOdPdsDriLoaderPlugin::IStateDestroyed(ZtOpState* state) {
    if (state == state_)
        state_ = nullptr;
}

void ZtOdPdsDriLoaderPlugin::IGetResourceName(ZtUStringBuffer* name) {
    if (name)
        name->SetString("ztodpds");
}

const wchar_t* ZtOdPdsDriLoaderPlugin::IGetParameter(int number, ZtUData* value) {
    const wchar_t* text = ZtOpSceneSetPlugin::IGetParameter(number, value);
    switch (number) {
    case kParamImportTags:
        if (value)
            value->SetBool(importTags_);
        return text;
    case kParamImportDisplaySets:
        if (value)
            value->SetBool(importDisplaySets_);
        return text;
    case kParamInputFiles:
        if (value) {
            ZtUStringBuffer name;
            ZtUName::MakeEnumName(kInputFilesEnum, inputFiles_, &name);
            value->SetName(new ZtUName(name.GetString(), nullptr));
        }
        return text;
    default:
        return nullptr;
    }
}

int ZtOdPdsDriLoaderPlugin::ISetParameter(int number, const ZtUData& value) {
    switch (number) {
    case kParamImportTags:
        importTags_ = value.GetBool();
        return 1;
    case kParamImportDisplaySets:
        importDisplaySets_ = value.GetBool();
        return 1;
    case kParamInputFiles: {
        int decoded = 0;
        ZtUStringBuffer enumName;
        const ZtUName* name = value.GetName();
        // Unsigned, so that a negative value is out of range too.
        if (name && ZtUName::DecodeEnumName(name->GetString(), &decoded, &enumName) &&
            enumName == kInputFilesEnum && static_cast<unsigned>(decoded) <= 2)
            inputFiles_ = static_cast<ztodpds_dri_input_files_enum>(decoded);
        else
            inputFiles_ = ztodpds_dri_input_files_model;
        return 1;
    }
    default:
        return 0;
    }
}

void ZtOdPdsDriLoaderPlugin::IGetFormatName(ZtUWideStringBuffer* name, NameContext) {
    if (name)
        name->SetString(ZtUResource::FindString("ztodpds_dri_file", L"PDS Design Review File"));
}

void ZtOdPdsDriLoaderPlugin::IGetFormatExtension(ZtUWideStringBuffer* extension) {
    if (extension)
        extension->SetString(L".dri");
}

int ZtOdPdsDriLoaderPlugin::IReadSet(const ZtUWideString& path, ZtOpSceneSet* set, void** record) {
    if (record)
        *record = nullptr;
    return ZtOdPdsGuard(static_cast<int>(kZtOdPdsUnreadableSet),
                        [&] { return ReadSet(path, set, record); });
}

int ZtOdPdsDriLoaderPlugin::ReadSet(const ZtUWideString& path, ZtOpSceneSet* set, void** record) {
    // Flags 0: "text" has no meaning in a control file.
    ZtOdPdsBlockFileSource source(0);
    if (!source.Open(path.GetString()))
        return kZtOdPdsUnreadableSet;
    std::optional<ZtOdPdsDriReporter> reporter;
    if (diagnostics_)
        reporter.emplace(*diagnostics_, path.GetString()).Preamble();
    ZtUWideStringBuffer name;
    if (!(reporter ? source.ReadName(&name, reporter->Tracker()) : source.ReadName(&name))) {
        if (reporter)
            reporter->NotControlFile(nullptr);
        return kZtOdPdsUnreadableSet;
    }
    if (!(name == L"DesignReview_Control")) {
        if (reporter)
            reporter->NotControlFile(&name);
        return kZtOdPdsNotAControlFile;
    }

    auto loadRecord = std::make_unique<ZtOdPdsDriLoadRecord>(path);
    // Up to the enclosing block's closing brace or the end of the file; a block that the
    // file ends in is dropped.
    ZtOdPdsBlock block;
    if (reporter) {
        reporter->Enclosed();
        while (source.NextBlock(&block, reporter->Tracker()))
            ReadBlock(block, *loadRecord, set, &*reporter);
        reporter->EndRead(source, block);
    } else {
        while (source.NextBlock(&block))
            ReadBlock(block, *loadRecord, set, nullptr);
    }
    savedDgnOption_ = SetDgnLoaderOption(0);
    source.Close();
    if (record)
        *record = loadRecord.release();
    return kZtOdPdsOk;
}

void ZtOdPdsDriLoaderPlugin::ReadBlock(ZtOdPdsBlock& block, const ZtOdPdsDriLoadRecord& record,
                                       ZtOpSceneSet* set, ZtOdPdsDriReporter* reporter) {
    const ZtUWideStringBuffer& key = block.GetName();
    if (reporter)
        reporter->BlockRead(block);
    if (key == L"dgn") {
        if (reporter)
            return ReadModelReported(block, record, set, *reporter);
        // Only the first `name` counts; whatever stands before or behind it is passed
        // over unread. The block's value goes before the reference takes its two copies
        // of the name, so that a long name is held three times at most, not four.
        ZtOdPdsBlock child;
        while (block.NextChild(&child))
            if (child.GetName() == L"name") {
                block.ReleaseValue();
                AddSceneRef(child.GetValue(), record, set);
                break;
            }
    } else if (key == L"transform") {
        ZtOdPdsScanTransform(block.GetValue(), &transformMatrix_);
    } else if (key == L"old_origin") {
        ZtOdPdsScanPoint(block.GetValue(), &oldOrigin_);
    } else if (key == L"new_origin") {
        ZtLPos3f newOrigin;
        if (ZtOdPdsScanPoint(block.GetValue(), &newOrigin))
            originShift_ = newOrigin - oldOrigin_;
    } else if (key == L"master_unit") {
        masterUnit_ = ZtOdPdsFindMasterUnit(block.GetValue());
        if (set)
            set->SetLinearUnits(masterUnit_);
    }
}

// A reporting read takes the same first `name`, and reads every other child to say that
// it is not read.
void ZtOdPdsDriLoaderPlugin::ReadModelReported(ZtOdPdsBlock& block,
                                               const ZtOdPdsDriLoadRecord& record,
                                               ZtOpSceneSet* set, ZtOdPdsDriReporter& reporter) {
    ZtOdPdsBlockTracker tracker = reporter.ValueTracker();
    ZtOdPdsBlock child;
    std::optional<ZtOdPdsBlock> name;
    ZtOdPdsSourcePosition nameAt;
    while (block.NextChild(&child, tracker)) {
        if (!name && child.GetName() == L"name") {
            name.emplace(std::move(child));
            nameAt = tracker.ValueAt();
        } else {
            reporter.ModelChild(child, tracker.NameAt());
        }
    }
    if (!name)
        return reporter.ModelNamed(nullptr, {});
    // As on the plain path, the value goes before the reference copies the name.
    block.ReleaseValue();
    const std::wstring_view text = ZtUTrimmedView(name->GetValue().Str());
    reporter.ModelNamed(&text, nameAt);
    AddSceneRef(name->GetValue(), record, set);
}

void ZtOdPdsDriLoaderPlugin::AddSceneRef(const ZtUWideStringBuffer& value,
                                         const ZtOdPdsDriLoadRecord& record,
                                         ZtOpSceneSet* set) const {
    if (!set)
        return;
    // A copy only where there is something to trim: a long name is held once less.
    ZtUWideStringBuffer trimmed;
    const std::size_t length = value.GetLength();
    const bool padded = length > 0 && (ZtUIsWhiteSpace(value.CharAtPos(0)) ||
                                       ZtUIsWhiteSpace(value.CharAtPos(length - 1)));
    if (padded) {
        trimmed = value;
        trimmed.Trim();
    }
    const ZtUWideStringBuffer& name = padded ? trimmed : value;

    ZtUWideStringBuffer cache;
    bool hasCache = false;
    if (inputFiles_ == ztodpds_dri_input_files_cache ||
        inputFiles_ == ztodpds_dri_input_files_either) {
        ZtUSysFile::RemoveFileExtensionW(name.GetString(), &cache);
        cache.Append(L".kvc");
        ZtUSysFile::MakeAbsoluteW(record.directory.GetString(), cache.GetString(), &cache);
        hasCache = ZtUSysFile::ExistsW(cache.GetString());
    }

    // Held until the set takes it, so that running out of memory on the way frees it.
    std::unique_ptr<ZtOpSceneRef> ref(new ZtOpSceneRef);
    if (hasCache)
        ref->SetLoadFile(cache.GetString());
    else if (inputFiles_ != ztodpds_dri_input_files_cache)
        ref->SetLoadFile(name.GetString());
    ref->SetSourceName(name.GetString());
    ref->SetLinearUnits(masterUnit_);
    ref->SetLoadKind(kLoadKindModel);
    set->EditSceneRefs().PushBack(ref.release());
}

int ZtOdPdsDriLoaderPlugin::IFinishSet(void* record, ZtOpSceneProps* props,
                                       ZtOaPartition* partition, ZtOpProgress* progress) {
    // The record goes whatever happens on the way, memory running out in the host included.
    const std::unique_ptr<ZtOdPdsDriLoadRecord> loadRecord(
        static_cast<ZtOdPdsDriLoadRecord*>(record));
    if (!props || !partition)
        return kZtOdPdsOk;
    SetDgnLoaderOption(savedDgnOption_);
    const bool viewReady = ZtOdPdsGuard(false, [&] {
        ZtNvViewPoint* viewPoint = props->EditCurrentView()->EditViewPoint();
        viewPoint->SetWorldUp(ZtLUnitVec3f::Z());
        viewPoint->SetParts(viewPoint->GetParts() | kWorldUpPart);
        ZtOpScene::DefaultInitializeViewPoint(viewPoint, partition);
        return true;
    });
    if (viewReady && loadRecord && state_) {
        // The side files are extras: when they fail, the scene stands all the same.
        ZtOdPdsGuard(false, [&] {
            if (importTags_)
                ImportTags(*loadRecord, *props, partition, progress);
            if (importDisplaySets_)
                ImportDisplaySets(*loadRecord, *props, progress);
            return true;
        });
    }
    return kZtOdPdsOk;
}

void ZtOdPdsDriLoaderPlugin::ImportTags(const ZtOdPdsDriLoadRecord& record, ZtOpSceneProps& props,
                                        ZtOaPartition* partition, ZtOpProgress* progress) {
    ZtOdPdsTagImportAction action(state_, partition);
    action.SetDiagnostics(diagnostics_);
    ZtOdPdsWalkDirectory(record.directory.GetString(), L"tag", &action, progress);
    action.FinishReport();
    if (ZtOpSavedViewsElement* views = ZtOpSavedViewsElement::Require(props))
        action.AppendTo(views);
    // Both next ids go past the highest id read, whatever the element held before.
    if (ZtOpNextCommentIdElement* ids = ZtOpNextCommentIdElement::Require(props))
        action.UpdateNextIds(ids);
}

void ZtOdPdsDriLoaderPlugin::ImportDisplaySets(const ZtOdPdsDriLoadRecord& record,
                                               ZtOpSceneProps& props, ZtOpProgress* progress) {
    ZtOdPdsDstImportAction action(state_);
    action.SetDiagnostics(diagnostics_);
    ZtOdPdsWalkDirectory(record.directory.GetString(), L"dst", &action, progress);
    if (ZtOpSelectionSetsElement* sets = ZtOpSelectionSetsElement::Require(props))
        action.AppendTo(sets);
}

void ZtOdPdsDriLoaderPlugin::IPlaceSceneRef(void*, const ZtOpSceneSet* set, ZtOpSceneRef* ref,
                                            ZtOaNode* model) {
    if (!ref)
        return;
    ZtLVec3f shift = originShift_;
    // Without a factor the shift can't be converted, and goes in as it stands.
    const double uorsPerMaster = ZtOdPdsFindUORsPerMaster(model);
    if (uorsPerMaster != 0) {
        shift /= uorsPerMaster;
        if (set)
            shift *= ZtOaUnit::ScaleFactor(ref->GetLinearUnits(), set->GetLinearUnits());
    }
    ref->EditTransform().MultRight(ZtLAffine3f(transformMatrix_, shift));
}

int ZtOdPdsDriLoaderPlugin::SetDgnLoaderOption(int value) {
    ZtOpPlugin* dgnLoader = ZtOpDB::GetPluginByName(kDgnLoaderName);
    if (!dgnLoader)
        return 1;
    ZtUAutoRefPtr<ZtUOptionSet> options = dgnLoader->GetOptionSet();
    if (!options)
        return 1;
    ZtUData data;
    options->GetValue(kDgnLoaderOption, &data);
    const int former = data.GetBool() ? 1 : 0;
    data.SetBool(value != 0);
    options->SetValue(kDgnLoaderOption, data, nullptr);
    return former;
}

ZtUComponent ZtOdPdsDriLoaderPlugin::component_;

int ZtOdPdsDriLoaderPlugin::StartComponent() {
    return ZtOdPdsStartComponents({{&component_, "ZtOdPdsDriLoaderPlugin"}});
}

int ZtOdPdsDriLoaderPlugin::EndComponent() {
    return ZtOdPdsEndComponents({&component_});
}
