#include "tags/ZtOdPdsTagImportAction.h"

#include "plugin/ZtOdPdsComponents.h"
#include "plugin/ZtOdPdsStatus.h"
#include "readers/ZtOdPdsBlock.h"
#include "readers/ZtOdPdsBlockFileSource.h"
#include "readers/ZtOdPdsBlockTracker.h"
#include "readers/ZtOdPdsTextFile.h"
#include "tags/ZtOdPdsCameraMaps.h"
#include "tags/ZtOdPdsFindUORsPerMaster.h"
#include "tags/ZtOdPdsNumberScanner.h"
#include "tags/ZtOdPdsTagBody.h"
#include "tags/ZtOdPdsTagCounter.h"
#include "tags/ZtOdPdsTagReporter.h"
#include "tags/ZtOdPdsUnits.h"
#include "tags/ZtOdPdsUorVector.h"
#include "ztnav/ZtNvViewPoint.h"
#include "ztplugin/ZtOpNextCommentIdElement.h"
#include "ztplugin/ZtOpProgress.h"
#include "ztplugin/ZtOpRedlineTag.h"
#include "ztplugin/ZtOpSavedItemsElement.h"
#include "ztplugin/ZtOpState.h"
#include "ztplugin/ZtOpView.h"
#include "ztutil/ZtUAutoCLocaleOverride.h"
#include "ztutil/ZtUResource.h"

#include <algorithm>
#include <cwchar>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace {

using namespace std::string_view_literals;

// A block's name against a key: the lengths first, so that most keys are told apart by
// them without a look at the characters. Keys are literals of known length ("..."sv).
// Keys are a few characters: compared in line, not by a call of wmemcmp for each.
bool IsKey(const ZtUWideStringBuffer& name, std::wstring_view key) {
    const std::wstring& text = name.Str();
    if (text.size() != key.size())
        return false;
    for (std::size_t i = 0; i < key.size(); ++i)
        if (text[i] != key[i])
            return false;
    return true;
}

} // namespace

ZtOdPdsTagImportAction::ZtOdPdsTagImportAction(ZtOpState* state, ZtOaNode* partition)
    : state_(state), partition_(partition) {}

// The current view is null between files; it is not only if a read was cut short.
ZtOdPdsTagImportAction::~ZtOdPdsTagImportAction() {
    delete currentView_;
}

void ZtOdPdsTagImportAction::SetDiagnostics(ZtOdPdsDiagnostics* diagnostics) {
    if (diagnostics)
        reporter_ = std::make_unique<ZtOdPdsTagReporter>(*diagnostics);
    else
        reporter_.reset();
}

void ZtOdPdsTagImportAction::FinishReport() {
    if (reporter_)
        reporter_->Finish();
}

int ZtOdPdsTagImportAction::Perform(const wchar_t* path, ZtOpProgress* progress) {
    if (!path)
        return kZtOdPdsNoFile;
    uorsPerMaster_ = ZtOdPdsFindUORsPerMaster(partition_);
    if (uorsPerMaster_ == 0.0)
        return kZtOdPdsNoUnits;
    // The count is the base of the progress fraction and of a report's word on the tags
    // read: without either, the file is read once.
    const int tagCount = progress || reporter_ ? CountTags(path) : 0;
    return ImportFile(state_, path, tagCount, progress);
}

int ZtOdPdsTagImportAction::CountTags(const wchar_t* path) {
    ZtOdPdsTextFile file;
    if (!file.Open(path))
        return 0;
    ZtOdPdsTagCounter counter;
    const int read = file.ReadLines(counter);
    file.Close();
    return read ? counter.GetCount() : 0;
}

