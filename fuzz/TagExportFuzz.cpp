// The tag export of a document whose views and tags came from the input by the tag
// import, over a model that the tags are picked on, and the exported file read back.
// Every tag whose record the host's tally expects to read back must come back with its
// identifier and the text of the document's tag (with the CR LF line ends that comments
// hold), up to the first record that the tally says takes the rest of the file with it.

#include "ZtFuzzSampleModel.h"
#include "ZtFuzzSupport.h"

#include "review/SavedItems.h"
#include "review/TagExportTally.h"
#include "tags/ZtOdPdsTagExportPlugin.h"
#include "tags/ZtOdPdsTagImportPlugin.h"
#include "ztplugin/ZtOpComment.h"
#include "ztplugin/ZtOpRedlineTag.h"
#include "ztplugin/ZtOpState.h"
#include "ztplugin/ZtOpView.h"
#include "ztutil/ZtUFileScope.h"
#include "ztutil/ZtUSysString.h"
#include "ztutil/ZtUWideString.h"

#include <algorithm>
#include <cwchar>
#include <string>
#include <utility>
#include <vector>

namespace {

using TagText = std::pair<std::uint64_t, std::wstring>;

// The tally, and beside it each record's identifier and text as a reader should make
// them of what was written.
class RecordingWatcher : public ZtUWriteWatcher {
public:
    void Wrote(std::wstring_view text) override {
        tally.Wrote(text);
        if (text.substr(0, 4) == L"tag{") {
            const std::wstring head(text.substr(4));
            written.push_back(
                {static_cast<std::uint64_t>(std::wcstoll(head.c_str(), nullptr, 10)), {}});
        } else if (text.substr(0, 5) == L"text{" && !written.empty()) {
            std::wstring_view body = text.substr(std::min(text.find(L'\n'), text.size() - 1) + 1);
            if (body.size() >= 3 && body.substr(body.size() - 3) == L"}}\n")
                body.remove_suffix(3);
            for (const wchar_t c : body)
                written.back().second += c == L'\n' ? std::wstring(L"\r\n") : std::wstring(1, c);
        }
    }
    bool MayReplace(const Replacement& replacement) override {
        return tally.MayReplace(replacement);
    }

    TagExportTally tally{0, {}, false};
    std::vector<TagText> written;
};

// A comment's text as the tag format carries it: every line end CR LF.
std::wstring Carried(const std::wstring& body) {
    std::wstring carried;
    for (std::size_t i = 0; i < body.size(); ++i) {
        if (body[i] == L'\r' && i + 1 < body.size() && body[i + 1] == L'\n')
            continue;
        carried += body[i] == L'\n' ? std::wstring(L"\r\n") : std::wstring(1, body[i]);
    }
    return carried;
}

// Each tag of the document with the text of its comment as the format carries it.
std::vector<TagText> TagTexts(const ZtOpState& state) {
    std::vector<TagText> texts;
    WalkSavedItems(state, SavedItemTree::kSavedViews, [&texts](const ZtOpSavedItem& item, int) {
        if (item.GetType() != ZtOpSavedItem::kTypeView)
            return;
        const auto& view = static_cast<const ZtOpView&>(item);
        const auto comments = CommentsById(view);
        for (std::size_t i = 0; i < view.GetRedlines().Size(); ++i) {
            const ZtOpRedline* redline = view.GetRedlines()[i];
            if (redline->GetRedlineType() != ZtOpRedline::kTypeTag)
                continue;
            const auto id = static_cast<const ZtOpRedlineTag*>(redline)->GetCommentId();
            if (const auto found = comments.find(id); found != comments.end())
                texts.push_back({id, Carried(found->second->GetBody().Str())});
        }
    });
    std::sort(texts.begin(), texts.end());
    return texts;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ZtUWideString input(ZtFuzzWrite("input.tag", data, size));
    ZtOpState state;
    ZtFuzzAddSampleModel(state);
    ZtOdPdsTagImportPlugin import;
    if (import.IExport(0, &state, nullptr, &input) != 0)
        return 0;
    const std::string outputPath = ZtFuzzNewFile("output.tag");
    const ZtUWideString output(ZtUSysString::Utf8ToWide(outputPath));
    RecordingWatcher watcher;
    {
        ZtUFileScope scope;
        scope.Watch(&watcher);
        ZtOdPdsTagExportPlugin plugin;
        const int status = plugin.IExport(0, &state, nullptr, &output);
        ZtFuzzCheck(status == 0 || status == 6, "the export of an imported document failed");
        if (status != 0)
            return 0;
        ZtFuzzCheck(scope.GetFailures().empty(), "the export's file could not be written");
    }
    const std::vector<TagExportTally::Record>& records = watcher.tally.GetRecords();
    ZtFuzzCheck(records.size() == watcher.written.size(), "the tally counts other records");

    std::vector<TagText> expected;
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (records[i].fate == TagExportTally::Fate::kLosesTheRest)
            break;
        if (records[i].fate == TagExportTally::Fate::kReadsBack)
            expected.push_back(watcher.written[i]);
    }
    std::sort(expected.begin(), expected.end());
    const std::vector<TagText> exported = TagTexts(state);
    ZtFuzzCheck(std::includes(exported.begin(), exported.end(), expected.begin(), expected.end()),
                "the export wrote a tag other than the document's");
    ZtOpState back;
    ZtFuzzAddSampleModel(back);
    ZtOdPdsTagImportPlugin reimport;
    ZtFuzzCheck(reimport.IExport(0, &back, nullptr, &output) == 0, "the export does not read");
    const std::vector<TagText> read = TagTexts(back);
    ZtFuzzCheck(std::includes(read.begin(), read.end(), expected.begin(), expected.end()),
                "a tag that the tally expects to read back does not come back as it was");
    return 0;
}
