#include "engines/builtin/xls/sheet/cell_table.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/sheet/shared_formulas.h"

#include <algorithm>
#include <bitset>

namespace orrery::xls {

namespace {

using Written = std::span<const SheetCells::Written>;

constexpr std::uint32_t kBlockRows = 32;
constexpr std::size_t kRowRecord = kRecordHeader + 16;
constexpr std::size_t kWrittenCell = kRecordHeader + 10; // RK, LABELSST

/// A row of the table: from the text, written to, or both.
struct Row {
    std::uint16_t number = 0;
    const RowPlace* place = nullptr;
    Written written;
};

void AppendHeader(std::string& bytes, RecordType type, std::size_t size)
{
    AppendU16(bytes, static_cast<std::uint16_t>(type));
    AppendU16(bytes, static_cast<std::uint16_t>(size));
}

/// Writes the rows of a table in order.
class TableWriter {
public:
    TableWriter(const SheetText& text, std::string_view base, Written written, bool recalculate)
        : text_(text), index_(text.Index()), base_(base), written_(written),
          recalculate_(recalculate), shared_(text, written)
    {
    }

    CellTable Make();

private:
    void CollectRows();
    void AppendBlock(std::span<const Row> rows);
    void AppendRow(const Row& row);
    void AppendNewRow(const Row& row);
    void AppendCells(const Row& row);
    void AppendPiece(const CellPlace& cell, std::uint32_t first, std::uint32_t last);
    void AppendFormula(const CellPlace& cell);
    void DropResult(std::size_t formula);
    void AppendWritten(const Row& row, const SheetCells::Written& cell);

