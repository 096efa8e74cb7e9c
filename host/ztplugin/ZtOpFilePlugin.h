#pragma once
#include "ztplugin/ZtOpPlugin.h"

#include <cstdint>

class ZtOaNode;
class ZtOaPartition;
class ZtOpElementList;
class ZtOpFileInfo;
class ZtOpProgress;
class ZtOpSceneProps;
class ZtOpSceneRef;
class ZtOpSceneSet;
class ZtUWideString;

// A plug-in that reads files of a format of its own.
class ZtOpFilePlugin : public ZtOpPlugin {
public:
    enum NameContext { kNameForMenu = 0, kNameForDialog = 1 };

    ZtOpFilePlugin(unsigned int typeNumber, const char* registeredName, int flags)
        : ZtOpPlugin(typeNumber, registeredName, flags) {}
    ~ZtOpFilePlugin() override;

    int IsFilePlugin() const override { return 1; }
    void SetDefaultConfig(const ZtOpConfigParser*) override {}
    bool ShouldLogUsage() const override { return true; }

    virtual void IGetFormatName(ZtUWideStringBuffer* name, NameContext) { name->Clear(); }
    virtual void IGetFormatExtension(ZtUWideStringBuffer* extension) { extension->Clear(); }
    virtual void IGetFormatFilter(ZtUWideStringBuffer* filter);
    virtual void IGetFormatDescription(ZtUWideStringBuffer* description, NameContext context) {
        IGetFormatName(description, context);
    }
    // True if the file's name carries the format's extension.
    virtual int IUnderstandsFile(const wchar_t* path);
};

// Which parts of a document a scene-properties plug-in supplies.
struct ZtOpElementBitmask {
    std::uint64_t bits = 0;
};

// A file plug-in whose files bring scene properties into the document.
class ZtOpScenePropsPlugin : public ZtOpFilePlugin {
public:
    ZtOpScenePropsPlugin(unsigned int typeNumber, const char* registeredName, int flags)
        : ZtOpFilePlugin(typeNumber, registeredName, flags) {}
    ~ZtOpScenePropsPlugin() override;

    int IsScenePropsPlugin() const override { return 1; }

    virtual int LoadFileInfo(ZtOpFileInfo* info, ZtOpElementList* elements, const wchar_t* path,
                             ZtOpProgress* progress) {
        return ILoadFileInfo(info, elements, path, progress);
    }
    virtual ZtOpElementBitmask IGetSupportedProps() { return {}; }
    virtual int ILoadFileInfo(ZtOpFileInfo*, ZtOpElementList*, const wchar_t*, ZtOpProgress*) {
        return 0;
    }
    virtual void IPostLoad(ZtOpState*) {}
};

// A plug-in that reads a set of scene references (models to load and place) from a file.
// The host calls IReadSet, loads each reference's model and calls IPlaceSceneRef for it,
// then calls IFinishSet with the record that IReadSet gave.
class ZtOpSceneSetPlugin : public ZtOpScenePropsPlugin {
public:
    ZtOpSceneSetPlugin(unsigned int typeNumber, const char* registeredName, int flags)
        : ZtOpScenePropsPlugin(typeNumber, registeredName, flags) {}
    ~ZtOpSceneSetPlugin() override;

    virtual int IsKvfPlugin() const { return 0; }
    virtual int HasCustomPostRead() const { return 0; }
    virtual int IReadSet(const ZtUWideString&, ZtOpSceneSet*, void** record) {
        if (record)
            *record = nullptr;
        return 0;
    }
    virtual int IFinishSet(void*, ZtOpSceneProps*, ZtOaPartition*, ZtOpProgress*) { return 0; }
    virtual void IPlaceSceneRef(void*, const ZtOpSceneSet*, ZtOpSceneRef*, ZtOaNode*) {}
    virtual int ILoadSet(const ZtUWideString&, ZtOpSceneSet*) { return 0; }
    virtual int ISaveSetComplexBegin(const ZtUWideString&) { return 0; }
    virtual int ISaveSetComplexSheet(const ZtOpSceneSet*) { return 0; }
    virtual int ISaveSetComplexEnd() { return 0; }
    virtual int ISaveSetBegin(const ZtUWideString&) { return 0; }
    virtual int ISaveSetSheet(const ZtOpSceneSet*) { return 0; }
    virtual int ISaveSetEnd() { return 0; }
    virtual int ICanSave() const { return 0; }
};
