#include "engines/builtin/xls/sheet/shared_formulas.h"

#include "engines/builtin/xls/compound/bytes.h"

#include <algorithm>

namespace orrery::xls {

namespace {

// Offsets in records, header included.
constexpr std::size_t kNamedRow = kRecordHeader + 23; // in FORMULA, in PtgExp
constexpr std::size_t kNamedColumn = kRecordHeader + 25;
constexpr std::size_t kRange = kRecordHeader; // in SHRFMLA
constexpr std::size_t kUseCount = kRecordHeader + 7;

std::uint32_t KeyOf(std::uint16_t row, std::uint16_t column)
{
    return std::uint32_t{row} << 16 | column;
}

bool IsWritten(std::span<const SheetCells::Written> written, std::uint16_t row,
               std::uint16_t column)
{
    const auto found = std::lower_bound(written.begin(), written.end(), KeyOf(row, column),
                                        [](const auto& cell, std::uint32_t wanted) {
                                            return KeyOf(cell.row, cell.column) < wanted;
                                        });
    return found != written.end() && found->row == row && found->column == column;
}

} // namespace

SharedFormulas::SharedFormulas(const SheetText& text, std::span<const SheetCells::Written> written)
    : text_(text)
{
    for (const SharedFormulaPlace& shared : text.Index().sharedFormulas)
        if (IsWritten(written, shared.row, shared.column))
            groups_.push_back({KeyOf(shared.row, shared.column), 0, shared.begin, 0, {}});
    std::stable_sort(groups_.begin(), groups_.end(),
                     [](const Group& left, const Group& right) { return left.from < right.from; });
    if (!groups_.empty())
        FindCells(written);
}

void SharedFormulas::FindCells(std::span<const SheetCells::Written> written)
{
    for (const CellPlace& cell : text_.Index().cells) {
        const Group* found = Find(cell);
        if (found == nullptr || IsWritten(written, cell.row, cell.first))
            continue;
        Group& group = groups_[static_cast<std::size_t>(found - groups_.data())];
        const CellAddress address{cell.row, cell.first};
        if (group.count++ == 0) {
            group.to = KeyOf(cell.row, cell.first);
            group.range = {address, address};
        }
        group.range.Widen(address);
    }
}

const SharedFormulas::Group* SharedFormulas::Find(const CellPlace& cell) const
{
    // A cell that carries a formula uses its own. SHRFMLA has one byte for a column.
    if (groups_.empty() || !cell.Has(CellPlace::Dependent) || cell.Has(CellPlace::Carrier) ||
        cell.first >= kSheetColumns)
        return nullptr;
    const std::string_view bytes = text_.Bytes();
    const std::uint32_t key =
        KeyOf(ReadU16(bytes, cell.begin + kNamedRow), ReadU16(bytes, cell.begin + kNamedColumn));
    const auto found = std::lower_bound(
        groups_.begin(), groups_.end(), key,
        [](const Group& group, std::uint32_t wanted) { return group.from < wanted; });
    return found != groups_.end() && found->from == key ? &*found : nullptr;
}

void SharedFormulas::Redirect(const CellPlace& cell, std::string& table, std::size_t at) const
{
    if (const Group* group = Find(cell)) {
        PutU16(table, at + kNamedRow, static_cast<std::uint16_t>(group->to >> 16));
        PutU16(table, at + kNamedColumn, static_cast<std::uint16_t>(group->to));
    }
}

std::string SharedFormulas::RecordAfter(const CellPlace& cell, std::string_view base) const
{
    const Group* group = Find(cell);
    if (group == nullptr || group->to != KeyOf(cell.row, cell.first))
        return {};
    const std::size_t size = kRecordHeader + ReadU16(base, group->record + 2);
    std::string record(Slice(base, group->record, size));
    PutU16(record, kRange, static_cast<std::uint16_t>(group->range.first.row));
    PutU16(record, kRange + 2, static_cast<std::uint16_t>(group->range.last.row));
    PutU8(record, kRange + 4, static_cast<std::uint8_t>(group->range.first.column));
    PutU8(record, kRange + 5, static_cast<std::uint8_t>(group->range.last.column));
    PutU8(record, kUseCount, static_cast<std::uint8_t>(std::min<std::uint32_t>(group->count, 255)));
    return record;
}

} // namespace orrery::xls
