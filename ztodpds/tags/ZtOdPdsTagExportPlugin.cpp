#include "tags/ZtOdPdsTagExportPlugin.h"

#include "plugin/ZtOdPdsComponents.h"
#include "plugin/ZtOdPdsGuard.h"
#include "plugin/ZtOdPdsStatus.h"
#include "plugin/ZtOdPdsWriteStream.h"
#include "tags/ZtOdPdsCameraMaps.h"
#include "tags/ZtOdPdsCommentIndex.h"
#include "tags/ZtOdPdsFindUORsPerMaster.h"
#include "tags/ZtOdPdsTagRecord.h"
#include "ztcore/ZtOcContext.h"
#include "ztcore/ZtOcPickFrustumTraversal.h"
#include "ztlinear/ZtLFrustum3f.h"
#include "ztlinear/ZtLPickFrustum3f.h"
#include "ztobject/ZtOaNode.h"
#include "ztobject/ZtOaPartition.h"
#include "ztobject/ZtOaTraversal.h"
#include "ztplugin/ZtOpProgress.h"
#include "ztplugin/ZtOpRedlineTag.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpState.h"
#include "ztplugin/ZtOpView.h"
#include "ztutil/ZtUAutoCLocaleOverride.h"
#include "ztutil/ZtUMemory.h"
#include "ztutil/ZtUResource.h"
#include "ztutil/ZtUSysFile.h"
#include "ztutil/ZtUVector.h"
#include "ztutil/ZtUWideStrVoidPtrDict.h"
#include "ztutil/ZtUWideString.h"

#include <memory>
#include <new>

namespace {

constexpr unsigned int kExportTypeNumber = 131;
constexpr int kExportHelpId = 61464;
// Half the side of the window-space square that a tag is picked through.
constexpr double kPickHalfWidth = 0.0001;
// The property bit of geometry leaves, which alone can be picked.
constexpr std::uint32_t kGeometryBits = 16;

// Record lists live in the host's memory, as the host's containers do.
ZtUVoidPtrVector* NewRecordList() {
    void* block = ZtUMemory::Alloc(sizeof(ZtUVoidPtrVector));
    return block ? new (block) ZtUVoidPtrVector : nullptr;
}

void DeleteRecords(ZtUVoidPtrVector* records) {
    for (std::size_t i = 0; i < records->Size(); ++i)
        delete static_cast<ZtOdPdsTagRecord*>(records->Get(i));
    while (!records->IsEmpty())
        records->Erase(records->Size() - 1);
}

void FreeRecordList(ZtUVoidPtrVector* records) {
    DeleteRecords(records);
    records->~ZtUVoidPtrVector();
    ZtUMemory::Dealloc(records);
}

struct RecordListFree {
    void operator()(ZtUVoidPtrVector* records) const { FreeRecordList(records); }
};
// A record list not yet in the hands of its dictionary.
using RecordList = std::unique_ptr<ZtUVoidPtrVector, RecordListFree>;

// The dictionary of an export's file groups, whose lists and records go with it however
// the export ends.
class FileGroups {
public:
    FileGroups() = default;
    ~FileGroups() {
        for (ZtUWideStrVoidPtrDictIt it = dict_.Begin(); it.IsValid(); it.Next())
            FreeRecordList(static_cast<ZtUVoidPtrVector*>(it.GetValue()));
    }
    FileGroups(const FileGroups&) = delete;
    FileGroups& operator=(const FileGroups&) = delete;

    ZtUWideStrVoidPtrDict* Get() { return &dict_; }

private:
    ZtUWideStrVoidPtrDict dict_;
};

} // namespace

ZtOdPdsTagExportPlugin::ZtOdPdsTagExportPlugin()
    : ZtOpExportPlugin(kExportTypeNumber, "ZtOdPdsTagExportPlugin", 1),
      unfiledRecords_(NewRecordList()) {}

ZtOdPdsTagExportPlugin::~ZtOdPdsTagExportPlugin() {
    if (unfiledRecords_)
        FreeRecordList(unfiledRecords_);
}

void ZtOdPdsTagExportPlugin::IGetResourceName(ZtUStringBuffer* name) {
    name->SetString("ztodpds");
}

void ZtOdPdsTagExportPlugin::IGetMenuName(ZtUWideStringBuffer* name) {
    name->SetString(ZtUResource::FindString("ztodpds_tag_menu", L"PDS Tags..."));
}

void ZtOdPdsTagExportPlugin::IGetFileTypeName(ZtUWideStringBuffer* name) {
    name->SetString(ZtUResource::FindString("ztodpds_tag_file", L"PDS Tag File"));
}

void ZtOdPdsTagExportPlugin::IGetFileExtension(ZtUWideStringBuffer* extension) {
    extension->SetString(L".tag");
}

