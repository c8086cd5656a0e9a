#include "engines/builtin/xls/sheet/sheet_index.h"

#include "engines/builtin/xls/compound/bytes.h"

#include <algorithm>

namespace orrery::xls {

namespace {

constexpr std::size_t kCellHead = 6;     // row, column, format; of several cells row and column
constexpr std::size_t kRowData = 16;     // [MS-XLS] 2.4.221
constexpr std::size_t kFormulaHead = 22; // up to the size of the expression, [MS-XLS] 2.4.127
constexpr std::size_t kSharedFormulaHead = 8; // the same, [MS-XLS] 2.4.277
constexpr std::size_t kPtgExpSize = 5;        // [MS-XLS] 2.5.198.58
constexpr std::uint8_t kPtgExp = 0x01;

bool IsFollower(RecordType type)
{
    switch (type) {
    case RecordType::Continue:
    case RecordType::String:
    case RecordType::SharedFormula:
    case RecordType::Array:
    case RecordType::Table:
        return true;
    default:
        return false;
    }
}

std::uint32_t Offset(std::size_t at)
{
    return static_cast<std::uint32_t>(at);
}

/// The range of an ARRAY or TABLE record. [MS-XLS] 2.4.4, 2.4.313
CellRange ReadRange(std::string_view data)
{
    return {{ReadU16(data, 0) + 1, ReadU8(data, 4) + 1},
            {ReadU16(data, 2) + 1, ReadU8(data, 5) + 1}};
}

bool CellIsBefore(const CellPlace& left, const CellPlace& right)
{
    return left.row != right.row ? left.row < right.row : left.first < right.first;
}

bool Overlap(const CellPlace& left, const CellPlace& right)
{
    return right.row == left.row && right.first <= left.last;
}

} // namespace

const RowPlace* SheetIndex::FindRow(std::int32_t number) const
{
    const auto found = std::lower_bound(
        rows.begin(), rows.end(), number,
        [](const RowPlace& row, std::int32_t wanted) { return row.number < wanted; });
    return found != rows.end() && found->number == number ? &*found : nullptr;
}

std::span<const CellPlace> SheetIndex::CellsOf(const RowPlace& row) const
{
    return std::span(cells).subspan(row.firstCell, row.cellCount);
}

std::span<const CellPlace> SheetIndex::CellsAround(const RowPlace& row, std::uint16_t column) const
{
    const auto all = CellsOf(row);
    if (row.Has(RowPlace::Overlapping))
        return all;
    const auto behind = std::upper_bound(
        all.begin(), all.end(), column,
        [](std::uint16_t wanted, const CellPlace& cell) { return wanted < cell.first; });
    if (behind == all.begin())
        return {};
    return all.subspan(static_cast<std::size_t>(behind - all.begin()) - 1, 1);
}

const CellPlace* SheetIndex::FindCell(const RowPlace& row, std::uint16_t column) const
{
    const CellPlace* found = nullptr;
    for (const CellPlace& cell : CellsAround(row, column))
        if (cell.Contains(column))
            found = &cell;
    return found;
}

const CellPlace* SheetIndex::FindCell(CellAddress address) const
{
    const RowPlace* row = FindRow(address.row - 1);
    return row != nullptr ? FindCell(*row, static_cast<std::uint16_t>(address.column - 1))
                          : nullptr;
}

bool SheetIndexReader::Take(const Record& record)
{
    switch (record.type) {
    case RecordType::Row:
        TakeRow(record);
        break;
    case RecordType::DbCell:
        index_.blocks.push_back(Offset(record.begin));
        break;
    case RecordType::Formula:
        Slice(record.data, 0, kFormulaHead);
        index_.hasFormulas = true;
        TakeCell(record, CellPlace::Formula);
        break;
    case RecordType::LabelSst:
        ++index_.stringReferences;
        TakeCell(record, CellPlace::SharedString);
        break;
    case RecordType::Blank:
    case RecordType::Rk:
    case RecordType::Number:
    case RecordType::Label:
    case RecordType::RichString:
    case RecordType::BoolErr:
        TakeCell(record, 0);
        break;
    case RecordType::MulRk:
        TakeMultiple(record, 6); // a format and a number each
        break;
    case RecordType::MulBlank:
        TakeMultiple(record, 2); // a format each
        break;
    default:
        if (!IsFollower(record.type) || !TakeFollower(record))
            return false;
    }
    AddRun(record);
    return true;
}

/// Whether the record belongs to the cell right before it; other records of the table have no
/// continuations.
bool SheetIndexReader::TakeFollower(const Record& record)
{
    if (index_.cells.empty() || followed_ != record.begin)
        return false;
    CellPlace& cell = index_.cells.back();
    if (record.type != RecordType::Continue) {
        if (!cell.Has(CellPlace::Formula))
            return false;
        if (record.type != RecordType::String)
            cell.flags |= CellPlace::Carrier;
        if (record.type == RecordType::SharedFormula)
            AddShared(record);
        else if (record.type != RecordType::String)
            AddArray(ReadRange(record.data));
    }
    cell.end = Offset(record.End());
    followed_ = cell.end;
    return true;
}

void SheetIndexReader::AddShared(const Record& record)
{
    Slice(record.data, 0, kSharedFormulaHead);
    const CellPlace& cell = index_.cells.back();
    index_.sharedFormulas.push_back({Offset(record.begin), cell.row, cell.first});
}

/// An array of one cell may be overwritten like any cell.
void SheetIndexReader::AddArray(const CellRange& range)
{
    if (!range.IsOneCell())
        index_.arrays.push_back(range);
}

void SheetIndexReader::TakeRow(const Record& record)
{
    Slice(record.data, 0, kRowData);
    rowRecords_.push_back({ReadU16(record.data, 0), Offset(record.begin)});
}

void SheetIndexReader::TakeCell(const Record& record, unsigned flags)
{
    Slice(record.data, 0, kCellHead);
    if ((flags & CellPlace::Formula) != 0 && record.data.size() >= kFormulaHead + kPtgExpSize &&
        ReadU8(record.data, kFormulaHead) == kPtgExp)
        flags |= CellPlace::Dependent;
    const std::uint16_t column = ReadU16(record.data, 2);
    const CellPlace cell{Offset(record.begin),
                         Offset(record.End()),
                         ReadU16(record.data, 0),
                         column,
                         column,
                         static_cast<std::uint16_t>(flags)};
    isSorted_ = isSorted_ && (index_.cells.empty() || (CellIsBefore(index_.cells.back(), cell) &&
                                                       !Overlap(index_.cells.back(), cell)));
    index_.cells.push_back(cell);
    followed_ = cell.end;
}

void SheetIndexReader::TakeMultiple(const Record& record, std::size_t size)
{
    TakeCell(record, CellPlace::Multiple);
    CellPlace& cell = index_.cells.back();
    const std::size_t count = (record.data.size() - kCellHead) / size;
    const std::size_t last = ReadU16(record.data, record.data.size() - 2);
    if (count == 0 || (record.data.size() - kCellHead) % size != 0 ||
        last != cell.first + count - 1)
        ThrowDamaged("row " + std::to_string(cell.row + 1) + ", cells in one record are not whole");
    cell.last = static_cast<std::uint16_t>(last);
}

void SheetIndexReader::AddRun(const Record& record)
{
    if (index_.runs.empty() || index_.runs.back().end != record.begin)
        index_.runs.push_back({record.begin, record.begin});
    index_.runs.back().end = record.End();
}

SheetIndex SheetIndexReader::Finish()
{
    if (!isSorted_)
        SortCells();
    // Of several records for one row, the last one counts.
    std::stable_sort(
        rowRecords_.begin(), rowRecords_.end(),
        [](const RowRecord& left, const RowRecord& right) { return left.number < right.number; });
    index_.rows.reserve(rowRecords_.size());
    std::size_t cell = 0;
    for (std::size_t i = 0; i < rowRecords_.size(); ++i) {
        const auto [number, offset] = rowRecords_[i];
        if (i + 1 < rowRecords_.size() && rowRecords_[i + 1].number == number)
            continue;
        while (cell < index_.cells.size() && index_.cells[cell].row < number)
            AddRow(index_.cells[cell].row, RowPlace::kNone, cell);
        AddRow(number, offset, cell);
    }
    while (cell < index_.cells.size())
        AddRow(index_.cells[cell].row, RowPlace::kNone, cell);
    return std::move(index_);
}

/// Sorts by row and column. If cells of a row overlap, they keep the order of the file.
void SheetIndexReader::SortCells()
{
    auto& cells = index_.cells;
    std::stable_sort(cells.begin(), cells.end(), CellIsBefore);
    for (auto first = cells.begin(); first != cells.end();) {
        const auto last = std::find_if(
            first, cells.end(), [row = first->row](const auto& cell) { return cell.row != row; });
        // A cell that overlaps any earlier one overlaps the one that reaches furthest.
        std::int32_t end = -1;
        bool overlaps = false;
        for (auto cell = first; cell != last; ++cell) {
            overlaps = overlaps || cell->first <= end;
            end = std::max<std::int32_t>(end, cell->last);
        }
        if (overlaps)
            std::sort(first, last,
                      [](const auto& left, const auto& right) { return left.begin < right.begin; });
        first = last;
    }
}

/// Adds the row whose cells begin at `cell`, and moves `cell` past them.
void SheetIndexReader::AddRow(std::uint16_t number, std::uint32_t record, std::size_t& cell)
{
    RowPlace row;
    row.record = record;
    row.firstCell = Offset(cell);
    row.number = number;
    while (cell < index_.cells.size() && index_.cells[cell].row == number)
        ++cell;
    row.cellCount = Offset(cell) - row.firstCell;
    Mark(row);
    index_.rows.push_back(row);
}

void SheetIndexReader::Mark(RowPlace& row)
{
    unsigned flags = RowPlace::OneRun;
    const CellPlace* before = nullptr;
    for (const CellPlace& cell : index_.CellsOf(row)) {
        if (cell.Has(CellPlace::Formula))
            flags |= RowPlace::Formulas;
        // Cells are out of order only if they overlap others of the row.
        if (before != nullptr && cell.first <= before->last)
            flags |= RowPlace::Overlapping;
        if (before != nullptr && cell.begin != before->end)
            flags &= ~unsigned{RowPlace::OneRun};
        before = &cell;
    }
    row.flags = static_cast<std::uint16_t>(flags);
}

std::uint16_t FormatIn(std::string_view bytes, const CellPlace& place, std::uint16_t column)
{
    std::size_t at = place.begin + kRecordHeader + 4;
    if (place.Has(CellPlace::Multiple)) {
        const bool isNumber =
            static_cast<RecordType>(ReadU16(bytes, place.begin)) == RecordType::MulRk;
        at += std::size_t{isNumber ? 6U : 2U} * (column - place.first);
    }
    return ReadU16(bytes, at);
}

} // namespace orrery::xls
