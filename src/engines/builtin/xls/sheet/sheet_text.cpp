#include "engines/builtin/xls/sheet/sheet_text.h"

#include "book/error.h"
#include "engines/builtin/xls/compound/bytes.h"
#include "util/error.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace orrery::xls {

namespace {

constexpr std::uint16_t kWorksheet = 0x0010; // [MS-XLS] 2.4.21
constexpr std::uint16_t kMacroSheet = 0x0040;
constexpr std::uint16_t kProtectionFeature = 2; // ISFPROTECTION

/// The cells of a Ref8 structure: rows, then columns, counted from 0. [MS-XLS] 2.5.211
CellRange ReadRange(std::string_view data, std::size_t at)
{
    return {{ReadU16(data, at) + 1, ReadU16(data, at + 4) + 1},
            {ReadU16(data, at + 2) + 1, ReadU16(data, at + 6) + 1}};
}

/// Adds the ranges of a list whose count is at `countAt`.
void AddRanges(std::string_view data, std::size_t countAt, std::size_t at,
               std::vector<CellRange>& ranges)
{
    for (std::size_t count = ReadU16(data, countAt); count > 0; --count, at += 8)
        ranges.push_back(ReadRange(data, at));
}

/// Adds the ranges of a protected sheet that everyone may edit. [MS-XLS] 2.4.112, 2.5.105
void AddEditableRanges(std::string_view data, std::vector<CellRange>& ranges)
{
    if (ReadU16(data, 12) != kProtectionFeature)
        return;
    const std::size_t rangesEnd = 27 + std::size_t{8} * ReadU16(data, 19);
    if (data.size() < rangesEnd + 8)
        return; // more ranges than anyone marks by hand, so that they continue in other records
    const bool isForSome = (ReadU32(data, rangesEnd) & 1) != 0; // has a security descriptor
    const bool hasPassword = ReadU32(data, rangesEnd + 4) != 0;
    if (!isForSome && !hasPassword)
        AddRanges(data, 19, 27, ranges);
}

/// Whether a first cell table must come before that record.
bool ComesAfterCells(RecordType type)
{
    switch (type) {
    case RecordType::Bof: // of a chart
    case RecordType::Eof:
    case RecordType::MsoDrawing:
    case RecordType::Obj:
    case RecordType::Note:
    case RecordType::HeaderFooterPicture:
    case RecordType::Window2:
    case RecordType::MergeCells:
        return true;
    default:
        return false;
    }
}

void CheckLength(const Record& record)
{
    if (record.data.size() > kMaxRecordSize)
        ThrowDamaged("a record of a sheet is longer than its format allows");
}

Span PlaceOf(const Record& record)
{
    return {record.begin, record.End()};
}

} // namespace

struct SheetText::Ranges {
    std::vector<CellRange> merges, open;
};

SheetText::SheetText(std::string bytes, std::size_t offset)
    : bytes_(std::move(bytes)), offset_(offset)
{
    // The index holds offsets of 32 bits.
    if (bytes_.size() >= std::numeric_limits<std::uint32_t>::max())
        throw util::Error(book::ErrorKind::TooLargeUnpacked);
    ReadRecords();
    std::stable_sort(columns_.begin(), columns_.end(),
                     [](const ColumnFormat& left, const ColumnFormat& right) {
                         return left.first < right.first;
                     });
}

