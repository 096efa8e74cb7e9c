#pragma once
#include "ztplugin/ZtOpFindSpec.h"
#include "ztutil/ZtUWideStrVoidPtrDict.h"

class ZtOdPdsDisplaySet;

// The display sets of the definition section being read, by name: the one way in which a
// set reaches the sets it refers to. One instance in the process, with no lock, so that
// two imports must not run at once. It holds one count on each set it lists.
class ZtOdPdsDisplaySetDict : public ZtUWideStrVoidPtrDict {
public:
    // The instance, made empty if there is none.
    static ZtOdPdsDisplaySetDict* Instance();
    // Releases every listed set and deletes the instance; nothing if there is none.
    static void Destroy();

    // Lists `set` under its name. A set listed under that name before is displaced and
    // released: a reference finds the latest set of a name.
    void Add(ZtOdPdsDisplaySet* set);
    // The set listed under `name` (compared exactly), or null.
    ZtOdPdsDisplaySet* Find(const wchar_t* name) const;

    // The find query of the set made last. A set that builds on an earlier one mostly
    // repeats it, so a new set's conditions follow it and share its storage.
    const ZtOpFindSpec& GetLastFindSpec() const { return lastFindSpec_; }
    void SetLastFindSpec(const ZtOpFindSpec& spec) { lastFindSpec_ = spec; }

private:
    ZtOpFindSpec lastFindSpec_;
};
