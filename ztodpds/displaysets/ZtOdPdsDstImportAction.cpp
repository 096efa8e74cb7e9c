#include "displaysets/ZtOdPdsDstImportAction.h"

#include "displaysets/ZtOdPdsDisplaySetCounter.h"
#include "displaysets/ZtOdPdsDisplaySetFile.h"
#include "plugin/ZtOdPdsComponents.h"
#include "plugin/ZtOdPdsStatus.h"
#include "readers/ZtOdPdsDstContext.h"
#include "readers/ZtOdPdsTextFile.h"
#include "rules/ZtOdPdsCriterion.h"
#include "rules/ZtOdPdsLimits.h"
#include "rules/ZtOdPdsRuleReporter.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpState.h"

#include <optional>

int ZtOdPdsDstImportAction::Perform(const wchar_t* path, ZtOpProgress* progress) {
    if (!path)
        return kZtOdPdsNoFile;
    if (!state_)
        return kZtOdPdsNoState;

    // The first pass ends, and closes the file, before anything is built.
    ZtOdPdsTextFile file;
    ZtOdPdsDisplaySetCounter counter;
    if (!file.Open(path))
        return kZtOdPdsNoFile;
    if (!file.ReadLines(counter)) {
        file.Close();
        return kZtOdPdsNoState;
    }
    file.Close();

    ZtOdPdsDstContext context;
    context.names = state_->EditNameDict();
    context.folder = &folder_;
    context.conditionsLeft = kZtOdPdsMaxFileConditions;
    // A reporting read keeps the line pump's place for the consumers to say where they
    // are.
    ZtOdPdsLineSpot spot{diagnostics_, path, {}};
    std::optional<ZtOdPdsRuleReporter> reporter;
    if (diagnostics_)
        context.reporter = &reporter.emplace(spot);
    ZtOdPdsDisplaySetFile sets(&context, counter.GetCount(), progress);
    if (!file.Open(path))
        return kZtOdPdsNoFile;
    const int read = diagnostics_ ? file.ReadLines(sets, spot) : file.ReadLines(sets);
    file.Close();
    return read ? kZtOdPdsOk : kZtOdPdsNoState;
}

int ZtOdPdsDstImportAction::AppendTo(ZtOpSelectionSetsElement* element) {
    const int count = static_cast<int>(folder_.GetNumChildren());
    if (element)
        element->AppendCreateGuidIfDuplicate(&folder_);
    return count;
}

ZtUComponent& ZtOdPdsDstImportAction::GetComponent() {
    static ZtUComponent component;
    return component;
}

int ZtOdPdsDstImportAction::StartComponent() {
    return ZtOdPdsStartComponents({{&GetComponent(), "ZtOdPdsDstImportAction"},
                                   {&ZtOdPdsCriterion::GetComponent(), "ZtOdPdsCriterion"}});
}

int ZtOdPdsDstImportAction::EndComponent() {
    return ZtOdPdsEndComponents({&GetComponent(), &ZtOdPdsCriterion::GetComponent()});
}
