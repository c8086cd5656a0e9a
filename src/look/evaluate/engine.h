#pragma once

#include "book/look/workbook_view.h"
#include "look/evaluate/formula/tree.h"
#include "look/evaluate/functions/call/context.h"
#include "look/evaluate/range_cache.h"
#include "look/evaluate/references.h"
#include "look/evaluate/sheet_cells.h"

#include <compare>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace orrery::formula {

/// A cell of the workbook.
struct CellKey {
    std::size_t sheet = 0;
    book::CellAddress cell;
    friend auto operator<=>(const CellKey&, const CellKey&) = default;
};

struct StepLimits {
    std::uint64_t ofFormula = 0;
    std::uint64_t ofAll = 0;
};

/// What a formula gives a cell; a table if it fills several.
struct CellResult {
    Value value;
    ArrayPointer table;
};

class Engine;
/// What an engine has others do.
struct EngineTasks {
    /// Computes the formula of a cell; nothing if that is not possible.
    std::function<std::optional<CellResult>(Engine&, const Place&, const Formula&,
                                            const std::optional<book::CellRange>&)>
        compute;
    /// Whether a formula cell reads one of the written cells, at however many removes. The last are
    /// cells known not to.
    std::function<bool(Engine&, const CellKey&, const std::set<CellKey>&, std::set<CellKey>&)>
        isFed;
};

/// Keeps the values of formula cells, and computes those that are not known yet.
///
/// Formulas compute each other by recursion to a small depth only. Where a chain of cells is
/// deeper, the computation stops ("is blocked"), the cell at the end is computed from a fresh
/// start, and then the first one again, with what is known by then.
class Engine {
public:
    Engine(book::WorkbookView& view, const TextRules& rules, const StepLimits& limits,
           EngineTasks tasks);

    /// What became of a formula cell.
    enum class State : std::uint8_t { Unknown, InProgress, Computed, Failed };
    struct Entry {
        State state = State::Unknown;
        Value value;           ///< the stored one after a failure
        bool isUsable = false; ///< after a failure: the stored value may be used
        ArrayPointer table;    ///< of an array formula that fills several cells
    };

    // For the outside
    /// Computes until the cell is known; nullptr if it has no formula.
    const Entry* Settle(const CellKey& key);
    /// Runs a computation again until no chain of cells blocks it.
    template <class Run> void Complete(const Run& run)
    {
        run();
        while (blocked_) {
            const CellKey blocked = *std::exchange(blocked_, std::nullopt);
            Settle(blocked);
            run();
        }
    }
    void MarkWritten(const CellKey& key);

    // For computations
    /// The value of a cell; nothing if it cannot be known, or not yet.
    std::optional<Value> Read(const CellKey& key);
    std::optional<Value> ReadFound(std::size_t sheet, std::uint32_t index);
    SheetCells& Sheet(std::size_t index);
    std::size_t SheetCount() const { return view_.Workbook().sheets.size(); }
    References& Names() { return references_; }
    RangeCache& Cache() { return cache_; }
    const TextRules& Rules() const { return rules_; }
    const StepLimits& Limits() const { return limits_; }
    const book::WorkbookLook& Workbook() const { return view_.Workbook(); }
    /// A parsed text; kept, since names and conditions come again. nullptr if it is no formula.
    std::shared_ptr<const Formula> Parsed(const std::string& text);
    const std::string* FormulaText(const CellKey& key);
    bool IsBlocked() const { return blocked_.has_value(); }
    bool Spend(std::uint64_t steps);
    bool HasSpentAll() const { return steps_ > limits_.ofAll; }

    /// How deep the recursion is; kept by computations.
    int depth = 0;

private:
    struct SheetState {
        explicit SheetState(const book::SheetLook& look) : cells(look) {}
        SheetCells cells;
        std::vector<std::int32_t> slots; ///< of `entries`, by index of the cell; -1 without one
        std::deque<Entry> entries;
    };
    SheetState& StateOf(std::size_t sheet);
    Entry& EntryOf(SheetState& sheet, std::uint32_t index);
    const Entry* Resolve(std::size_t sheet, std::uint32_t index);
    void Run(std::size_t sheet, std::uint32_t index, Entry& entry);
    void Fail(std::size_t sheet, std::uint32_t index, Entry& entry);
    std::optional<Value> ArrayPart(std::size_t sheet, std::uint32_t owner, book::CellAddress cell);
    std::optional<std::uint32_t> OwnerOf(std::size_t sheet, book::CellAddress cell);

    book::WorkbookView& view_;
    TextRules rules_;
    StepLimits limits_;
    EngineTasks tasks_;
    References references_;
    RangeCache cache_;
    std::map<std::size_t, std::unique_ptr<SheetState>> sheets_;
    std::map<std::string, std::shared_ptr<const Formula>> parsed_;
    std::set<CellKey> written_;
    std::set<CellKey> unfed_; ///< formula cells that no written cell feeds
    std::vector<CellKey> running_;
    std::set<CellKey> circles_; ///< cells that read themselves
    std::optional<CellKey> blocked_;
    std::uint64_t steps_ = 0;
    const book::SheetLook empty_;
};

} // namespace orrery::formula
