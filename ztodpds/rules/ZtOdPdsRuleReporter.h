#pragma once
#include "diagnostics/ZtOdPdsDiagnostics.h"
#include "readers/ZtOdPdsTextFile.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class ZtOdPdsDisplaySet;
class ZtUWideStringBuffer;

// What a reporting import of display sets says of its file, and the little it remembers to
// say it: where each set of the section began, where the FIND of each open scope stands,
// the lines ignored behind an angle line, and the references that only the section's end
// can judge. Made by the import action for one reporting read; the consumers reach it
// through their context.
class ZtOdPdsRuleReporter {
public:
    // `spot` is kept at the line being read by the line pump.
    explicit ZtOdPdsRuleReporter(const ZtOdPdsLineSpot& spot) : spot_(spot) {}
    ZtOdPdsRuleReporter(const ZtOdPdsRuleReporter&) = delete;
    ZtOdPdsRuleReporter& operator=(const ZtOdPdsRuleReporter&) = delete;

    // Where character `offset` of the line being read stands.
    ZtOdPdsSourcePosition At(std::size_t offset = 0) const {
        return spot_.at.Right(static_cast<std::uint32_t>(offset));
    }
    void Report(ZtOdPdsCheck check, ZtOdPdsSourcePosition at, std::wstring_view text = {},
                std::int64_t figure0 = 0, std::int64_t figure1 = 0,
                ZtOdPdsSourcePosition related = {}) const;

    // The set whose "<Display Set>" is the line being read begins, and becomes the set
    // being read.
    void SetBegins(const ZtOdPdsDisplaySet* set);
    // Where the set being read began.
    ZtOdPdsSourcePosition SetAt() const { return SetAt(current_); }
    ZtOdPdsSourcePosition SetAt(const ZtOdPdsDisplaySet* set) const;
    const ZtOdPdsDisplaySet* CurrentSet() const { return current_; }

    // The set being read reached its "<Definition>"; whether it did.
    void DefinitionRead() { defined_ = true; }
    bool WasDefined() const { return defined_; }

    // Reports `line` if it looks meant as `marker` ("<Display Set>", "<Definition>", a
    // section line) without being it exactly: its writer's intent is lost.
    void NearMiss(const ZtUWideStringBuffer& line, std::wstring_view marker, ZtOdPdsCheck check);
    // Whether NearMiss reports `line` for `marker`.
    static bool IsNearMiss(std::wstring_view line, std::wstring_view marker);
    // A line outside any section: reports the first with text in it, and the first with a
    // brace, as facts.
    void OutsideSection(const ZtUWideStringBuffer& line);

    // The FIND of `scope` is the line being read.
    void FindRead(const void* scope) { finds_[scope] = At(); }
    ZtOdPdsSourcePosition FindAt(const void* scope) const;

    // An angle line other than "<Definition>" is being read: the lines up to the next
    // "<Definition>" or the set's end are ignored. IgnoredLine counts one; EndIgnoring
    // reports them.
    void BeginIgnoring();
    void IgnoredLine() { ++ignored_; }
    void EndIgnoring();

    // `set` yields no selection set, for a reason of ZtOdPdsEmptySet. Once the file's
    // budget of conditions is spent every later set is abandoned, whatever else befalls it:
    // those sets are counted into the one report of the set that spent it.
    void SetYieldsNothing(const ZtOdPdsDisplaySet* set, std::wstring_view name, int why);

    // The header of the set being read names it `name`.
    void SetNamed(std::wstring_view name) { names_.emplace_back(name, SetAt()); }

    // Entry `index` of the Display Set criterion `criterion` stands at `at`.
    void NoteReference(const void* criterion, std::size_t index, ZtOdPdsSourcePosition at) {
        references_[{criterion, index}] = at;
    }
    // Entry `index` of `criterion`, naming `name`, gave `found` when the set being read
    // ended (null: no set of that name yet).
    void Resolved(const void* criterion, std::size_t index, std::wstring_view name,
                  const ZtOdPdsDisplaySet* found);
    // The section ends: references to names not found when their set ended are to sets
    // that came later, or to none. `laterSet` gives the set of a name now, or null.
    template <class Find> void EndSection(Find laterSet) {
        EndBudgetRun();
        for (const Unresolved& reference : unresolved_) {
            if (const ZtOdPdsDisplaySet* set = laterSet(reference.name.c_str())) {
                Report(ZtOdPdsCheck::kSetReference, reference.at, reference.name, 1, 0, SetAt(set));
                continue;
            }
            const ZtOdPdsSourcePosition alike = NamedAlike(reference.name);
            Report(ZtOdPdsCheck::kSetReference, reference.at, reference.name, 0,
                   alike.IsKnown() ? 1 : 0, alike);
        }
        unresolved_.clear();
        names_.clear();
        sets_.clear();
        references_.clear();
        current_ = nullptr;
    }

private:
    struct Unresolved {
        std::wstring name;
        ZtOdPdsSourcePosition at;
    };
    // The set that spent the file's budget, and how many were abandoned from it on.
    struct BudgetRun {
        std::wstring name;
        ZtOdPdsSourcePosition at;
        std::int64_t sets = 0;
    };

    // Reports the sets abandoned for the file's budget in this section.
    void EndBudgetRun();
    // Where a set of this section begins whose name differs from `name` in case alone.
    ZtOdPdsSourcePosition NamedAlike(std::wstring_view name) const;

    const ZtOdPdsLineSpot& spot_;
    const ZtOdPdsDisplaySet* current_ = nullptr;
    std::map<const ZtOdPdsDisplaySet*, ZtOdPdsSourcePosition> sets_;
    std::map<const void*, ZtOdPdsSourcePosition> finds_;
    std::map<std::pair<const void*, std::size_t>, ZtOdPdsSourcePosition> references_;
    std::vector<Unresolved> unresolved_;
    // The names of the section's sets, where each set begins.
    std::vector<std::pair<std::wstring, ZtOdPdsSourcePosition>> names_;
    ZtOdPdsSourcePosition ignoringAt_;
    std::int64_t ignored_ = 0;
    bool defined_ = false;
    bool outsideSeen_ = false;
    bool braceSeen_ = false;
    std::optional<BudgetRun> budgetRun_;
};
