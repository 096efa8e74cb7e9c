#pragma once
#include "ztplugin/ZtOpPlugin.h"

class ZtOaPropertyVector;
class ZtOpProgress;
class ZtUWideString;

// A plug-in behind a menu entry that writes (or, for imports, reads) a file of the
// document. Status codes are the plug-in's own; 0 is success.
class ZtOpExportPlugin : public ZtOpPlugin {
public:
    ZtOpExportPlugin(unsigned int typeNumber, const char* registeredName, int flags)
        : ZtOpPlugin(typeNumber, registeredName, flags) {}
    ~ZtOpExportPlugin() override;

    bool ShouldLogUsage() const override { return true; }

    virtual void GetCOMOptionsKV5(ZtOaPropertyVector*) {}
    virtual void SetCOMOptionsKV5(const ZtOaPropertyVector*) {}
    virtual void IGetMenuName(ZtUWideStringBuffer* name) { name->Clear(); }
    virtual void IGetFileTypeName(ZtUWideStringBuffer* name) { name->Clear(); }
    virtual void IGetFileExtension(ZtUWideStringBuffer* extension) { extension->Clear(); }
    virtual int ICanExport(unsigned int, ZtOpState* state) { return state != nullptr; }
    virtual int IExport(unsigned int, ZtOpState*, ZtOpProgress*, const ZtUWideString*) { return 0; }
    virtual int IDialog(unsigned int, ZtOpState*) { return 1; }
    virtual void IBeginContext(ZtOpState*) {}
    virtual unsigned int IGetContextState(ZtOpState*) { return 0; }
    virtual void IEndContext(ZtOpState*) {}
    virtual int IHelp() { return 0; }
};
