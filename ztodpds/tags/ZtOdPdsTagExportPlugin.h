#pragma once
#include "ztlinear/ZtLVec3f.h"
#include "ztplugin/ZtOpExportPlugin.h"
#include "ztutil/ZtUComponent.h"

#include <cstdint>

class ZtOaNode;
class ZtOdPdsCommentIndex;
struct ZtOdPdsTagRecord;
class ZtOpProgress;
class ZtOpRedlineTag;
class ZtOpSavedItem;
class ZtOpState;
class ZtOpView;
class ZtUFile;
class ZtUVoidPtrVector;
class ZtUWideStrVoidPtrDict;
class ZtUWideString;

// The menu entry that writes the redline tags of the document's saved views to a tag
// file. The export gathers a record for each tag, with the element under the tag found by
// picking, groups the records by the source file of that element (tags on no file
// first), and writes the groups in ascending order of their names, each viewpoint key
// only where it changes from the record written before, across groups too.
class ZtOdPdsTagExportPlugin : public ZtOpExportPlugin {
public:
    ZtOdPdsTagExportPlugin();
    ~ZtOdPdsTagExportPlugin() override;
    ZtOdPdsTagExportPlugin(const ZtOdPdsTagExportPlugin&) = delete;
    ZtOdPdsTagExportPlugin& operator=(const ZtOdPdsTagExportPlugin&) = delete;

    void IGetResourceName(ZtUStringBuffer* name) override;
    void IGetMenuName(ZtUWideStringBuffer* name) override;
    void IGetFileTypeName(ZtUWideStringBuffer* name) override;
    void IGetFileExtension(ZtUWideStringBuffer* extension) override;
    // 1 for a null file name or a file that can't be created, 3 for a null state, 6 when
    // the models give no units factor or the document has no saved views; otherwise the
    // file is written and the result is 0.
    int IExport(unsigned int, ZtOpState* state, ZtOpProgress* progress,
                const ZtUWideString* fileName) override;
    int IHelp() override;

    // The steps of an export, each of use alone.

    // The whole run once the factor is known. Without a progress object it makes no
    // progress calls.
    int Export(ZtOpState* state, const ZtUWideString* fileName, ZtOpProgress* progress);
    // Walks `item` depth first, gathering a record for each redline tag of each view.
    // Only the direct children of the item it is first called on move `progress`. 0 if
    // `files` or the item is null, else 1.
    int GatherItem(ZtOpState* state, ZtUWideStrVoidPtrDict* files, const ZtOpSavedItem* item,
                   ZtOpProgress* progress);
    // The record of one tag, into the list of its source file or into the unfiled ones;
    // nothing for a tag without a 3D position or without its comment in `view`.
    void GatherTag(ZtOpState* state, ZtUWideStrVoidPtrDict* files, const ZtOpRedlineTag* tag,
                   const ZtOpView* view);
    // The same with the comments of `view` found already.
    void GatherTag(ZtOpState* state, ZtUWideStrVoidPtrDict* files, const ZtOpRedlineTag* tag,
                   const ZtOpView* view, const ZtOdPdsCommentIndex& comments);
    // The element under `position` as seen in the view: the lowest node with a DMRS value
    // on the path of the shape picked there, or null. `fileName` gets the source file of
    // the lowest partition on that path, if the pick hit anything.
    const ZtOaNode* PickTagNode(ZtOpState* state, const ZtLPos3f& position, const ZtOpView* view,
                                ZtUWideString* fileName);
    // Writes one group: its `file` line and its records, each compared with the one
    // before it. An empty list writes nothing and leaves `index` alone. Gives the record
    // written last, or `previous` for an empty list. A brace or line end of the group's
    // name, which would end its block early, is written as '_'.
    ZtOdPdsTagRecord* WriteRecords(ZtUFile* file, const wchar_t* groupName,
                                   ZtUVoidPtrVector* records, ZtOdPdsTagRecord* previous,
                                   int& index, ZtOpProgress* progress);

    double GetUorsPerMaster() const { return uorsPerMaster_; }
    const ZtUVoidPtrVector* GetUnfiledRecords() const { return unfiledRecords_; }
    std::int32_t GetTagCount() const { return tagCount_; }
    std::int32_t GetWrittenCount() const { return writtenCount_; }

    static ZtUComponent& GetComponent();
    static int StartComponent();
    static int EndComponent();

private:
    double uorsPerMaster_ = 0.0;
    // Owned, with the records in it; they live until the next export or the plug-in's end.
    ZtUVoidPtrVector* unfiledRecords_;
    std::int32_t tagCount_ = 0;
    std::int32_t writtenCount_ = 0;
};
