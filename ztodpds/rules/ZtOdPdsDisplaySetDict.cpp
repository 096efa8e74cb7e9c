#include "rules/ZtOdPdsDisplaySetDict.h"

#include "rules/ZtOdPdsDisplaySet.h"

namespace {

ZtOdPdsDisplaySetDict* instance = nullptr;

} // namespace

ZtOdPdsDisplaySetDict* ZtOdPdsDisplaySetDict::Instance() {
    if (!instance)
        instance = new ZtOdPdsDisplaySetDict;
    return instance;
}

void ZtOdPdsDisplaySetDict::Destroy() {
    if (!instance)
        return;
    for (ZtUWideStrVoidPtrDictIt it = instance->Begin(); it.IsValid(); it.Next())
        static_cast<ZtOdPdsDisplaySet*>(it.GetValue())->Release();
    instance->RemoveAll();
    delete instance;
    instance = nullptr;
}

void ZtOdPdsDisplaySetDict::Add(ZtOdPdsDisplaySet* set) {
    const wchar_t* name = set->GetName().GetString();
    ZtOdPdsDisplaySet* displaced = Find(name);
    if (displaced == set)
        return;
    Enter(name, set);
    set->AddRef();
    if (displaced)
        displaced->Release();
}

ZtOdPdsDisplaySet* ZtOdPdsDisplaySetDict::Find(const wchar_t* name) const {
    return static_cast<ZtOdPdsDisplaySet*>(ZtUWideStrVoidPtrDict::Find(name));
}
