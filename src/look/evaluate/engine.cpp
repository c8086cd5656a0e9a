#include "look/evaluate/engine.h"

#include "look/evaluate/formula/parser.h"
#include "look/evaluate/operators.h"
#include "util/error.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orrery::formula {
namespace {

/// Beyond this depth a cell is computed from a fresh start.
constexpr int kDeepestCell = 100;
/// What a cell adds to the depth: its functions use the stack, too.
constexpr int kCellDepth = 4;
constexpr std::size_t kMostParsed = 4'096;

Value Checked(const Value& content)
{
    const auto* number = std::get_if<double>(&content);
    return number != nullptr && !std::isfinite(*number) ? Value(CellError::Number) : content;
}

} // namespace

Engine::Engine(book::WorkbookView& view, const TextRules& rules, const StepLimits& limits,
               EngineTasks tasks)
    : view_(view), rules_(rules), limits_(limits), tasks_(std::move(tasks)), references_(view)
{
}

Engine::SheetState& Engine::StateOf(std::size_t sheet)
{
    auto& state = sheets_[sheet];
    if (state)
        return *state;
    const book::SheetLook* look = &empty_;
    try {
        if (sheet < SheetCount())
            look = &view_.Sheet(sheet);
    }
    catch (const util::Error&) {
        look = &empty_; // a damaged sheet has no cells
    }
    state = std::make_unique<SheetState>(*look);
    return *state;
}

SheetCells& Engine::Sheet(std::size_t index)
{
    return StateOf(index).cells;
}

Engine::Entry& Engine::EntryOf(SheetState& sheet, std::uint32_t index)
{
    if (sheet.slots.empty())
        sheet.slots.assign(sheet.cells.Look().cells.size(), -1);
    std::int32_t& slot = sheet.slots[index];
    if (slot < 0) {
        slot = static_cast<std::int32_t>(sheet.entries.size());
        sheet.entries.emplace_back();
    }
    return sheet.entries[static_cast<std::size_t>(slot)];
}

bool Engine::Spend(std::uint64_t steps)
{
    steps_ += steps;
    return steps_ <= limits_.ofAll;
}

std::shared_ptr<const Formula> Engine::Parsed(const std::string& text)
{
    const auto found = parsed_.find(text);
    if (found != parsed_.end())
        return found->second;
    if (parsed_.size() >= kMostParsed)
        parsed_.clear();
    auto formula = ParseFormula(text);
    auto& kept = parsed_[text];
    if (formula)
        kept = std::make_shared<const Formula>(std::move(*formula));
    return kept;
}

const std::string* Engine::FormulaText(const CellKey& key)
{
    const SheetCells& cells = Sheet(key.sheet);
    const auto index = cells.Find(key.cell);
    if (!index)
        return nullptr;
    const auto formula = static_cast<std::size_t>(cells.Look().cells[*index].formula);
    return formula < cells.Look().formulas.size() ? &cells.Look().formulas[formula].text : nullptr;
}

std::optional<std::uint32_t> Engine::OwnerOf(std::size_t sheet, book::CellAddress cell)
{
    if (!written_.empty() && written_.count({sheet, cell}) != 0)
        return std::nullopt;
    return Sheet(sheet).ArrayOwner(cell);
}

std::optional<Value> Engine::Read(const CellKey& key)
{
    if (const auto index = Sheet(key.sheet).Find(key.cell))
        return ReadFound(key.sheet, *index);
    if (const auto owner = OwnerOf(key.sheet, key.cell))
        return ArrayPart(key.sheet, *owner, key.cell);
    return Value();
}

std::optional<Value> Engine::ReadFound(std::size_t sheet, std::uint32_t index)
{
    const book::SheetLook& look = Sheet(sheet).Look();
    const book::Cell& cell = look.cells[index];
    if (cell.formula < 0) {
        if (const auto owner = OwnerOf(sheet, cell.address))
            return ArrayPart(sheet, *owner, cell.address);
        return Checked(cell.content);
    }
    const Entry* entry = Resolve(sheet, index);
    if (entry == nullptr || (entry->state == State::Failed && !entry->isUsable))
        return std::nullopt;
    return entry->value;
}

