#include "review/TagExportTally.h"

#include "ztutil/ZtUSysString.h"
#include "ztutil/ZtUUtf16.h"

#include <algorithm>
#include <functional>
#include <limits>

namespace {

constexpr std::wstring_view kGroupUnsafe = L"{}\r\n";
// What closes a tag's text and the tag: the last of each piece the export prints.
constexpr std::wstring_view kTextEnd = L"}}\n";

bool StartsWith(std::wstring_view text, std::wstring_view prefix) {
    return text.substr(0, prefix.size()) == prefix;
}

// The decimal number at the start of `text`, with its sign; `*end` is where it stops.
long long LeadingNumber(std::wstring_view text, std::size_t* end = nullptr) {
    std::size_t at = 0;
    const bool negative = !text.empty() && text[0] == L'-';
    at += negative;
    unsigned long long value = 0;
    constexpr unsigned long long kLimit = std::numeric_limits<unsigned long long>::max() / 10;
    for (; at < text.size() && text[at] >= L'0' && text[at] <= L'9'; ++at)
        value = value > kLimit ? value : value * 10 + static_cast<unsigned>(text[at] - L'0');
    if (end)
        *end = at;
    // Two's complement, as the export prints an identifier of the upper half.
    return negative ? static_cast<long long>(0 - value) : static_cast<long long>(value);
}

// What becomes of a text written as `body` under `count`, and why, if it does not read
// back as it was.
struct TextFate {
    TagExportTally::Fate fate;
    const char* why;
};

TextFate FateOfText(std::wstring_view body, long long count) {
    using Fate = TagExportTally::Fate;
    if (count < 2)
        return {Fate::kLosesTheRest,
                "has fewer than two characters, which the format's count "
                "can't carry: a reader takes the rest of the file for its text"};
    if (static_cast<unsigned long long>(count) != body.size())
        return {Fate::kLosesTheRest,
                "holds a NUL, at which it is written cut while its count covers it all: a "
                "reader takes what follows into the text, and the tags behind it are lost"};
    if (body.substr(body.size() - 2).find_first_of(L"{}") != std::wstring_view::npos)
        return {Fate::kLosesTheRest, "ends in a brace, which a reader takes for markup: this "
                                     "tag and those behind it are lost"};
    if (body.find(L"\r\n") != std::wstring_view::npos)
        return {Fate::kLosesTheRest,
                "holds a CR before a line end, which a reader takes for the line end: its "
                "count comes out short, and the tags behind it are lost"};
    if (body.find(wchar_t{0xFFFF}) != std::wstring_view::npos)
        return {Fate::kLosesTheRest,
                "holds U+FFFF, at which a reader's input ends: the tags behind it are lost"};
    for (std::size_t i = 0; i < body.size(); ++i) {
        const unsigned unit = static_cast<unsigned>(body[i]);
        if (ZtUUtf16::IsHighSurrogate(unit) && i + 1 < body.size() &&
            ZtUUtf16::IsLowSurrogate(static_cast<unsigned>(body[i + 1])))
            ++i;
        else if (ZtUUtf16::IsSurrogate(unit))
            return {Fate::kChanged,
                    "holds a lone surrogate, which a file can't hold: it is written as U+FFFD"};
    }
    return {Fate::kReadsBack, nullptr};
}

} // namespace

TagExportTally::TagExportTally(std::size_t documentTags, std::vector<std::wstring> modelNames,
                               bool keepOldFile)
    : documentTags_(documentTags), keepOldFile_(keepOldFile) {
    for (std::wstring& name : modelNames) {
        if (name.find_first_of(kGroupUnsafe) == std::wstring::npos)
            continue;
        std::wstring written = name;
        std::replace_if(
            written.begin(), written.end(),
            [](wchar_t c) { return kGroupUnsafe.find(c) != std::wstring_view::npos; }, L'_');
        unsafeNames_.emplace_back(std::move(name), std::move(written));
    }
}

