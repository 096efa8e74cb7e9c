#pragma once
#include "rules/ZtOdPdsLimits.h"
#include "ztplugin/ZtOpFindSpec.h"
#include "ztutil/ZtUComponent.h"
#include "ztutil/ZtUWideString.h"

#include <cstdint>

struct ZtOdPdsDstContext;

// Collects the conditions of one flattened display set into a find query, and makes of it
// a saved selection set. Lives for the end of one display set; the calls come in the order
// constructor, conditions and alternatives, SetComment, AddSelectionSet, destructor.
class ZtOdPdsFindSpecBuilder {
public:
    // `name` is the name of the selection set to make; the find query takes at most
    // `maxConditions` conditions.
    explicit ZtOdPdsFindSpecBuilder(const wchar_t* name,
                                    std::uint64_t maxConditions = kZtOdPdsMaxConditions);
    ZtOdPdsFindSpecBuilder(const ZtOdPdsFindSpecBuilder&) = delete;
    ZtOdPdsFindSpecBuilder& operator=(const ZtOdPdsFindSpecBuilder&) = delete;
    ~ZtOdPdsFindSpecBuilder();

    // Appends a copy of `condition`. If a new alternative was asked for, the condition
    // itself gets the flag kNewAlternative first. Either way the request is cleared. The
    // builder refuses a condition beyond its maximum: it changes nothing then,
    // gives 0 and counts as overflowed from then on.
    int AddCondition(ZtOpFindCondition& condition);
    // The conditions share storage with those of `spec` for as long as they repeat them.
    void Follow(const ZtOpFindSpec& spec) { findSpec_->Follow(spec); }
    // The next condition opens a new alternative.
    void OpenAlternative() { nextOpensAlternative_ = 1; }
    int HasOverflowed() const { return overflowed_; }

    void SetComment(const wchar_t* comment) { comment_.SetString(comment); }
    // Makes the selection set, with the find query in its select-all mode and the comment (if it
    // isn't empty) as comment 0, and adds it to the context's folder.
    void AddSelectionSet(ZtOdPdsDstContext* context);

    const ZtOpFindSpec& GetFindSpec() const { return *findSpec_; }

    static ZtUComponent& GetComponent();
    static int StartComponent();
    static int EndComponent();

private:
    int nextOpensAlternative_ = 0;
    ZtUWideString name_;
    ZtUWideString comment_;
    ZtOpFindSpec* findSpec_;
    std::uint64_t maxConditions_;
    int overflowed_ = 0;
};
