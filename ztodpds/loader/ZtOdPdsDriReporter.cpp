#include "loader/ZtOdPdsDriReporter.h"

#include "loader/ZtOdPdsDriValues.h"
#include "readers/ZtOdPdsBlock.h"
#include "readers/ZtOdPdsBlockFileSource.h"
#include "ztutil/ZtUWideString.h"

#include <cwchar>
#include <string>

namespace {

// How many numbers stand one after another at the head of `text`, as the loader's scan
// reads them, up to `most`.
int CountNumbers(const std::wstring& text, int most) {
    const wchar_t* at = text.c_str();
    int count = 0;
    for (; count < most; ++count) {
        wchar_t* end = nullptr;
        std::wcstod(at, &end);
        if (end == at)
            break;
        at = end;
    }
    return count;
}

} // namespace

ZtOdPdsBlockTracker ZtOdPdsDriReporter::ValueTracker() const {
    return ZtOdPdsBlockTracker(tracker_.Sink(), tracker_.File(), tracker_.ValueAt());
}

void ZtOdPdsDriReporter::Report(ZtOdPdsCheck check, ZtOdPdsSourcePosition at,
                                std::wstring_view text, std::int64_t figure0, std::int64_t figure1,
                                ZtOdPdsSourcePosition related) const {
    ZtOdPdsReport(tracker_.Sink(), check, tracker_.File(), at, text, {figure0, figure1}, related);
}

void ZtOdPdsDriReporter::NotControlFile(const ZtUWideStringBuffer* firstName) {
    if (firstName)
        Report(ZtOdPdsCheck::kNotControlFile, tracker_.NameAt(), firstName->Str(), 1, 0,
               tracker_.StrayBraceAt());
    else
        Report(ZtOdPdsCheck::kNotControlFile, {}, {}, 0, 0, tracker_.StrayBraceAt());
}

void ZtOdPdsDriReporter::NumberBlock(const ZtOdPdsBlock& block, int needs) {
    const int found = CountNumbers(block.GetValue().Str(), needs + 1);
    if (found != needs)
        Report(ZtOdPdsCheck::kNumberCount, tracker_.NameAt(), block.GetName().Str(), needs, found);
}

void ZtOdPdsDriReporter::BlockRead(const ZtOdPdsBlock& block) {
    const ZtUWideStringBuffer& key = block.GetName();
    const ZtOdPdsSourcePosition at = tracker_.NameAt();
    auto taken = [&](int needs) { return CountNumbers(block.GetValue().Str(), needs) == needs; };
    if (key == L"dgn")
        return;
    if (key == L"transform") {
        NumberBlock(block, 9);
        if (taken(9)) {
            if (transformAt_.IsKnown())
                Report(ZtOdPdsCheck::kOverridden, transformAt_, key.Str(), 0, 0, at);
            transformAt_ = at;
        }
    } else if (key == L"old_origin") {
        NumberBlock(block, 3);
        if (taken(3)) {
            if (oldOriginAt_.IsKnown())
                Report(ZtOdPdsCheck::kOriginOrder, oldOriginAt_, key.Str(),
                       newOriginAt_.IsKnown() ? 1 : 2);
            oldOriginAt_ = at;
        }
    } else if (key == L"new_origin") {
        NumberBlock(block, 3);
        if (taken(3)) {
            if (newOriginAt_.IsKnown())
                Report(ZtOdPdsCheck::kOverridden, newOriginAt_, key.Str(), 0, 0, at);
            newOriginAt_ = at;
            oldOriginAt_ = {};
        }
    } else if (key == L"master_unit") {
        const std::wstring_view unit = ZtUTrimmedView(block.GetValue().Str());
        if (ZtOdPdsFindMasterUnit(block.GetValue()) == ZtOaUnit::kMetres && unit != L"m" &&
            unit != L"M")
            Report(ZtOdPdsCheck::kUnknownUnit, tracker_.ValueAt(), unit);
    } else {
        Report(ZtOdPdsCheck::kUnknownKey, at, key.Str(), kZtOdPdsKeyControlFile);
    }
}

void ZtOdPdsDriReporter::ModelChild(const ZtOdPdsBlock& child, ZtOdPdsSourcePosition at) {
    if (child.GetName() == L"name")
        Report(ZtOdPdsCheck::kModelName, at, child.GetName().Str(), 2);
    else
        Report(ZtOdPdsCheck::kUnknownKey, at, child.GetName().Str(), kZtOdPdsKeyInModel);
}

void ZtOdPdsDriReporter::ModelNamed(const std::wstring_view* name, ZtOdPdsSourcePosition at) {
    if (!name)
        Report(ZtOdPdsCheck::kModelName, tracker_.NameAt(), {}, 0);
    else if (name->empty())
        Report(ZtOdPdsCheck::kModelName, at, {}, 1);
    else
        Report(ZtOdPdsCheck::kFactModel, at, *name);
}

void ZtOdPdsDriReporter::EndRead(ZtOdPdsBlockFileSource& source, ZtOdPdsBlock& block) {
    if (oldOriginAt_.IsKnown())
        Report(ZtOdPdsCheck::kOriginOrder, oldOriginAt_, L"old_origin",
               newOriginAt_.IsKnown() ? 1 : 2);
    if (tracker_.GetStop() != ZtOdPdsBlockStop::kStrayBrace) {
        if (tracker_.EndedInBlock())
            Report(ZtOdPdsCheck::kUnclosedBlock, tracker_.NameAt(), block.GetName().Str());
        Report(ZtOdPdsCheck::kUnclosedBlock, enclosingAt_, L"DesignReview_Control");
        return;
    }
    // The enclosing block is closed: the loader reads no further. A reporting read looks on
    // for what it leaves unread, and names the first of it.
    tracker_.SetQuiet(true);
    do {
        if (source.NextBlock(&block, tracker_)) {
            Report(ZtOdPdsCheck::kTextAfterEnd, tracker_.NameAt(), block.GetName().Str());
            return;
        }
    } while (tracker_.GetStop() == ZtOdPdsBlockStop::kStrayBrace);
    if (tracker_.FirstStrayText().IsKnown())
        Report(ZtOdPdsCheck::kTextAfterEnd, tracker_.FirstStrayText());
}
