#pragma once
#include "ztlinear/ZtLMatrix3f.h"
#include "ztlinear/ZtLVec3f.h"
#include "ztobject/ZtOaUnit.h"
#include "ztplugin/ZtOpFilePlugin.h"
#include "ztutil/ZtUComponent.h"

#include <cstdint>

struct ZtOdPdsDriLoadRecord;
class ZtOdPdsBlock;
class ZtOdPdsDiagnostics;
class ZtOdPdsDriReporter;

// Which file a scene reference loads for a model of a control file. The cache file is the
// model's path with the extension ".kvc", beside the model.
enum ztodpds_dri_input_files_enum : std::int32_t {
    ztodpds_dri_input_files_model = 0,  // the model file as the control file names it
    ztodpds_dri_input_files_cache = 1,  // the cache file, or nothing where there is none
    ztodpds_dri_input_files_either = 2, // the cache file where there is one, else the model
};

// The loader of design-review control files (".dri"): one enclosing block
// "DesignReview_Control" whose `dgn` blocks name the models, with the transform, origins
// and master unit that place them. The host calls IReadSet, loads each reference's model
// and calls IPlaceSceneRef for it, then IFinishSet.
//
// The plug-in exists once for the life of the process, and the transform, origins and
// master unit of one control file stay in force for the next: a file overwrites only
// what its own blocks say.
class ZtOdPdsDriLoaderPlugin : public ZtOpSceneSetPlugin {
public:
    // Parameters, by number.
    static constexpr int kParamImportTags = 0;
    static constexpr int kParamImportDisplaySets = 1;
    static constexpr int kParamInputFiles = 2;

    ZtOdPdsDriLoaderPlugin();
    ~ZtOdPdsDriLoaderPlugin() override;

    // Remembers the last state named, for the files beside a control file.
    void IStateCreated(ZtOpState* state) override;
    // Forgets the remembered state if it is this one.
    void IStateDestroyed(ZtOpState* state) override;
    void IGetResourceName(ZtUStringBuffer* name) override;
    // Parameters 0 and 1 as booleans, 2 as the name of a ztodpds_dri_input_files_enum
    // value. Returns the base's text for 0 to 2 and null for any other number.
    const wchar_t* IGetParameter(int number, ZtUData* value) override;
    // Returns 1 for parameters 0 to 2 and 0 for others. A name of another enumeration, or
    // a value outside it, sets input files to 0.
    int ISetParameter(int number, const ZtUData& value) override;
    void IGetFormatName(ZtUWideStringBuffer* name, NameContext context) override;
    void IGetFormatExtension(ZtUWideStringBuffer* extension) override;
    // Reads the whole control file into `set`, one reference a `dgn` block, and hands
    // out the load record. Returns 64 if the file can't be opened, holds no block or exhausts the
    // memory, 128 if its first block is not "DesignReview_Control", and 0 otherwise; only with 0 is
    // there a record, and only then is the DGN loader's option 10 switched off.
    int IReadSet(const ZtUWideString& path, ZtOpSceneSet* set, void** record) override;
    // Gives the DGN loader its option back and sets up the current view of `props` to
    // show the scene; then frees the record, which may be null. Without props or
    // partition only the record is freed. Returns 0.
    int IFinishSet(void* record, ZtOpSceneProps* props, ZtOaPartition* partition,
                   ZtOpProgress* progress) override;
    // Multiplies the control file's matrix and origin shift into the reference's
    // transform, the shift converted from the model's UORs to the scene set's units.
    void IPlaceSceneRef(void* record, const ZtOpSceneSet* set, ZtOpSceneRef* ref,
                        ZtOaNode* model) override;

    ZtOpState* GetState() const { return state_; }

    // The control files and side files read from now on report what becomes of their
    // contents to `diagnostics` (not owned; null: nothing is reported).
    void SetDiagnostics(ZtOdPdsDiagnostics* diagnostics) { diagnostics_ = diagnostics; }

    // The class's component.
    static int StartComponent();
    static int EndComponent();
    static const ZtUComponent& GetComponent() { return component_; }

private:
    // IReadSet's work, which may throw.
    int ReadSet(const ZtUWideString& path, ZtOpSceneSet* set, void** record);
    // Acts on one block inside the enclosing one; reads the children of a `dgn` block.
    // `reporter`, if not null, hears what becomes of it.
    void ReadBlock(ZtOdPdsBlock& block, const ZtOdPdsDriLoadRecord& record, ZtOpSceneSet* set,
                   ZtOdPdsDriReporter* reporter);
    void ReadModelReported(ZtOdPdsBlock& block, const ZtOdPdsDriLoadRecord& record,
                           ZtOpSceneSet* set, ZtOdPdsDriReporter& reporter);
    void AddSceneRef(const ZtUWideStringBuffer& name, const ZtOdPdsDriLoadRecord& record,
                     ZtOpSceneSet* set) const;
    // The side files of the control file's folder, each kind read by one action and then
    // handed to the scene's elements.
    void ImportTags(const ZtOdPdsDriLoadRecord& record, ZtOpSceneProps& props,
                    ZtOaPartition* partition, ZtOpProgress* progress);
    void ImportDisplaySets(const ZtOdPdsDriLoadRecord& record, ZtOpSceneProps& props,
                           ZtOpProgress* progress);
    // Sets option 10 of the host's DGN loader; returns its former value, or 1 when there
    // is no DGN loader.
    int SetDgnLoaderOption(int value);

    ztodpds_dri_input_files_enum inputFiles_ = ztodpds_dri_input_files_model;
    ZtLMatrix3f transformMatrix_;
    ZtLPos3f oldOrigin_;
    // The new origin less the old one that stood when the new one was read, in UORs.
    ZtLVec3f originShift_;
    ZtOaUnit::Linear masterUnit_ = ZtOaUnit::kMetres;
    std::int32_t savedDgnOption_ = 1;
    bool importTags_ = true;
    bool importDisplaySets_ = true;
    ZtOpState* state_ = nullptr;
    ZtOdPdsDiagnostics* diagnostics_ = nullptr;

    static ZtUComponent component_;
};
