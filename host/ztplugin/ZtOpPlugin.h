#pragma once
#include "ztutil/ZtUData.h"
#include "ztutil/ZtUOptionSet.h"
#include "ztutil/ZtURefCounted.h"
#include "ztutil/ZtUString.h"
#include "ztutil/ZtUWideString.h"

#include <string>

class ZtOpConfigParser;
class ZtOpState;

// The root of the host's plug-in classes. The order of the virtual operations is part of
// the host's binary contract with its plug-ins; keep it.
class ZtOpPlugin {
public:
    ZtOpPlugin(unsigned int typeNumber, const char* registeredName, int flags);
    ZtOpPlugin(const ZtOpPlugin&) = delete;
    ZtOpPlugin& operator=(const ZtOpPlugin&) = delete;

    virtual int IsFilePlugin() const { return 0; }
    virtual int IsScenePropsPlugin() const { return 0; }
    virtual ~ZtOpPlugin();
    virtual void SetDefaultConfig(const ZtOpConfigParser*) {}
    virtual ZtUAutoRefPtr<ZtUOptionSet> GetOptionSet() { return options_; }
    virtual void PostLoadPlugin() {}
    virtual int Activate() { return 1; }
    virtual int Deactivate() { return 1; }
    virtual bool ShouldLogUsage() const { return false; }
    virtual void IAppInitialising() {}
    virtual void IAppTerminating() {}
    virtual void IStateCreated(ZtOpState*) {}
    virtual void IStateDestroyed(ZtOpState*) {}
    virtual void IDoCustomOption() {}
    virtual int IExecuteCommand(long, long, void*, void*, void**) { return 0; }
    virtual int IHelpParameters() { return 0; }
    virtual void IGetDisplayName(ZtUWideStringBuffer* name);
    virtual void IGetResourceName(ZtUStringBuffer* name);
    virtual int IGetNumParameters() const { return 0; }
    virtual const wchar_t* IGetParameter(int number, ZtUData* value);
    virtual void IGetParameterId(int number, ZtUStringBuffer* id);
    virtual int IGetParameterEnabled(int, ZtUData*) { return 1; }
    virtual int ISetParameter(int, const ZtUData&) { return 0; }

    unsigned int GetTypeNumber() const { return typeNumber_; }
    const ZtUString& GetRegisteredName() const { return registeredName_; }
    int GetFlags() const { return flags_; }

    // Opens the help topic `id`. The reference host has no help viewer: it records the
    // topic, which GetLastHelpTopic reports.
    static void InvokeHelp(const wchar_t* file, int id);
    static int GetLastHelpTopic();

protected:
    // The plug-in's own options, for hosts and plug-ins that keep some.
    ZtUAutoRefPtr<ZtUOptionSet> options_;

private:
    unsigned int typeNumber_;
    ZtUString registeredName_;
    int flags_;
};
