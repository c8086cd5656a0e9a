#include "engines/builtin/xls/sheet/sheet_bytes.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/sheet/cell_table.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

namespace orrery::xls {

namespace {

using Written = std::span<const SheetCells::Written>;

constexpr std::size_t kWidthPlace = kRecordHeader + 12; // in INDEX
constexpr std::size_t kBlockPlaces = kRecordHeader + kIndexHead;
constexpr std::size_t kDimensionsSize = 14; // [MS-XLS] 2.4.90

/// Offsets in the bytes of a sheet: of INDEX and of the records that it refers to.
struct IndexTargets {
    std::size_t index = 0;
    std::size_t defaultColumnWidth = 0;
    std::vector<std::size_t> blocks; ///< of the DBCELL records
};

/// Finds them in a sheet that has the cell table of the text.
IndexTargets FindIndexTargets(std::string_view sheet)
{
    IndexTargets found;
    RecordReader reader(sheet);
    std::size_t depth = 0; // charts are nested
    while (const auto record = reader.Next()) {
        if (record->type == RecordType::Bof)
            ++depth;
        else if (record->type == RecordType::Eof)
            --depth;
        if (depth != 1)
            continue;
        if (record->type == RecordType::Index) // the last one counts, as in SheetText
            found.index = record->begin;
        else if (record->type == RecordType::DefaultColumnWidth)
            found.defaultColumnWidth = record->begin;
        else if (record->type == RecordType::DbCell)
            found.blocks.push_back(record->begin);
    }
    return found;
}

IndexTargets IndexTargetsOf(const SheetText& text)
{
    const auto& blocks = text.Index().blocks;
    return {
        text.IndexRecord().begin, text.DefaultColumnWidth().begin, {blocks.begin(), blocks.end()}};
}

/// Their offsets after the patch is applied, whose last insertion is the table. The records of a
/// damaged sheet may be in any order, so nothing is searched.
IndexTargets IndexTargetsAfter(const TextPatch& patch, const SheetText& text,
                               const CellTable& table)
{
    IndexTargets targets{patch.PlaceOf(text.IndexRecord().begin),
                         patch.PlaceOf(text.DefaultColumnWidth().begin),
                         {}};
    const std::size_t begin = patch.PlaceOf(text.TablePlace()) - table.bytes.size();
    for (const std::size_t block : table.blocks)
        targets.blocks.push_back(begin + block);
    return targets;
}

/// Corrects the offset of DEFCOLWIDTH in INDEX for a sheet at `offset`, if it was right in the
/// text.
void MoveWidthOffset(std::string& sheet, const IndexTargets& targets, const SheetText& text,
                     std::size_t offset)
{
    const std::size_t at = targets.index + kWidthPlace;
    const Span& width = text.DefaultColumnWidth();
    if (!width.Empty() && ReadU32(sheet, at) == text.Offset() + width.begin)
        PutU32(sheet, at, static_cast<std::uint32_t>(offset + targets.defaultColumnWidth));
}

/// The same for the blocks. Some writers leave wrong offsets; those stay.
void MoveBlockOffsets(std::string& sheet, const IndexTargets& targets, const SheetText& text,
                      std::size_t offset)
{
    const auto& blocks = text.Index().blocks;
    if (targets.blocks.size() != blocks.size())
        return;
    const std::size_t end = targets.index + kRecordHeader + ReadU16(sheet, targets.index + 2);
    for (std::size_t at = targets.index + kBlockPlaces; at + 4 <= end; at += 4) {
        const std::size_t place = ReadU32(sheet, at);
        const auto block = std::lower_bound(blocks.begin(), blocks.end(), place - text.Offset());
        if (block != blocks.end() && text.Offset() + *block == place)
            PutU32(sheet, at,
                   static_cast<std::uint32_t>(
                       offset + targets.blocks[static_cast<std::size_t>(block - blocks.begin())]));
    }
}

/// The sheet with the replacements in `others` only.
std::string MoveSheet(const SheetText& text, std::string_view base, const TextPatch& others,
                      std::size_t offset)
{
    std::string sheet = others.Empty() ? std::string(base) : others.Apply(base);
    if (text.IndexRecord().Empty() || (others.Empty() && offset == text.Offset()))
        return sheet;
    const IndexTargets targets = others.Empty() ? IndexTargetsOf(text) : FindIndexTargets(sheet);
    MoveWidthOffset(sheet, targets, text, offset);
    MoveBlockOffsets(sheet, targets, text, offset);
    return sheet;
}

/// A range of cells as in DIMENSIONS: from 0, ends excluded.
struct Extent {
    std::uint32_t firstRow = 0;
    std::uint32_t rowsEnd = 0;
    std::uint16_t firstColumn = 0;
    std::uint16_t columnsEnd = 0;

