#pragma once
#include "ztplugin/ZtOpExportPlugin.h"
#include "ztutil/ZtUComponent.h"

// The menu entry that imports a display-set file into the document's selection sets. An
// import built on the host's export class: its IExport reads the chosen file.
class ZtOdPdsDstImportPlugin : public ZtOpExportPlugin {
public:
    ZtOdPdsDstImportPlugin();
    ~ZtOdPdsDstImportPlugin() override;

    void IGetResourceName(ZtUStringBuffer* name) override;
    void IGetMenuName(ZtUWideStringBuffer* name) override;
    void IGetFileTypeName(ZtUWideStringBuffer* name) override;
    void IGetFileExtension(ZtUWideStringBuffer* extension) override;
    // Reads `fileName` with a ZtOdPdsDstImportAction and, if the whole file was read, hands
    // its selection sets to the document under a lock of the selection-sets element. 1 for
    // a null file name or a file that can't be opened, 3 for a null state or a read error.
    int IExport(unsigned int, ZtOpState* state, ZtOpProgress* progress,
                const ZtUWideString* fileName) override;
    int IHelp() override;

    static ZtUComponent& GetComponent();
    static int StartComponent();
    static int EndComponent();
};