/// The value that an array formula gives to one of its cells.
std::optional<Value> Engine::ArrayPart(std::size_t sheet, std::uint32_t owner,
                                       book::CellAddress cell)
{
    const Entry* entry = Resolve(sheet, owner);
    if (entry == nullptr)
        return std::nullopt;
    const book::SheetLook& look = Sheet(sheet).Look();
    if (entry->state == State::Failed) {
        const book::Cell* found = look.FindCell(cell);
        if (!entry->isUsable || found == nullptr || IsBlank(found->content))
            return std::nullopt;
        return Checked(found->content);
    }
    if (!entry->table)
        return entry->value;
    const book::CellAddress first = look.cells[owner].address;
    return ElementOf(*entry->table, cell.row - first.row, cell.column - first.column);
}

/// The entry of a formula cell when it is known; nullptr while it is not.
const Engine::Entry* Engine::Resolve(std::size_t sheet, std::uint32_t index)
{
    SheetState& state = StateOf(sheet);
    Entry& entry = EntryOf(state, index);
    if (entry.state == State::Computed || entry.state == State::Failed)
        return &entry;
    if (blocked_)
        return nullptr;
    if (entry.state == State::InProgress) {
        const CellKey key{sheet, state.cells.Look().cells[index].address};
        circles_.insert(std::find(running_.begin(), running_.end(), key), running_.end());
        return nullptr;
    }
    if (depth > kDeepestCell) {
        blocked_ = running_.empty() ? CellKey{sheet, state.cells.Look().cells[index].address}
                                    : running_.back();
        return nullptr;
    }
    Run(sheet, index, entry);
    return blocked_ ? nullptr : &entry;
}

void Engine::Run(std::size_t sheet, std::uint32_t index, Entry& entry)
{
    const book::SheetLook& look = StateOf(sheet).cells.Look();
    const book::Cell& cell = look.cells[index];
    const auto number = static_cast<std::size_t>(cell.formula);
    const book::CellFormula* source =
        number < look.formulas.size() ? &look.formulas[number] : nullptr;
    const auto formula = source != nullptr ? ParseFormula(source->text) : std::nullopt;
    std::optional<CellResult> result;
    if (formula) {
        entry.state = State::InProgress;
        running_.push_back({sheet, cell.address});
        depth += kCellDepth;
        result =
            tasks_.compute(*this, {sheet, cell.address, cell.address}, *formula, source->array);
        depth -= kCellDepth;
        running_.pop_back();
        if (circles_.count({sheet, cell.address}) != 0)
            result.reset();
    }
    if (blocked_) {
        entry.state = State::Unknown;
        return;
    }
    if (!result) {
        Fail(sheet, index, entry);
        return;
    }
    entry.state = State::Computed;
    entry.value = std::move(result->value);
    entry.table = std::move(result->table);
}

void Engine::Fail(std::size_t sheet, std::uint32_t index, Entry& entry)
{
    const book::Cell& cell = StateOf(sheet).cells.Look().cells[index];
    entry.state = State::Failed;
    entry.isUsable =
        !IsBlank(cell.content) && !tasks_.isFed(*this, {sheet, cell.address}, written_, unfed_);
    entry.value = entry.isUsable ? Checked(cell.content) : Value();
}

const Engine::Entry* Engine::Settle(const CellKey& key)
{
    auto index = Sheet(key.sheet).Find(key.cell);
    if (!index || Sheet(key.sheet).Look().cells[*index].formula < 0)
        index = OwnerOf(key.sheet, key.cell);
    if (!index)
        return nullptr;
    std::vector<CellKey> waiting = {{key.sheet, Sheet(key.sheet).Look().cells[*index].address}};
    std::set<CellKey> isWaiting = {waiting.front()};
    while (!waiting.empty()) {
        const CellKey next = waiting.back();
        const std::uint32_t at = *Sheet(next.sheet).Find(next.cell);
        Resolve(next.sheet, at);
        if (!blocked_) {
            isWaiting.erase(next);
            waiting.pop_back();
            continue;
        }
        const CellKey blocked = *std::exchange(blocked_, std::nullopt);
        if (isWaiting.insert(blocked).second)
            waiting.push_back(blocked);
        else // it waits for itself: a circle too wide for the recursion
            Fail(blocked.sheet, *Sheet(blocked.sheet).Find(blocked.cell),
                 EntryOf(StateOf(blocked.sheet), *Sheet(blocked.sheet).Find(blocked.cell)));
    }
    return &EntryOf(StateOf(key.sheet), *index);
}

void Engine::MarkWritten(const CellKey& key)
{
    written_.insert(key);
    unfed_.clear();
    cache_.Clear();
    for (auto& [sheet, state] : sheets_) {
        state->slots.clear();
        state->entries.clear();
    }
}

} // namespace orrery::formula
