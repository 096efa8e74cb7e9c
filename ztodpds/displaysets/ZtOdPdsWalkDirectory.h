#pragma once

class ZtOdPdsFileAction;
class ZtOpProgress;

// Runs `action` on every file of `directory` whose name has `extension` (given without its
// point, as "dst"), or on every file if `extension` is null, in the order of the host's
// directory walk. The status of each run is not looked at. Gives the number of files
// handed to the action.
int ZtOdPdsWalkDirectory(const wchar_t* directory, const wchar_t* extension,
                         ZtOdPdsFileAction* action, ZtOpProgress* progress);