void TagExportTally::Wrote(std::wstring_view text) {
    if (StartsWith(text, L"file{")) {
        std::size_t end = 0;
        LeadingNumber(text.substr(5), &end);
        const std::size_t name = 5 + end + 2;
        Group(text.substr(std::min(name, text.size()), text.size() > name + kTextEnd.size()
                                                           ? text.size() - name - kTextEnd.size()
                                                           : 0));
    } else if (StartsWith(text, L"persp_ang{")) {
        degrees_ = LeadingNumber(text.substr(10));
        viewTexts_.clear();
    } else if (StartsWith(text, L"target{") || StartsWith(text, L"eye{") ||
               StartsWith(text, L"clip_")) {
        // A viewpoint key: a reader begins a new view with the next tag.
        viewTexts_.clear();
    } else if (StartsWith(text, L"tag{")) {
        records_.push_back(
            {static_cast<std::uint64_t>(LeadingNumber(text.substr(4))), Fate::kReadsBack});
        unfiled_ += inUnfiledGroup_;
    } else if (StartsWith(text, L"text{")) {
        Text(text.substr(5));
    }
}

void TagExportTally::Group(std::wstring_view name) {
    // Tags on no file come first, in the group without a name.
    inUnfiledGroup_ = firstGroup_ && name.empty();
    firstGroup_ = false;
    fileGroups_ += !inUnfiledGroup_;
    for (const auto& [model, written] : unsafeNames_)
        if (written == name)
            problems_.push_back("the model file name \"" + ZtUSysString::WideToPath(model) +
                                "\" holds braces or line ends, which a tag file can't hold "
                                "in a group's name: the group is written as \"" +
                                ZtUSysString::WideToPath(written) + "\"");
}

void TagExportTally::Text(std::wstring_view value) {
    std::size_t digits = 0;
    const long long count = LeadingNumber(value, &digits);
    std::wstring_view body = value.substr(std::min(digits + 1, value.size()));
    if (body.size() >= kTextEnd.size() && body.substr(body.size() - kTextEnd.size()) == kTextEnd)
        body.remove_suffix(kTextEnd.size());
    if (records_.empty())
        return;
    const auto [first, isFirst] =
        viewTexts_.try_emplace(records_.back().id, std::hash<std::wstring_view>()(body));
    if (const TextFate text = FateOfText(body, count); text.why)
        TagProblem(text.fate, "'s text " + std::string(text.why));
    else if (degrees_ < 1 || degrees_ > 179)
        TagProblem(Fate::kLost, " is seen with a field of view of " + std::to_string(degrees_) +
                                    " degrees, of which a reader makes no view: it is lost");
    else if (!isFirst && first->second != std::hash<std::wstring_view>()(body))
        TagProblem(Fate::kChanged, " shares its identifier with an earlier tag of its view, "
                                   "whose text a reader gives it");
}

void TagExportTally::TagProblem(Fate fate, const std::string& problem) {
    Record& record = records_.back();
    record.fate = fate;
    if (++tagProblems_ <= kNamedProblems)
        problems_.push_back("tag " + std::to_string(record.id) + problem);
}

bool TagExportTally::MayReplace(const Replacement& replacement) {
    if (tagProblems_ > kNamedProblems)
        problems_.push_back(std::to_string(tagProblems_ - kNamedProblems) +
                            " more tags would not read back as they are");
    if (documentTags_ > records_.size())
        problems_.push_back(std::to_string(documentTags_ - records_.size()) + " of " +
                            std::to_string(documentTags_) + " tags were not written");
    const bool emptied = replacement.bytes == 0 && replacement.oldBytes > 0;
    keptOldFile_ = keepOldFile_ && (emptied || !problems_.empty());
    if (emptied)
        problems_.push_back("nothing to write: the " + std::to_string(replacement.oldBytes) +
                            "-byte file " + replacement.path +
                            (keptOldFile_ ? " would be left empty" : " is left empty"));
    return !keptOldFile_;
}