int ZtOdPdsTagExportPlugin::IExport(unsigned int, ZtOpState* state, ZtOpProgress* progress,
                                    const ZtUWideString* fileName) {
    if (!fileName)
        return kZtOdPdsNoFile;
    if (!state)
        return kZtOdPdsNoState;
    // Finding the units reads the scene's attributes, which may allocate: it runs under
    // the guard too, so that no exception reaches the host.
    return ZtOdPdsGuard(static_cast<int>(kZtOdPdsNoState), [&] {
        uorsPerMaster_ = ZtOdPdsFindUORsPerMaster(state->GetRootNode());
        if (uorsPerMaster_ == 0.0)
            return static_cast<int>(kZtOdPdsNoUnits);
        return Export(state, fileName, progress);
    });
}

int ZtOdPdsTagExportPlugin::IHelp() {
    InvokeHelp(nullptr, kExportHelpId);
    return 1;
}

int ZtOdPdsTagExportPlugin::Export(ZtOpState* state, const ZtUWideString* fileName,
                                   ZtOpProgress* progress) {
    tagCount_ = 0;
    writtenCount_ = 0;
    const ZtUAutoCLocaleOverride numbers(ZtUAutoCLocaleOverride::kNumeric);
    const ZtOpSavedViewsElement* element = ZtOpSavedViewsElement::Get(state);
    if (!element)
        return kZtOdPdsNoUnits;
    const ZtOpFolderItem* root = element->Get();
    ZtOdPdsWriteStream file(ZtUSysFile::fopenW(
        fileName->GetString(), ZtUSysFile::kAccessWrite, ZtUSysFile::kCreateAlways,
        ZtUSysFile::kTranslateText, ZtUSysFile::kShareReadWrite, 0, ZtUSysFile::kPermitReadWrite));
    if (!file.Get())
        return kZtOdPdsNoFile;
    if (!unfiledRecords_)
        unfiledRecords_ = NewRecordList();
    if (unfiledRecords_)
        DeleteRecords(unfiledRecords_);

    FileGroups files;
    if (progress)
        progress->BeginSubOperation(0.25);
    GatherItem(state, files.Get(), root, progress);
    if (progress) {
        progress->EndSubOperation();
        progress->BeginSubOperation(1.0);
    }

    // Tags on no file first; then the files in the dictionary's order, which is
    // ascending by name, so that the same document always gives the same file.
    int index = 0;
    ZtOdPdsTagRecord* previous =
        WriteRecords(file.Get(), L"", unfiledRecords_, nullptr, index, progress);
    for (ZtUWideStrVoidPtrDictIt it = files.Get()->Begin(); it.IsValid(); it.Next())
        previous =
            WriteRecords(file.Get(), it.GetKey(), static_cast<ZtUVoidPtrVector*>(it.GetValue()),
                         previous, index, progress);
    if (progress)
        progress->EndSubOperation();
    file.Close();
    return kZtOdPdsOk;
}

int ZtOdPdsTagExportPlugin::GatherItem(ZtOpState* state, ZtUWideStrVoidPtrDict* files,
                                       const ZtOpSavedItem* item, ZtOpProgress* progress) {
    if (!files || !item)
        return 0;
    if (item->IsGroup()) {
        const auto* group = static_cast<const ZtOpGroupItem*>(item);
        const std::size_t count = group->GetNumChildren();
        for (std::size_t i = 0; i < count; ++i) {
            GatherItem(state, files, group->GetChild(i), nullptr);
            if (progress)
                progress->SetProgress(static_cast<double>(i + 1) / static_cast<double>(count));
        }
    } else if (item->GetType() == ZtOpSavedItem::kTypeView) {
        const auto* view = static_cast<const ZtOpView*>(item);
        const ZtOdPdsCommentIndex comments(*view);
        const ZtUOwnPtrVector<ZtOpRedline>& redlines = view->GetRedlines();
        for (std::size_t i = 0; i < redlines.Size(); ++i) {
            const ZtOpRedline* redline = redlines.Get(i);
            if (!redline || redline->GetRedlineType() != ZtOpRedline::kTypeTag)
                continue;
            GatherTag(state, files, static_cast<const ZtOpRedlineTag*>(redline), view, comments);
            ++tagCount_;
        }
    }
    return 1;
}

void ZtOdPdsTagExportPlugin::GatherTag(ZtOpState* state, ZtUWideStrVoidPtrDict* files,
                                       const ZtOpRedlineTag* tag, const ZtOpView* view) {
    GatherTag(state, files, tag, view, ZtOdPdsCommentIndex(*view));
}

