#pragma once
#include "readers/ZtOdPdsDstInputConsumer.h"
#include "rules/ZtOdPdsModifier.h"
#include "ztutil/ZtUVector.h"
#include "ztutil/ZtUWideString.h"

#include <cstddef>

class ZtOdPdsNode;
class ZtOdPdsRuleReporter;

// One display set of a display-set file while it is read: the lines between its
// "<Display Set>" line and the next. It reads its number and name from the header line,
// gathers its comment, and parses the statements behind "<Definition>" into scopes. When
// it ends, its root scope becomes one expression, which is rewritten into a flat form and
// added to the import's folder as a saved selection set. Display sets are counted by hand:
// the definition section and the dictionary of display sets hold them.
class ZtOdPdsDisplaySet : public ZtOdPdsDstInputConsumer {
public:
    // What a line that is no angle line does.
    enum State { kIgnoring = 0, kHeaderExpected = 1, kComment = 2, kDefinition = 3 };

    explicit ZtOdPdsDisplaySet(ZtOdPdsDstContext* context);
    ~ZtOdPdsDisplaySet() override;

    int Begin() override;
    // Builds the selection set. 1, or 0 if the set was abandoned: its expression was
    // incomplete or passed a limit of ZtOdPdsLimits.h.
    int End() override;
    int Line(ZtUWideStringBuffer& line) override;

    void ReadHeader(ZtUWideStringBuffer& line);
    void AppendComment(ZtUWideStringBuffer& line);
    void ParseStatement(ZtUWideStringBuffer& line);

    void AddRef() { ++refCount_; }
    // Takes one count off, and destroys the set at 0.
    void Release();
    int GetRefCount() const { return refCount_; }

    int GetState() const { return state_; }
    int GetNumber() const { return number_; }
    const ZtUWideString& GetName() const { return name_; }
    const ZtUWideStringBuffer& GetComment() const { return comment_; }
    const ZtOdPdsCompModifier& GetRoot() const { return root_; }
    // The finished expression, or null until End has made one. The set holds a count on it.
    ZtOdPdsNode* GetTree() const { return tree_; }

private:
    // Gives up the expression, for a reason of ZtOdPdsEmptySet: no selection set comes of
    // it.
    int Abandon(int why);
    // Gives `result` for a set that yields nothing, which a reporting read reports with
    // the reason `why`.
    int Yields(int why, int result) const;
    // Why a set whose rule evaluates to nothing does.
    int EmptyReason() const;

    // The reporter of a reporting read, or null.
    ZtOdPdsRuleReporter* Reporter() const;
    void ReportAngleLine(ZtOdPdsRuleReporter& reporter, const ZtUWideStringBuffer& line,
                         int before);
    void ReportHeader(ZtOdPdsRuleReporter& reporter, const ZtUWideStringBuffer& line,
                      std::size_t lead);

    int state_ = kIgnoring;
    int number_ = 0;
    ZtUWideString name_;
    ZtUWideStringBuffer comment_;
    ZtOdPdsCompModifier root_{ZtOdPdsModifier::kRoot};
    // The open scopes, innermost last. Owns nothing: the scopes hang from root_.
    ZtUVoidPtrVector scopes_;
    std::size_t deepestScopes_ = 1;
    ZtOdPdsNode* tree_ = nullptr;
    int refCount_ = 0;
};
