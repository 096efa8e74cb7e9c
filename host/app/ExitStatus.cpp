#include "app/ExitStatus.h"

namespace {

constexpr ExitStatusKind kExitStatuses[] = {
    {0, "every step succeeded", "done"},
    {1, "a file can't be opened or created (the message says which and why)",
     "no file name, or the file can't be opened or created"},
    {kExitHostFailure,
     "pdsreview can't do what was asked: a usage error, a plug-in library\n"
     "that can't be loaded, a model file that is no DGN model, an attribute\n"
     "source that can't be read, a file that is no BCF archive",
     "pdsreview can't do what was asked"},
    {3, "no document, or a pass over a file failed", "no document, or a pass over the file failed"},
    {kExitWriteFailed,
     "a file or standard output could not be written; an old file is left\nas it was",
     "the file could not be written"},
    {kExitStrictWarning, "--strict, and a step gave a warning", "a warning under --strict"},
    {6, "no model is loaded to give the units, or no saved views to export",
     "the models give no units-of-resolution factor, or the document has no saved views"},
    {64, "the control file can't be opened, or no block begins in it",
     "the control file can't be opened, or no block begins in it"},
    {128, "the control file's first block is not DesignReview_Control",
     "the control file's first block is not DesignReview_Control"},
};

} // namespace

std::span<const ExitStatusKind> ExitStatusKinds() {
    return kExitStatuses;
}

const char* StatusMeaning(int status) {
    for (const ExitStatusKind& kind : kExitStatuses)
        if (kind.code == status)
            return kind.message;
    return "failed";
}