int ZtOdPdsTagImportAction::ImportFile(ZtOpState* state, const wchar_t* path, int tagCount,
                                       ZtOpProgress* progress) {
    ZtUAutoCLocaleOverride numbers(ZtUAutoCLocaleOverride::kNumeric);
    ZtOdPdsBlockFileSource source(ZtOdPdsCountedText);
    if (!path || !source.Open(path))
        return kZtOdPdsNoFile;
    if (state) {
        const ZtOpRedlineTool* tool = state->GetRedlineTool();
        lineColor_ = tool->GetCurLineColor();
        lineThickness_ = tool->GetCurLineThickness();
    }
    addedLineEndsLeft_ = kZtOdPdsMaxFileAddedLineEnds;
    int done = 0;
    ZtOdPdsBlock block;
    ZtOdPdsBlockTracker* tracker = reporter_ ? &reporter_->BeginFile(path) : nullptr;
    while (tracker ? source.NextBlock(&block, *tracker) : source.NextBlock(&block)) {
        if (ReadStickyKey(block)) {
            if (reporter_)
                reporter_->KnownKey();
            continue;
        }
        if (IsKey(block.GetName(), L"tag"sv)) {
            if (reporter_)
                reporter_->KnownKey();
            ImportTag(block);
            ++done;
            if (progress)
                progress->SetProgress(static_cast<double>(done) / static_cast<double>(tagCount));
        } else if (reporter_) {
            reporter_->OtherKey(block);
        }
    }
    if (reporter_)
        reporter_->EndFile(block, tagCount, done);
    CloseView();
    source.Close();
    return kZtOdPdsOk;
}

bool ZtOdPdsTagImportAction::ChargeAddedLineEnds(std::uint64_t lineFeeds,
                                                 std::uint64_t perLineFeed) {
    // Divided rather than multiplied, so that no count of rewrites can wrap the product.
    if (lineFeeds != 0 && perLineFeed > addedLineEndsLeft_ / lineFeeds)
        return false;
    addedLineEndsLeft_ -= lineFeeds * perLineFeed;
    return true;
}

bool ZtOdPdsTagImportAction::ReadStickyKey(const ZtOdPdsBlock& block) {
    const ZtUWideStringBuffer& name = block.GetName();
    ZtOdPdsNumberScanner scan(block.GetValue().GetString());
    ZtOdPdsUorVector vector;
    std::int64_t distance = 0;
    std::int32_t degrees = 0;
    // How many numbers the key takes, and whether they scanned.
    int needs = 1;
    bool scanned = false;
    if (IsKey(name, L"target"sv)) {
        needs = 3;
        if ((scanned = scan.UorVector(&vector))) {
            viewpoint_.target = vector.ToMaster(uorsPerMaster_);
            viewChanged_ = 1;
        }
    } else if (IsKey(name, L"eye"sv)) {
        needs = 3;
        if ((scanned = scan.UorVector(&vector))) {
            viewpoint_.eye = vector.ToMaster(uorsPerMaster_);
            viewChanged_ = 1;
        }
    } else if (IsKey(name, L"up"sv)) {
        // The value is never read: views are always upright in +Z.
        viewpoint_.up.SetValue(0.0, 0.0, 1.0);
        if (reporter_ &&
            !(scan.UorVector(&vector) && vector.x == 0 && vector.y == 0 && vector.z > 0))
            reporter_->Report(ZtOdPdsCheck::kIgnoredKey, reporter_->Tracker().NameAt(), name.Str());
        return true;
    } else if (IsKey(name, L"persp_ang"sv)) {
        if ((scanned = scan.Int32(&degrees))) {
            viewpoint_.perspAngle = ZtOdPdsDegreesToRadians(degrees);
            viewChanged_ = 1;
        }
    } else if (IsKey(name, L"clip_near"sv)) {
        if ((scanned = scan.Int64(&distance))) {
            viewpoint_.clipNear = ZtOdPdsUorsToMaster(distance, uorsPerMaster_);
            viewChanged_ = 1;
        }
    } else if (IsKey(name, L"clip_far"sv)) {
        if ((scanned = scan.Int64(&distance))) {
            viewpoint_.clipFar = ZtOdPdsUorsToMaster(distance, uorsPerMaster_);
            viewChanged_ = 1;
        }
    } else {
        return false;
    }
    if (reporter_ && scanned)
        reporter_->StickyRead(name.Str());
    else if (reporter_)
        reporter_->Report(ZtOdPdsCheck::kStickyValue, reporter_->Tracker().NameAt(), name.Str(),
                          needs);
    return true;
}

// Gives `havePoint` back 0 on every way out of a tag, as a `p` holds for its own tag only,
// and lets go of what the tag's buffers took for a long text.
class ZtOdPdsTagImportAction::TagEnd {
public:
    explicit TagEnd(ZtOdPdsTagImportAction& action) : action_(action) {}
    ~TagEnd() {
        action_.havePoint_ = 0;
        if (action_.child_.ValueCapacity() > kZtOdPdsMostKeptCapacity)
            action_.child_.ReleaseValue();
        ZtOdPdsReleaseIfLong(&action_.body_);
        ZtOdPdsReleaseIfLong(&action_.rewritten_);
    }
    TagEnd(const TagEnd&) = delete;
    TagEnd& operator=(const TagEnd&) = delete;

private:
    ZtOdPdsTagImportAction& action_;
};

