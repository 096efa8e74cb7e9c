#include "displaysets/ZtOdPdsWalkDirectory.h"

#include "plugin/ZtOdPdsFileAction.h"
#include "plugin/ZtOdPdsGuard.h"
#include "plugin/ZtOdPdsStatus.h"
#include "ztutil/ZtUSysFile.h"

int ZtOdPdsWalkDirectory(const wchar_t* directory, const wchar_t* extension,
                         ZtOdPdsFileAction* action, ZtOpProgress* progress) {
    int count = 0;
    for (ZtUSysDirHandle dir = ZtUSysFile::OpenDirW(directory); dir.IsValid(); dir.Next()) {
        ZtUSysFileInfoHandle* info = dir.OpenFileInfo();
        const wchar_t* name = info->GetFullNameW();
        if (!extension || ZtUSysFile::HasFileExtensionW(name, extension)) {
            // A file that fails is passed over like one that can't be read.
            ZtOdPdsGuard(static_cast<int>(kZtOdPdsNoState),
                         [&] { return action->Perform(name, progress); });
            ++count;
        }
        ZtUSysFile::CloseFileInfo(info);
    }
    return count;
}
