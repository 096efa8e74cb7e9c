#pragma once
#include "plugin/ZtOdPdsFileAction.h"
#include "readers/ZtOdPdsBlock.h"
#include "tags/ZtOdPdsCameraMaps.h"
#include "tags/ZtOdPdsTagViewpoint.h"
#include "ztlinear/ZtLColor3f.h"
#include "ztplugin/ZtOpSavedItem.h"
#include "ztutil/ZtUComponent.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

class ZtOaNode;
class ZtOdPdsDiagnostics;
class ZtOdPdsTagReporter;
class ZtOpNextCommentIdElement;
class ZtOpSavedViewsElement;
class ZtOpState;
class ZtOpView;

// CRs that the widening of line ends may add to the comments of one tag file. Every text
// block of a tag puts one more CR before each LF of the body, and a comment's body is
// copied from the one the import builds, so a body of line feeds (or a few bytes of empty
// text blocks behind a long one) would take many times its file's size. A tag that would
// pass the budget is dropped, and the tags behind it are still read.
constexpr std::uint64_t kZtOdPdsMaxFileAddedLineEnds = 4000000;

// Reads tag files into saved views: each `tag` block becomes a comment and a redline tag
// in a view made from the viewpoint keys read before it. Tags with no viewpoint key
// between them share a view. The views gather in the action's own folder; the document is
// left alone until the caller hands them over with AppendTo and UpdateNextIds.
//
// The viewpoint state, the highest identifier and the folder carry over from one file to
// the next on the same action, so that the loader's tag files read as one.
class ZtOdPdsTagImportAction : public ZtOdPdsFileAction {
public:
    // Neither is owned. `state` gives the redline tool's look; `partition` is the root of
    // the model tree in which the units factor is looked up.
    ZtOdPdsTagImportAction(ZtOpState* state, ZtOaNode* partition);
    ~ZtOdPdsTagImportAction() override;
    ZtOdPdsTagImportAction(const ZtOdPdsTagImportAction&) = delete;
    ZtOdPdsTagImportAction& operator=(const ZtOdPdsTagImportAction&) = delete;

    // Counts the file's tags where a progress or a report needs the count, then imports it. 0 when
    // the file was read, however little of it was usable; 1 for a null path or a file that can't be
    // opened; 6 when the models give no units factor, in which case the file is not touched.
    int Perform(const wchar_t* path, ZtOpProgress* progress) override;
    // The number of lines that begin with "tag{"; 0 if the file can't be read.
    int CountTags(const wchar_t* path);
    // The second pass: the file's blocks in order, the progress reported as the tags done
    // over `tagCount`, unclamped. 0, or 1 if the file can't be opened.
    int ImportFile(ZtOpState* state, const wchar_t* path, int tagCount, ZtOpProgress* progress);

    // One `tag` block: a comment and a redline tag in the current view, or nothing for a
    // tag with a bad head, a bad `p`, no text, or line ends past the file's budget.
    void ImportTag(ZtOdPdsBlock& block);
    // Puts the current view, if any, into the folder; the next tag gets a new view.
    void CloseView();

    // Moves the gathered views to the end of the element's root folder; gives how many.
    int AppendTo(ZtOpSavedViewsElement* element);
    // Sets both next identifiers of `element` to one past the highest one imported.
    bool UpdateNextIds(ZtOpNextCommentIdElement* element);
    std::uint64_t GetHighestId() const { return highestId_; }

    const ZtOpFolderItem& GetFolder() const { return folder_; }

    // The files read from now on report what becomes of their blocks to `diagnostics` (not
    // owned; null: nothing is reported). What waits for a later file, such as viewpoint
    // keys that no tag has taken yet, is reported by FinishReport, when no file follows.
    void SetDiagnostics(ZtOdPdsDiagnostics* diagnostics);
    void FinishReport();

    static ZtUComponent& GetComponent();
    static int StartComponent();
    static int EndComponent();

private:
    // Reads one sticky key (target, eye, up, persp_ang, clip_near, clip_far) into the
    // view that the next tags take; false for a block that is no sticky key.
    bool ReadStickyKey(const ZtOdPdsBlock& block);
    // Takes from the file's budget the CRs that `perLineFeed` before each of a body's
    // `lineFeeds` LFs would add; false, and nothing taken, when they don't fit.
    bool ChargeAddedLineEnds(std::uint64_t lineFeeds, std::uint64_t perLineFeed);

    ZtOpState* state_;
    ZtOaNode* partition_;
    int havePoint_ = 0;
    int viewChanged_ = 1;
    double uorsPerMaster_ = 0.0;
    ZtLColor3f lineColor_{1.0, 0.0, 0.0};
    int lineThickness_ = 3;
    ZtOdPdsTagViewpoint viewpoint_;
    std::uint64_t highestId_ = 0;
    // What is left of kZtOdPdsMaxFileAddedLineEnds for the file being imported.
    std::uint64_t addedLineEndsLeft_ = kZtOdPdsMaxFileAddedLineEnds;
    ZtOpFolderItem folder_;
    ZtOpView* currentView_ = nullptr;
    // The current view's camera map, made with the view.
    std::optional<ZtOdPdsCameraMap> cameraMap_;
    // Only for a reporting import.
    std::unique_ptr<ZtOdPdsTagReporter> reporter_;
    // ImportTag's nested block, body and rewritten body, kept with their memory from one
    // tag to the next while they are short.
    class TagEnd;
    ZtOdPdsBlock child_;
    ZtUWideStringBuffer body_;
    std::wstring rewritten_;
};