void ZtOdPdsTagImportAction::ImportTag(ZtOdPdsBlock& block) {
    const TagEnd tagEnd(*this);
    // A reporting import says why it drops a tag, at the tag unless `at` is given.
    const ZtOdPdsSourcePosition tagAt =
        reporter_ ? reporter_->Tracker().NameAt() : ZtOdPdsSourcePosition{};
    auto drop = [&](ZtOdPdsCheck why, std::wstring_view text, std::int64_t figure,
                    ZtOdPdsSourcePosition at = {}) {
        if (reporter_)
            reporter_->Report(why, at.IsKnown() ? at : tagAt, text, figure);
    };

    // The head: identifier, 1, 0, 0.0 and the tag's point. Values 2 and 4 must scan and
    // mean nothing; value 3 must be 0.
    ZtOdPdsNumberScanner scan(block.GetValue().GetString());
    std::int64_t identifier = 0;
    std::int32_t second = 0;
    std::int32_t third = 0;
    double fourth = 0.0;
    ZtOdPdsUorVector head;
    // How many of the values scanned, for a reporting import's word on a bad head.
    int scanned = 0;
    auto took = [&](bool ok) {
        scanned += ok ? 1 : 0;
        return ok;
    };
    if (!took(scan.Int64(&identifier)) || !took(scan.Int32(&second)) || !took(scan.Int32(&third)) ||
        !took(scan.Double(&fourth)) || !took(scan.UorVector(&head)) || third != 0) {
        if (reporter_)
            reporter_->HeadDropped(block, scanned, third);
        return;
    }
    const auto id = static_cast<std::uint64_t>(identifier);
    const ZtLPos3f position = head.ToMaster(uorsPerMaster_);

    // The nested blocks; the line of the head is gathered as a name and dropped at its
    // line end.
    ZtLPos3f point;
    ZtUWideStringBuffer& body = body_;
    body.Clear();
    // Each text block rewrites the line ends of the body in force once more, whether or
    // not it gave the body; the rewrites wait until the tag's text is gone.
    std::size_t rewrites = 0;
    // For a reporting import: whether a text block came, and one with a line end.
    bool sawText = false;
    bool sawBody = false;
    {
        // Kept from tag to tag, with its memory; a text's value goes to the body.
        ZtOdPdsBlock& child = child_;
        std::optional<ZtOdPdsBlockTracker> tracker;
        if (reporter_)
            tracker.emplace(reporter_->ValueTracker());
        while (tracker ? block.NextChild(&child, *tracker) : block.NextChild(&child)) {
            const ZtUWideStringBuffer& name = child.GetName();
            if (IsKey(name, L"p"sv)) {
                ZtOdPdsUorVector second3d;
                if (!ZtOdPdsNumberScanner(child.GetValue().GetString()).UorVector(&second3d))
                    return drop(ZtOdPdsCheck::kTagPoint, child.GetValue().Str(), 0,
                                tracker ? tracker->NameAt() : ZtOdPdsSourcePosition{});
                point = second3d.ToMaster(uorsPerMaster_);
                havePoint_ = 1;
            } else if (IsKey(name, L"text"sv)) {
                sawText = true;
                if (reporter_)
                    reporter_->TextRead(child.GetValue().Str(), tracker->NameAt(), block);
                if (ZtOdPdsTakeTagBody(child, &body)) {
                    rewrites = 0;
                    sawBody = true;
                }
                ++rewrites;
            } else if (reporter_ && !(IsKey(name, L"l"sv))) {
                reporter_->Report(ZtOdPdsCheck::kUnknownKey, tracker->NameAt(), name.Str(),
                                  kZtOdPdsKeyInTag);
            }
        }
    }
    // The tag's text is all read: a long one's memory goes before the body is rewritten
    // and the comment takes it, so that a long text is held twice at most. A short one's
    // stays for the next block.
    if (block.ValueCapacity() > kZtOdPdsMostKeptCapacity)
        block.ReleaseValue();
    if (child_.ValueCapacity() > kZtOdPdsMostKeptCapacity)
        child_.ReleaseValue();
    // Before anything is made, so that a tag without text leaves no empty view behind. An
    // empty body has no line end to rewrite, so it is dropped for its text in any case.
    if (body.IsEmpty())
        return drop(ZtOdPdsCheck::kTagText, {}, !sawText ? 0 : !sawBody ? 1 : 2);
    // Comments hold CR LF line ends, the file LF. Each rewrite puts one more CR before
    // every LF, so all of them together are one pass that puts `rewrites` there.
    const wchar_t* text = body.GetString();
    if (rewrites > 0) {
        const std::size_t lineFeeds = ZtOdPdsCountLineFeeds(body.Str());
        if (!ChargeAddedLineEnds(lineFeeds, rewrites))
            return drop(ZtOdPdsCheck::kTagLineEnds, {}, kZtOdPdsMaxFileAddedLineEnds);
        if (lineFeeds != 0) {
            ZtOdPdsRewriteLineEnds(body.Str(), lineFeeds, rewrites, &rewritten_);
            text = rewritten_.c_str();
            ZtOdPdsReleaseIfLong(&body);
        }
    }

    if (viewChanged_ != 0 || !currentView_) {
        CloseView();
        currentView_ = viewpoint_.MakeView();
        if (reporter_)
            reporter_->ViewTried(currentView_ != nullptr, viewpoint_.perspAngle);
        if (!currentView_)
            return;
        viewChanged_ = 0;
        cameraMap_.emplace(currentView_->AnonView().GetViewPoint().GetCamera());
    }

    // The file's identifiers stand as they are: nothing is drawn from the document's next
    // identifiers here.
    std::unique_ptr<ZtOpComment> comment(new ZtOpComment(id));
    comment->SetBody(text);
    if (id > highestId_)
        highestId_ = id;

    const ZtLPos2f first2d = cameraMap_->ToCameraSpace(position);
    const ZtLPos2f second2d = havePoint_ ? cameraMap_->ToCameraSpace(point) : first2d;
    ZtLBox3f box;
    box.MakeEmpty();
    std::unique_ptr<ZtOpRedlineTag> tag(new ZtOpRedlineTag(comment->GetId(), comment->GetId(),
                                                           first2d, second2d, 1, position, 0, box));
    tag->SetLineColor(lineColor_);
    tag->SetLineThickness(lineThickness_);

    // A view is named after the first tag that goes into it.
    if (currentView_->GetName().IsEmpty()) {
        if (const wchar_t* format =
                ZtUResource::FindString("IDS_WIN32_REDLINE_TAG_VIEW_FMT", nullptr)) {
            ZtUWideStringBuffer name;
            name.Format(format, static_cast<unsigned long long>(tag->GetTagId()));
            currentView_->SetName(name.GetString());
        }
    }

    currentView_->EditComments().PushBack(comment.release());
    currentView_->EditRedlines().PushBack(tag.release());
    if (reporter_)
        reporter_->TagImported(id, tagAt);
}

