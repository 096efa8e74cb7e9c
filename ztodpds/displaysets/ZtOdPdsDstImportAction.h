#pragma once
#include "plugin/ZtOdPdsFileAction.h"
#include "ztplugin/ZtOpSavedItem.h"
#include "ztutil/ZtUComponent.h"

class ZtOdPdsDiagnostics;
class ZtOpSelectionSetsElement;
class ZtOpState;

// Reads display-set files into selection sets, which gather in the action's own folder:
// the document is left alone until the caller hands the folder over with AppendTo. One
// action may read many files in turn.
class ZtOdPdsDstImportAction : public ZtOdPdsFileAction {
public:
    // `state` may be null; Perform then refuses to run.
    explicit ZtOdPdsDstImportAction(ZtOpState* state) : state_(state) {}

    // Two passes over the file: the first counts the display sets for the progress, the
    // second makes their selection sets. 0 when both went through; 1 for a null path or a
    // file that can't be opened; 3 without a state or after a read error, in which case
    // the sets finished before the error stay in the folder.
    int Perform(const wchar_t* path, ZtOpProgress* progress) override;
    // Moves the gathered selection sets into `element`; gives how many there were.
    int AppendTo(ZtOpSelectionSetsElement* element);

    const ZtOpFolderItem& GetFolder() const { return folder_; }

    // The files read from now on report what becomes of their lines to `diagnostics`
    // (not owned; null: nothing is reported).
    void SetDiagnostics(ZtOdPdsDiagnostics* diagnostics) { diagnostics_ = diagnostics; }

    static ZtUComponent& GetComponent();
    static int StartComponent();
    static int EndComponent();

private:
    ZtOpState* state_;
    ZtOpFolderItem folder_;
    ZtOdPdsDiagnostics* diagnostics_ = nullptr;
};
