#include "ztplugin/ZtOpPlugin.h"

#include "ztutil/ZtUSysString.h"

namespace {
int lastHelpTopic = 0;
} // namespace

ZtOpPlugin::ZtOpPlugin(unsigned int typeNumber, const char* registeredName, int flags)
    : typeNumber_(typeNumber), registeredName_(registeredName), flags_(flags) {}

ZtOpPlugin::~ZtOpPlugin() = default;

void ZtOpPlugin::IGetDisplayName(ZtUWideStringBuffer* name) {
    if (name)
        name->SetString(ZtUSysString::Utf8ToWide(registeredName_.Str()).c_str());
}

void ZtOpPlugin::IGetResourceName(ZtUStringBuffer* name) {
    if (name)
        name->Clear();
}

const wchar_t* ZtOpPlugin::IGetParameter(int, ZtUData*) {
    return nullptr;
}

void ZtOpPlugin::IGetParameterId(int number, ZtUStringBuffer* id) {
    if (id)
        id->SetString(std::to_string(number).c_str());
}

void ZtOpPlugin::InvokeHelp(const wchar_t*, int id) {
    lastHelpTopic = id;
}

int ZtOpPlugin::GetLastHelpTopic() {
    return lastHelpTopic;
}