void SheetText::ReadRecords()
{
    RecordReader reader(bytes_);
    const auto begin = reader.Next();
    if (!begin || begin->type != RecordType::Bof)
        ThrowDamaged("a sheet has no beginning or no end");
    CheckLength(*begin);
    const std::uint16_t kind = ReadU16(begin->data, 2);
    hasCells_ = kind == kWorksheet || kind == kMacroSheet;
    SheetIndexReader index;
    Ranges ranges;
    std::size_t depth = 1; // charts are nested
    while (const auto record = reader.Next()) {
        CheckLength(*record);
        if (depth == 1 && settingsEnd_ == 0 && ComesAfterCells(record->type))
            settingsEnd_ = record->begin;
        if (record->type == RecordType::Bof)
            ++depth;
        else if (record->type == RecordType::Eof)
            --depth;
        else if (depth == 1 && hasCells_ && !index.Take(*record))
            ReadRecord(*record, ranges);
        if (depth == 0)
            break;
    }
    if (depth != 0)
        ThrowDamaged("a sheet has no beginning or no end");
    index_ = index.Finish();
    merges_ = RangeIndex(std::move(ranges.merges));
    fixedArrays_ = RangeIndex(index_.arrays);
    editableRanges_ = RangeIndex(std::move(ranges.open));
}

void SheetText::ReadRecord(const Record& record, Ranges& ranges)
{
    switch (record.type) {
    case RecordType::Index:
        Slice(record.data, 0, kIndexHead);
        indexRecord_ = PlaceOf(record);
        break;
    case RecordType::Dimensions:
        dimensions_ = PlaceOf(record);
        break;
    case RecordType::DefaultColumnWidth:
        defaultColumnWidth_ = PlaceOf(record);
        break;
    case RecordType::DefaultRowHeight:
        Slice(record.data, 0, 4);
        defaultRowHeight_ = PlaceOf(record);
        break;
    case RecordType::ColumnInfo:
        ReadColumns(record);
        break;
    case RecordType::MergeCells:
        AddRanges(record.data, 0, 2, ranges.merges);
        break;
    case RecordType::Protect:
        isProtected_ = ReadU16(record.data, 0) != 0;
        break;
    case RecordType::Feature:
        AddEditableRanges(record.data, ranges.open);
        break;
    default:
        break;
    }
}

void SheetText::ReadColumns(const Record& record)
{
    // Some writers count one column too many. [MS-XLS] 2.4.53
    columns_.push_back(
        {ReadU16(record.data, 0) + 1, ReadU16(record.data, 2) + 1, ReadU16(record.data, 6)});
}

std::size_t SheetText::TablePlace() const
{
    if (!index_.runs.empty())
        return index_.runs.front().begin;
    return std::max(settingsEnd_, dimensions_.end);
}

std::uint16_t SheetText::FormatOf(CellAddress cell) const
{
    return FormatOf(index_.FindRow(cell.row - 1), static_cast<std::uint16_t>(cell.column - 1));
}

std::uint16_t SheetText::FormatOf(const RowPlace* row, std::uint16_t column) const
{
    if (row != nullptr) {
        if (const CellPlace* cell = index_.FindCell(*row, column))
            return FormatIn(bytes_, *cell, column);
        if (const auto format = FormatOfRow(*row))
            return *format;
    }
    return FormatOfColumn(column + 1);
}

std::optional<std::uint16_t> SheetText::FormatOfRow(const RowPlace& row) const
{
    constexpr std::uint16_t kHasFormat = 0x0080; // fGhostDirty
    if (!row.HasRecord() || (ReadU16(bytes_, row.record + kRecordHeader + 12) & kHasFormat) == 0)
        return std::nullopt;
    return static_cast<std::uint16_t>(ReadU16(bytes_, row.record + kRecordHeader + 14) & 0x0FFF);
}

std::uint16_t SheetText::FormatOfColumn(std::int32_t column) const
{
    const auto behind = std::upper_bound(
        columns_.begin(), columns_.end(), column,
        [](std::int32_t wanted, const ColumnFormat& range) { return wanted < range.first; });
    if (behind == columns_.begin() || std::prev(behind)->last < column)
        return kDefaultFormat;
    return std::prev(behind)->format;
}

bool SheetText::IsHiddenByMerge(CellAddress cell) const
{
    const CellRange* merge = merges_.Find(cell);
    return merge != nullptr && cell != merge->first;
}

bool SheetText::IsProtected(CellAddress cell) const
{
    return isProtected_ && editableRanges_.Find(cell) == nullptr;
}

} // namespace orrery::xls
