#include "review/DisplaySetBudget.h"

#include "review/SavedItems.h"
#include "ztplugin/ZtOpFindSpec.h"
#include "ztplugin/ZtOpSelectionSet.h"
#include "ztutil/ZtUSysFile.h"

#include <string>

namespace {

// The "<Display Set>" lines of the file, each of which begins a set.
std::size_t CountSetLines(const wchar_t* path) {
    ZtUFile* file =
        ZtUSysFile::fopenW(path, ZtUSysFile::kAccessRead, ZtUSysFile::kOpenExisting,
                           ZtUSysFile::kTranslateText, ZtUSysFile::kShareReadWrite, 0, 0);
    if (!file)
        return 0;
    static constexpr std::wstring_view kSetLine = L"<Display Set>";
    std::size_t count = 0;
    std::size_t matched = 0; // characters of kSetLine that begin the line, or npos
    for (unsigned c; (c = ZtUSysFile::fgetwc(file)) != ZtUFile::kEnd;) {
        if (c == L'\n' || c == L'\r') {
            count += matched == kSetLine.size();
            matched = 0;
        } else if (matched < kSetLine.size() && c == static_cast<unsigned>(kSetLine[matched])) {
            ++matched;
        } else {
            matched = std::wstring_view::npos;
        }
    }
    count += matched == kSetLine.size();
    ZtUSysFile::fclose(file);
    return count;
}

} // namespace

DisplaySetBudget::DisplaySetBudget(const ZtOpState& state, std::uint64_t fileConditions,
                                   std::uint64_t setConditions)
    : fileConditions_(fileConditions), setConditions_(setConditions) {
    const ZtOpFolderItem* folder = SavedItemTreeRoot(state, SavedItemTree::kSelectionSets);
    setsBefore_ = folder ? folder->GetNumChildren() : 0;
}

std::size_t DisplaySetBudget::CountAbandoned(const ZtOpState& state, const wchar_t* path) const {
    const ZtOpFolderItem* folder = SavedItemTreeRoot(state, SavedItemTree::kSelectionSets);
    if (!folder)
        return 0;
    std::uint64_t conditions = 0;
    for (std::size_t i = setsBefore_; i < folder->GetNumChildren(); ++i)
        if (const auto* set = dynamic_cast<const ZtOpSelectionSet*>(folder->GetChild(i)))
            if (const ZtOpFindSpec* spec = set->GetImplicitSelection().GetImplicitFindSpec())
                conditions += spec->GetNumConditions();
    if (conditions + setConditions_ <= fileConditions_)
        return 0;
    const std::size_t made = folder->GetNumChildren() - setsBefore_;
    const std::size_t inFile = CountSetLines(path);
    return inFile > made ? inFile - made : 0;
}