void ZtOdPdsTagExportPlugin::GatherTag(ZtOpState* state, ZtUWideStrVoidPtrDict* files,
                                       const ZtOpRedlineTag* tag, const ZtOpView* view,
                                       const ZtOdPdsCommentIndex& comments) {
    if (!tag->GetPos3dValid())
        return;
    const ZtOpComment* comment = comments.Find(tag->GetCommentId());
    if (!comment)
        return;

    ZtUWideString fileName;
    const ZtOaNode* node = PickTagNode(state, tag->GetPos3d(), view, &fileName);
    ZtUVoidPtrVector* records = nullptr;
    if (fileName.IsEmpty()) {
        records = unfiledRecords_;
    } else {
        ZtUWideStringBuffer name;
        ZtUSysFile::RemovePathnameW(fileName.GetString(), &name);
        records = static_cast<ZtUVoidPtrVector*>(files->Find(name.GetString()));
        if (!records) {
            RecordList made(NewRecordList());
            if (made) {
                files->Enter(name.GetString(), made.get());
                records = made.release();
            }
        }
    }
    if (!records)
        return;
    auto record = std::make_unique<ZtOdPdsTagRecord>();
    record->Fill(node, tag, comment, view, uorsPerMaster_);
    records->PushBack(record.get());
    record.release();
}

const ZtOaNode* ZtOdPdsTagExportPlugin::PickTagNode(ZtOpState* state, const ZtLPos3f& position,
                                                    const ZtOpView* view, ZtUWideString* fileName) {
    ZtNvCamera camera = view->AnonView().GetViewPoint().GetRenderCamera();
    const ZtLUnitVec3f u(camera.ViewDir());
    const double depth = u.Dot(position) - u.Dot(camera.GetPosition());
    // From just before the tag's point to a fifth of its depth behind it.
    camera.SetNear(depth - ZtLVec::GetResabs());
    camera.SetFar(depth + depth * 0.2);
    const ZtLPos2f window = ZtOdPdsModelToWindow(position, camera);
    ZtLFrustum3f frustum;
    if (!camera.Frustum(&frustum, 0.0))
        return nullptr;
    frustum.Narrow(window.x - kPickHalfWidth, window.x + kPickHalfWidth, window.y - kPickHalfWidth,
                   window.y + kPickHalfWidth);

    ZtOcContext context;
    ZtOcPickFrustumTraversal pick(&context);
    pick.SetRenderTraversal(nullptr);
    pick.SetFrustum(ZtLPickFrustum3f(frustum));
    pick.SetContainedOnly(0);
    pick.SetRequiredPropertyBits(kGeometryBits);
    pick.SetPickBits(0);
    pick.SetPickLastRendered(0);
    const ZtOaNode* root = state->GetRootNode();
    if (!root)
        return nullptr;
    root->ApplyTraversal(&pick);

    const ZtOaFragment* shape = pick.GetPickedShape();
    if (!shape)
        return nullptr;
    // The element is the lowest node with a DMRS value, the file the lowest partition;
    // nothing above that partition counts.
    const ZtOaNode* found = nullptr;
    for (const ZtOaPathLink* link = shape->GetFragPath(); link; link = link->GetParent()) {
        const ZtOaNode* node = link->GetNode();
        if (!node)
            continue;
        if (!found && node->FindAttribute(kZtOdPdsDmrsAttribute))
            found = node;
        if (node->IsPartition()) {
            if (fileName)
                fileName->SetString(
                    static_cast<const ZtOaPartition*>(node)->GetSourceFilename().GetString());
            break;
        }
    }
    return found;
}

ZtOdPdsTagRecord* ZtOdPdsTagExportPlugin::WriteRecords(ZtUFile* file, const wchar_t* groupName,
                                                       ZtUVoidPtrVector* records,
                                                       ZtOdPdsTagRecord* previous, int& index,
                                                       ZtOpProgress* progress) {
    if (!records || records->IsEmpty())
        return previous;
    // Braces and line ends would end the `n` block early and let the rest of the name
    // stand in the file as blocks of its own.
    ZtUWideStringBuffer name(groupName);
    for (const wchar_t* unsafe : {L"{", L"}", L"\r", L"\n"})
        name.Replace(unsafe, L"_", 1);
    ZtUSysFile::fwprintf(file, L"file{%dn{%s}}\n", index, name.GetString());
    ++index;
    for (std::size_t i = 0; i < records->Size(); ++i) {
        auto* record = static_cast<ZtOdPdsTagRecord*>(records->Get(i));
        record->Write(file, previous);
        previous = record;
        ++writtenCount_;
        if (progress)
            progress->SetProgress(static_cast<double>(writtenCount_) /
                                  static_cast<double>(tagCount_));
    }
    return previous;
}

ZtUComponent& ZtOdPdsTagExportPlugin::GetComponent() {
    static ZtUComponent component;
    return component;
}

int ZtOdPdsTagExportPlugin::StartComponent() {
    return ZtOdPdsStartComponents({{&GetComponent(), "ZtOdPdsTagExportPlugin"}});
}

int ZtOdPdsTagExportPlugin::EndComponent() {
    return ZtOdPdsEndComponents({&GetComponent()});
}