    bool Empty() const { return firstRow >= rowsEnd || firstColumn >= columnsEnd; }
    void Widen(std::uint16_t row, std::uint16_t first, std::uint16_t last)
    {
        const auto columns = static_cast<std::uint16_t>(std::min(last + 1, kSheetColumns));
        *this = Empty() ? Extent{row, row + 1U, first, columns}
                        : Extent{std::min<std::uint32_t>(firstRow, row),
                                 std::max<std::uint32_t>(rowsEnd, row + 1U),
                                 std::min(firstColumn, first), std::max(columnsEnd, columns)};
    }
};

std::string DimensionsRecord(const Extent& extent)
{
    std::string data;
    AppendU32(data, extent.firstRow);
    AppendU32(data, extent.rowsEnd);
    AppendU16(data, extent.firstColumn);
    AppendU16(data, extent.columnsEnd);
    AppendU16(data, 0);
    std::string record;
    AppendRecord(record, RecordType::Dimensions, data);
    return record;
}

/// DIMENSIONS including the written cells; if the text has no such record, of all cells.
std::string WidenedDimensions(const SheetText& text, std::string_view base, Written written)
{
    Extent extent;
    const Span& old = text.Dimensions();
    if (old.end - old.begin >= kRecordHeader + kDimensionsSize) {
        const std::string_view data = base.substr(old.begin + kRecordHeader);
        extent = {ReadU32(data, 0), ReadU32(data, 4), ReadU16(data, 8), ReadU16(data, 10)};
    }
    else {
        for (const CellPlace& cell : text.Index().cells)
            extent.Widen(cell.row, cell.first, cell.last);
    }
    for (const auto& cell : written)
        extent.Widen(cell.row, cell.column, cell.column);
    return DimensionsRecord(extent);
}

/// INDEX for the table; the offsets of the blocks are filled in later.
std::string IndexRecord(const SheetText& text, std::string_view base, const CellTable& table)
{
    std::string data(4, '\0');
    AppendU32(data, table.firstRow);
    AppendU32(data, table.rowsEnd);
    AppendU32(data, ReadU32(base, text.IndexRecord().begin + kWidthPlace));
    data.append(4 * table.blocks.size(), '\0');
    std::string record;
    AppendRecord(record, RecordType::Index, data);
    return record;
}

TextPatch PatchOf(const SheetText& text, std::string_view base, const CellTable& table,
                  Written written)
{
    TextPatch patch;
    const std::size_t place = text.TablePlace();
    const Span& dimensions = text.Dimensions();
    if (!written.empty())
        patch.Replace(dimensions.Empty() ? place : dimensions.begin,
                      dimensions.Empty() ? place : dimensions.end,
                      WidenedDimensions(text, base, written));
    if (!text.IndexRecord().Empty())
        patch.Replace(text.IndexRecord().begin, text.IndexRecord().end,
                      IndexRecord(text, base, table));
    patch.Insert(place, table.bytes);
    // Records between those of the old table come after the new one.
    for (const Span& run : text.Index().runs)
        patch.Remove(run.begin, run.end);
    return patch;
}

std::string RewriteSheet(const SheetText& text, std::string_view base, Written written,
                         bool recalculate, TextPatch others, std::size_t offset)
{
    const CellTable table = MakeCellTable(text, base, written, recalculate);
    others.Add(PatchOf(text, base, table, written));
    std::string sheet = others.Apply(base);
    if (text.IndexRecord().Empty())
        return sheet;
    const IndexTargets targets = IndexTargetsAfter(others, text, table);
    MoveWidthOffset(sheet, targets, text, offset);
    std::size_t at = targets.index + kBlockPlaces;
    for (const std::size_t block : targets.blocks) {
        PutU32(sheet, at, static_cast<std::uint32_t>(offset + block));
        at += 4;
    }
    return sheet;
}

} // namespace

std::string MakeSheet(const SheetText& text, std::string_view base, const SheetCells* cells,
                      bool recalculate, TextPatch others, std::size_t offset)
{
    const auto written = cells != nullptr ? cells->InOrder() : std::vector<SheetCells::Written>();
    if (written.empty() && !(recalculate && text.HasFormulas()))
        return MoveSheet(text, base, others, offset);
    return RewriteSheet(text, base, written, recalculate, std::move(others), offset);
}

} // namespace orrery::xls
