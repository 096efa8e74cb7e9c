#pragma once

// Status codes of the plug-ins' operations and the per-file actions. 0 is success
// everywhere; the others say what was missing.
enum ZtOdPdsStatus : int {
    kZtOdPdsOk = 0,
    kZtOdPdsNoFile = 1,           // no file name, or the file can't be opened or created
    kZtOdPdsNoState = 3,          // no document, or a pass over a file failed
    kZtOdPdsNoUnits = 6,          // no units-of-resolution factor, or no saved-views element
    kZtOdPdsUnreadableSet = 64,   // control file can't be opened, or no block begins in it
    kZtOdPdsNotAControlFile = 128 // the control file's first block has the wrong name
};