    const SheetText& text_;
    const SheetIndex& index_;
    std::string_view base_;
    Written written_;
    bool recalculate_;
    SharedFormulas shared_;
    std::vector<Row> rows_;
    CellTable table_;
};

CellTable TableWriter::Make()
{
    CollectRows();
    if (rows_.empty())
        return {};
    table_.bytes.reserve(base_.size() + written_.size() * (kWrittenCell + kRowRecord));
    table_.firstRow = rows_.front().number;
    table_.rowsEnd = rows_.back().number + 1U;
    // Blocks count from the first row; a block without rows is empty.
    std::uint32_t block = 0;
    for (auto first = rows_.begin(); first != rows_.end(); ++block) {
        const std::uint32_t end = table_.firstRow + (block + 1) * kBlockRows;
        const auto last =
            std::find_if(first, rows_.end(), [end](const Row& row) { return row.number >= end; });
        AppendBlock({first, last});
        first = last;
    }
    return std::move(table_);
}

void TableWriter::CollectRows()
{
    rows_.reserve(index_.rows.size() + written_.size());
    auto place = index_.rows.begin();
    for (auto first = written_.begin(); first != written_.end() || place != index_.rows.end();) {
        Row row;
        if (first == written_.end() || (place != index_.rows.end() && place->number <= first->row))
            row.place = &*place++;
        row.number = row.place != nullptr ? row.place->number : first->row;
        const auto last = std::find_if(first, written_.end(),
                                       [&](const auto& cell) { return cell.row != row.number; });
        row.written = {first, last};
        first = last;
        rows_.push_back(row);
    }
}

/// ROW records, then the cells, then DBCELL with the distances between them. [MS-XLS] 2.4.78
void TableWriter::AppendBlock(std::span<const Row> rows)
{
    const std::size_t begin = table_.bytes.size();
    std::size_t from = begin; // the first distance counts from the second ROW record
    for (const Row& row : rows) {
        AppendRow(row);
        if (&row == &rows.front())
            from = table_.bytes.size();
    }
    std::vector<std::uint16_t> distances;
    for (const Row& row : rows) {
        const std::size_t cells = table_.bytes.size();
        AppendCells(row);
        if (table_.bytes.size() == cells)
            continue;
        distances.push_back(static_cast<std::uint16_t>(cells - from));
        from = cells;
    }
    if (!text_.HasBlocks())
        return;
    const std::size_t end = table_.bytes.size();
    table_.blocks.push_back(end);
    AppendHeader(table_.bytes, RecordType::DbCell, 4 + 2 * distances.size());
    AppendU32(table_.bytes, static_cast<std::uint32_t>(end - begin));
    for (const std::uint16_t distance : distances)
        AppendU16(table_.bytes, distance);
}

void TableWriter::AppendRow(const Row& row)
{
    if (row.place == nullptr || !row.place->HasRecord())
        return AppendNewRow(row);
    const std::size_t at = table_.bytes.size();
    table_.bytes +=
        base_.substr(row.place->record, kRecordHeader + ReadU16(base_, row.place->record + 2));
    if (row.written.empty())
        return;
    std::uint16_t first = ReadU16(table_.bytes, at + 6);
    std::uint16_t end = ReadU16(table_.bytes, at + 8);
    if (first >= end) // no cells
        first = end = row.written.front().column;
    PutU16(table_.bytes, at + 6, std::min(first, row.written.front().column));
    PutU16(table_.bytes, at + 8,
           std::max(end, static_cast<std::uint16_t>(row.written.back().column + 1)));
}

/// Appends a row of the sheet's default height, from DEFAULTROWHEIGHT. [MS-XLS] 2.4.87, 2.4.221
void TableWriter::AppendNewRow(const Row& row)
{
    constexpr std::uint16_t kUsualHeight = 255; // twips
    constexpr std::uint16_t kOwnHeight = 1;
    constexpr std::uint16_t kHidden = 2;
    std::uint16_t first = row.written.empty() ? kSheetColumns : row.written.front().column;
    std::uint16_t end = row.written.empty() ? 0 : row.written.back().column + 1;
    if (row.place != nullptr) {
        for (const CellPlace& cell : index_.CellsOf(*row.place)) {
            first = std::min(first, cell.first);
            end = std::max<std::uint16_t>(end, cell.last + 1);
        }
    }
    const Span& usual = text_.DefaultRowHeight();
    const std::uint16_t flags = usual.Empty() ? 0 : ReadU16(base_, usual.begin + kRecordHeader);
    const std::uint16_t height =
        usual.Empty() ? kUsualHeight : ReadU16(base_, usual.begin + kRecordHeader + 2);
    AppendHeader(table_.bytes, RecordType::Row, kRowRecord - kRecordHeader);
    AppendU16(table_.bytes, row.number);
    AppendU16(table_.bytes, first);
    AppendU16(table_.bytes, end);
    AppendU16(table_.bytes, height);
    AppendU32(table_.bytes, 0);
    AppendU16(table_.bytes,
              static_cast<std::uint16_t>(0x0100 | ((flags & kHidden) != 0 ? 0x20 : 0) |
                                         ((flags & kOwnHeight) != 0 ? 0x40 : 0)));
    AppendU16(table_.bytes, kDefaultFormat);
}

void TableWriter::AppendCells(const Row& row)
{
    const auto cells =
        row.place != nullptr ? index_.CellsOf(*row.place) : std::span<const CellPlace>();
    const bool changesFormulas = recalculate_ || !shared_.Empty();
    if (row.written.empty() && !cells.empty() && row.place->Has(RowPlace::OneRun) &&
        !(changesFormulas && row.place->Has(RowPlace::Formulas))) {
        table_.bytes += base_.substr(cells.front().begin, cells.back().end - cells.front().begin);
        return;
    }
    std::bitset<kSheetColumns> isWritten;
    for (const SheetCells::Written& cell : row.written)
        isWritten.set(cell.column);
    auto next = row.written.begin();
    const auto appendBefore = [&](std::uint32_t column) {
        for (; next != row.written.end() && next->column < column; ++next)
            AppendWritten(row, *next);
    };
    const auto isFree = [&](std::uint32_t column) {
        return column >= kSheetColumns || !isWritten[column];
    };
    for (const CellPlace& cell : cells) { // the columns that were not overwritten, in pieces
        for (std::uint32_t first = cell.first; first <= cell.last; ++first) {
            if (!isFree(first))
                continue;
            std::uint32_t last = first;
            while (last < cell.last && isFree(last + 1))
                ++last;
            appendBefore(first);
            AppendPiece(cell, first, last);
            first = last;
        }
    }
    appendBefore(kSheetColumns);
}

/// Appends the cells of a record from one column to another.
void TableWriter::AppendPiece(const CellPlace& cell, std::uint32_t first, std::uint32_t last)
{
    if (first == cell.first && last == cell.last) {
        if (cell.Has(CellPlace::Formula) && (recalculate_ || shared_.Contains(cell)))
            AppendFormula(cell);
        else
            table_.bytes += base_.substr(cell.begin, cell.end - cell.begin);
        return;
    }
    const bool isNumbers = static_cast<RecordType>(ReadU16(base_, cell.begin)) == RecordType::MulRk;
    const std::size_t size = isNumbers ? 6 : 2; // of a cell
    const std::size_t count = last - first + 1;
    const auto single = isNumbers ? RecordType::Rk : RecordType::Blank;
    const auto several = isNumbers ? RecordType::MulRk : RecordType::MulBlank;
    AppendHeader(table_.bytes, count == 1 ? single : several,
                 4 + count * size + (count == 1 ? 0U : 2U));
    AppendU16(table_.bytes, cell.row);
    AppendU16(table_.bytes, static_cast<std::uint16_t>(first));
    table_.bytes +=
        Slice(base_, cell.begin + kRecordHeader + 4 + (first - cell.first) * size, count * size);
    if (count > 1)
        AppendU16(table_.bytes, static_cast<std::uint16_t>(last));
}

/// Appends a formula with the records that belong to it.
void TableWriter::AppendFormula(const CellPlace& cell)
{
    RecordReader reader(base_.substr(0, cell.end), cell.begin);
    bool isResult = false;
    while (const auto record = reader.Next()) {
        if (record->type != RecordType::Continue)
            isResult = record->type == RecordType::String;
        if (isResult && recalculate_)
            continue;
        const std::size_t at = table_.bytes.size();
        table_.bytes += base_.substr(record->begin, record->End() - record->begin);
        if (record->type != RecordType::Formula)
            continue;
        if (recalculate_)
            DropResult(at);
        shared_.Redirect(cell, table_.bytes, at);
        table_.bytes += shared_.RecordAfter(cell, base_);
    }
}

/// Replaces the result by an empty text, which needs no further record, and marks the formula to be
/// calculated whenever the workbook is opened. [MS-XLS] 2.4.127, 2.5.133
void TableWriter::DropResult(std::size_t formula)
{
    constexpr std::uint32_t kEmptyText = 0x00000003;
    constexpr std::uint32_t kNoNumber = 0xFFFF0000;
    constexpr std::uint16_t kAlwaysCalculate = 1;
    const std::size_t data = formula + kRecordHeader;
    PutU32(table_.bytes, data + 6, kEmptyText);
    PutU32(table_.bytes, data + 10, kNoNumber);
    const std::uint16_t flags = ReadU16(table_.bytes, data + 14);
    PutU16(table_.bytes, data + 14, flags | kAlwaysCalculate);
}

void TableWriter::AppendWritten(const Row& row, const SheetCells::Written& cell)
{
    const auto* text = std::get_if<SheetCells::SharedStringIndex>(&cell.value);
    AppendHeader(table_.bytes, text != nullptr ? RecordType::LabelSst : RecordType::Rk,
                 kWrittenCell - kRecordHeader);
    AppendU16(table_.bytes, cell.row);
    AppendU16(table_.bytes, cell.column);
    AppendU16(table_.bytes, text_.FormatOf(row.place, cell.column));
    if (text != nullptr)
        AppendU32(table_.bytes, text->index);
    else // an integer of 30 bits. [MS-XLS] 2.5.217
        AppendU32(table_.bytes,
                  static_cast<std::uint32_t>(std::get<std::int16_t>(cell.value)) << 2 | 2);
}

} // namespace

CellTable MakeCellTable(const SheetText& text, std::string_view base,
                        std::span<const SheetCells::Written> written, bool recalculate)
{
    return TableWriter(text, base, written, recalculate).Make();
}

} // namespace orrery::xls
