#pragma once

class ZtOpProgress;

// Work done on one file: the menu imports and the loader run the same actions through
// this interface. An action gathers its results in a folder of its own; the caller hands
// them to the document. One action may run on many files in turn.
class ZtOdPdsFileAction {
public:
    virtual ~ZtOdPdsFileAction() = default;
    // Runs the action on `path`; returns a status code (ZtOdPdsStatus).
    virtual int Perform(const wchar_t* path, ZtOpProgress* progress) = 0;
};