void ZtOdPdsTagImportAction::CloseView() {
    // The folder owns the view from the call on, even when the call fails.
    cameraMap_.reset();
    if (ZtOpView* view = std::exchange(currentView_, nullptr))
        folder_.AddChild(view);
    viewChanged_ = 1;
}

int ZtOdPdsTagImportAction::AppendTo(ZtOpSavedViewsElement* element) {
    ZtOpFolderItem* root = element ? element->Edit() : nullptr;
    if (!root)
        return 0;
    root->Append(&folder_);
    const int count = static_cast<int>(folder_.GetNumChildren());
    folder_.RemoveAllChildren();
    return count;
}

bool ZtOdPdsTagImportAction::UpdateNextIds(ZtOpNextCommentIdElement* element) {
    if (element) {
        element->EditTagId() = highestId_ + 1;
        element->EditCommentId() = highestId_ + 1;
    }
    return true;
}

ZtUComponent& ZtOdPdsTagImportAction::GetComponent() {
    static ZtUComponent component;
    return component;
}

int ZtOdPdsTagImportAction::StartComponent() {
    return ZtOdPdsStartComponents({{&GetComponent(), "ZtOdPdsTagImportAction"}});
}

int ZtOdPdsTagImportAction::EndComponent() {
    return ZtOdPdsEndComponents({&GetComponent()});
}
