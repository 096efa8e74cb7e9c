#pragma once
#include "ztplugin/ZtOpExportPlugin.h"
#include "ztutil/ZtUComponent.h"

// The menu entry that imports a tag file into the document's saved views. An import
// built on the host's export class: its IExport reads the chosen file.
class ZtOdPdsTagImportPlugin : public ZtOpExportPlugin {
public:
    ZtOdPdsTagImportPlugin();
    ~ZtOdPdsTagImportPlugin() override;

    void IGetResourceName(ZtUStringBuffer* name) override;
    void IGetMenuName(ZtUWideStringBuffer* name) override;
    void IGetFileTypeName(ZtUWideStringBuffer* name) override;
    void IGetFileExtension(ZtUWideStringBuffer* extension) override;
    // Reads `fileName` with a ZtOdPdsTagImportAction; if it was read, appends its views to
    // the document's saved views and brings both next identifiers past the highest one
    // imported, unless both are past it already. Each element is locked for its own
    // hand-over only. 1 for a null file name or a file that can't be opened, 3 for a
    // null state or memory that ran out, 6 when the models give no units factor.
    int IExport(unsigned int, ZtOpState* state, ZtOpProgress* progress,
                const ZtUWideString* fileName) override;
    int IHelp() override;

    static ZtUComponent& GetComponent();
    static int StartComponent();
    static int EndComponent();

private:
    int Import(ZtOpState* state, const wchar_t* path, ZtOpProgress* progress);
};
