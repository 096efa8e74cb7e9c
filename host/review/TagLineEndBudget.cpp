#include "review/TagLineEndBudget.h"

#include "review/SavedItems.h"
#include "ztutil/ZtUSysFile.h"

#include <string_view>

namespace {

// What one pass over a tag file finds: its tags, and whether the most their line ends
// could be widened passes a budget.
struct TagFileScan {
    std::size_t tags = 0;
    bool overBudget = false;
};

// Adds one tag's most to `spent`, unless that passes `budget`.
bool Charge(std::uint64_t texts, std::uint64_t lineFeeds, std::uint64_t budget,
            std::uint64_t* spent) {
    if (lineFeeds == 0)
        return true;
    // Divided rather than multiplied, so that the product can't wrap.
    if (texts > (budget - *spent) / lineFeeds)
        return false;
    *spent += texts * lineFeeds;
    return true;
}

TagFileScan ScanTagFile(const wchar_t* path, std::uint64_t budget) {
    TagFileScan scan;
    ZtUFile* file =
        ZtUSysFile::fopenW(path, ZtUSysFile::kAccessRead, ZtUSysFile::kOpenExisting,
                           ZtUSysFile::kTranslateText, ZtUSysFile::kShareReadWrite, 0, 0);
    if (!file)
        return scan;
    static constexpr std::wstring_view kTagStart = L"tag{";
    static constexpr std::wstring_view kText = L"text{";
    std::size_t lineMatched = 0; // characters of kTagStart that begin the line, or npos
    std::size_t textMatched = 0; // characters of kText that end the text read so far
    std::uint64_t texts = 0;     // of the tag being read
    std::uint64_t lineFeeds = 0; // of the tag being read
    std::uint64_t spent = 0;
    for (unsigned c; (c = ZtUSysFile::fgetwc(file)) != ZtUFile::kEnd;) {
        if (c == L'\n') {
            ++lineFeeds;
            lineMatched = 0;
        } else if (lineMatched < kTagStart.size() &&
                   c == static_cast<unsigned>(kTagStart[lineMatched])) {
            if (++lineMatched == kTagStart.size()) {
                scan.overBudget = scan.overBudget || !Charge(texts, lineFeeds, budget, &spent);
                ++scan.tags;
                texts = 0;
                lineFeeds = 0;
            }
        } else {
            lineMatched = std::wstring_view::npos;
        }
        // kText repeats only its first letter, so a mismatch behind "text" falls back
        // to the "t" it ended with.
        if (textMatched == 4 && c != L'{')
            textMatched = 1;
        if (c == static_cast<unsigned>(kText[textMatched])) {
            if (++textMatched == kText.size()) {
                ++texts;
                textMatched = 0;
            }
        } else {
            textMatched = c == L't';
        }
    }
    scan.overBudget = scan.overBudget || !Charge(texts, lineFeeds, budget, &spent);
    ZtUSysFile::fclose(file);
    return scan;
}

} // namespace

TagLineEndBudget::TagLineEndBudget(const ZtOpState& state, std::uint64_t addedLineEnds)
    : tagsBefore_(CountSavedItems(state).tags), addedLineEnds_(addedLineEnds) {}

std::size_t TagLineEndBudget::CountDropped(const ZtOpState& state, const wchar_t* path) const {
    const TagFileScan scan = ScanTagFile(path, addedLineEnds_);
    if (!scan.overBudget)
        return 0;
    const std::size_t came = CountSavedItems(state).tags - tagsBefore_;
    return scan.tags > came ? scan.tags - came : 0;
}
