#pragma once
#include "review/ReviewRun.h"
#include "ztutil/ZtUFileScope.h"

#include <string>
#include <vector>

// The files of a run as the host guards them: a run never writes over a file that it
// reads, nor over its own standard output or error, whatever names lead to the file.

// A file that a step reads or writes, as the user named it, and the step ("open
// plant.dri") that messages name.
struct NamedFile {
    std::string path;
    std::string step;
};

// Why the run must not start, or empty: an output that is "-" (standard output, which
// carries the run's report), or that is the same file as one of the inputs (compared by
// device and file number, through links) or as standard output or error. The inputs are
// those the run's steps name and the side files of its control files; models are known
// only once their control file is read, and StepFiles guards them.
std::string RefusedOutput(const std::vector<NamedFile>& inputs,
                          const std::vector<NamedFile>& outputs);

// The host's file layer around one step: a scope in which each file the run has read so
// far, and standard output and error, are protected from the step's writes (so that a
// model that a control file named, found only while the run goes, is not written over
// either), and whose failures and warnings are the step's. The files the step reads join
// the run's inputs when it ends.
class StepFiles {
public:
    StepFiles(ReviewRun& run, const Step& step);
    ~StepFiles();
    StepFiles(const StepFiles&) = delete;
    StepFiles& operator=(const StepFiles&) = delete;

    const std::vector<ZtUFileScope::Failure>& GetFailures() const { return scope_.GetFailures(); }
    // Adds the file layer's warnings to the run's, each beginning with the step's name and
    // file; call it once, when the step is done.
    void AddWarnings();

private:
    ReviewRun& run_;
    const Step& step_;
    ZtUFileScope scope_;
};
