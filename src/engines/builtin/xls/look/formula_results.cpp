#include "engines/builtin/xls/look/formula_results.h"

#include "engines/builtin/xls/formula_text/formula_text.h"
#include "engines/builtin/xls/look/records/left_out.h"

#include <bit>
#include <utility>

namespace orrery::xls {
namespace {

constexpr std::uint8_t kReference = 0x01; // PtgExp
constexpr std::uint8_t kTable = 0x02;     // PtgTbl
constexpr std::size_t kReferenceSize = 5;
constexpr std::size_t kMostFormulaBytes = std::size_t{64} << 20U;

/// A range with columns of one byte. [MS-XLS] 2.5.211 (Ref)
book::CellRange ReadRange(ByteCursor& cursor)
{
    const int firstRow = cursor.U16();
    const int lastRow = cursor.U16();
    const int firstColumn = cursor.U8();
    return {{firstRow + 1, firstColumn + 1}, {lastRow + 1, cursor.U8() + 1}};
}

} // namespace

void FormulaResults::ReadFormula(const LookRecord& record, ByteCursor cursor)
{
    constexpr std::size_t kResult = 8;
    constexpr std::size_t kFlags = 6; // and a field of calculation
    anchor_.reset();
    textCell_.reset();
    auto& cell = look_.cells.back();
    ReadResult(cell, cursor.Take(kResult));
    cursor.Skip(kFlags);
    const std::size_t size = cursor.U16();
    const auto tokens = cursor.Take(size);
    if (size >= kReferenceSize && ReadU8(tokens, 0) == kReference) {
        anchor_ = {ReadU16(tokens, 1), ReadU16(tokens, 3)};
        references_.push_back({look_.cells.size() - 1, *anchor_});
        return;
    }
    if (size > 0 && ReadU8(tokens, 0) == kTable)
        return; // the result of a data table
    SetFormula(cell, {tokens, record.data.substr(cursor.Position()), std::nullopt});
}

/// [MS-XLS] 2.5.133 (FormulaValue)
void FormulaResults::ReadResult(book::Cell& cell, std::string_view result)
{
    enum Kind : std::uint8_t { Text, Bool, Error, EmptyText };
    constexpr std::uint16_t kNotNumber = 0xFFFF;
    if (ReadU16(result, 6) != kNotNumber) {
        cell.content = std::bit_cast<double>(ReadU64(result, 0));
        return;
    }
    const auto value = ReadU8(result, 2);
    switch (ReadU8(result, 0)) {
    case Text:
        textCell_ = look_.cells.size() - 1;
        return;
    case Bool:
        cell.content = value != 0;
        return;
    case Error:
        cell.content = static_cast<book::CellError>(value);
        return;
    case EmptyText:
        cell.content = std::string();
        return;
    default:
        return;
    }
}

bool FormulaResults::ReadDefinition(const LookRecord& record)
{
    const bool isShared = record.type == RecordType::SharedFormula;
    if (!isShared && record.type != RecordType::Array)
        return record.type == RecordType::Table;
    std::string_view data = record.data;
    if (!record.more.empty()) {
        std::string joined;
        record.Whole(joined);
        data = joined_.emplace_back(std::move(joined));
    }
    ByteCursor cursor(data);
    const auto range = ReadRange(cursor);
    // The formula before it refers to it, by the first cell of the range in most files.
    const Anchor first{static_cast<std::uint16_t>(range.first.row - 1),
                       static_cast<std::uint16_t>(range.first.column - 1)};
    definitions_[anchor_.value_or(first)] = isShared ? ReadShared(data) : ReadArray(data);
    return true;
}

FormulaResults::Definition FormulaResults::ReadShared(std::string_view data) const
{
    ByteCursor cursor(data, 8); // after the range, a reserved field and the count of cells
    const std::size_t size = cursor.U16();
    const auto tokens = cursor.Take(size);
    return {tokens, data.substr(cursor.Position()), std::nullopt};
}

FormulaResults::Definition FormulaResults::ReadArray(std::string_view data) const
{
    ByteCursor cursor(data);
    const auto range = ReadRange(cursor);
    cursor.Skip(6); // flags and an unused field
    const std::size_t size = cursor.U16();
    const auto tokens = cursor.Take(size);
    return {tokens, data.substr(cursor.Position()), range};
}

book::Cell* FormulaResults::TakeTextCell()
{
    const auto cell = std::exchange(textCell_, std::nullopt);
    return cell ? &look_.cells[*cell] : nullptr;
}

void FormulaResults::Finish()
{
    for (const auto& reference : references_) {
        auto& cell = look_.cells[reference.cell];
        const auto place = definitions_.find(reference.anchor);
        if (place == definitions_.end()) // that of a data table, or damaged
            continue;
        if (!place->second.array || place->second.array->first == cell.address)
            SetFormula(cell, place->second);
    }
}

void FormulaResults::SetFormula(book::Cell& cell, const Definition& formula)
{
    const auto where = [&] { return book::FormatCellAddress(cell.address); };
    if (textBytes_ > kMostFormulaBytes)
        return LeaveOut(look_, "formula", where(), "the sheet has too many long ones");
    auto text = FormulaText(formula.tokens, formula.extra, {names_, cell.address});
    if (!text)
        return LeaveOut(look_, "formula", where(), "it cannot be read");
    textBytes_ += text->size();
    cell.formula = static_cast<std::int32_t>(look_.formulas.size());
    look_.formulas.push_back({std::move(*text), formula.array});
}

} // namespace orrery::xls
