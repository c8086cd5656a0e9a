#pragma once

#include "engines/builtin/common/range_index.h"
#include "engines/builtin/xls/records/globals.h"
#include "engines/builtin/xls/sheet/sheet_index.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xls {

using builtin::RangeIndex;

/// The substream of a sheet, from BOF to EOF, with the places of its rows and cells, and the
/// sheet's properties that concern cells. Read once, never changed; the model and its copies share
/// it.
class SheetText {
public:
    /// Takes any kind of sheet; only worksheets and macro sheets have cells. `offset` is where the
    /// bytes were in the workbook stream. Throws Error(DamagedWorkbook, TooLargeUnpacked).
    explicit SheetText(std::string bytes, std::size_t offset = 0);

    const std::string& Bytes() const { return bytes_; }
    std::size_t Offset() const { return offset_; }
    const SheetIndex& Index() const { return index_; }
    bool HasCells() const { return hasCells_; }
    bool HasFormulas() const { return index_.hasFormulas; }

    /// The index of the XF record of a cell, also of one without a record.
    std::uint16_t FormatOf(CellAddress cell) const;
    /// The same for a cell of that row, which may be nullptr; the column counts from 0.
    std::uint16_t FormatOf(const RowPlace* row, std::uint16_t column) const;
    /// Whether the cell is in a merged area and not its first cell.
    bool IsHiddenByMerge(CellAddress cell) const;
    /// Whether the cell can only be changed together with others, as part of an array formula or a
    /// data table.
    bool IsPartOfArray(CellAddress cell) const { return fixedArrays_.Find(cell) != nullptr; }
    /// Whether the sheet is protected at that cell, so that the cell must not be written if it is
    /// locked.
    bool IsProtected(CellAddress cell) const;

    // Places of records; empty if there is none.
    const Span& IndexRecord() const { return indexRecord_; }
    const Span& Dimensions() const { return dimensions_; }
    const Span& DefaultColumnWidth() const { return defaultColumnWidth_; }
    const Span& DefaultRowHeight() const { return defaultRowHeight_; }
    /// Whether the cell table is divided into blocks by DBCELL and INDEX; not all writers do that.
    bool HasBlocks() const { return !indexRecord_.Empty() || !index_.blocks.empty(); }
    /// Where the cell table is, or where a first one goes.
    std::size_t TablePlace() const;

private:
    struct Ranges; // while they are read
    struct ColumnFormat {
        std::int32_t first;
        std::int32_t last;
        std::uint16_t format;
    };

    void ReadRecords();
    void ReadRecord(const Record& record, Ranges& ranges);
    void ReadColumns(const Record& record);
    std::optional<std::uint16_t> FormatOfRow(const RowPlace& row) const;
    std::uint16_t FormatOfColumn(std::int32_t column) const;

    std::string bytes_;
    std::size_t offset_;
    bool hasCells_ = false;
    SheetIndex index_;
    std::vector<ColumnFormat> columns_; // by first column
    RangeIndex merges_;
    RangeIndex fixedArrays_;
    bool isProtected_ = false;
    RangeIndex editableRanges_; // editable although the sheet is protected
    Span indexRecord_;
    Span dimensions_;
    Span defaultColumnWidth_;
    Span defaultRowHeight_;
    std::size_t settingsEnd_ = 0; // where a first cell table goes
};

} // namespace orrery::xls
