#pragma once

#include "engines/builtin/xls/records/globals.h"
#include "engines/builtin/xls/records/records.h"
#include "engines/common/cell_address.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace orrery::xls {

using engines::CellAddress;
using engines::CellRange;

inline constexpr std::int32_t kSheetRows = 65536;
inline constexpr std::int32_t kSheetColumns = 256;
/// The format of cells to which nothing gives one.
inline constexpr std::uint16_t kDefaultFormat = 15;

/// The record of a cell, or of several adjacent ones (MULRK, MULBLANK), with the records that
/// belong to it: a formula's text result, a shared formula, an array, a data table. There may be
/// millions, so it is small. Rows and columns count from 0, as in the file.
struct CellPlace {
    enum Flag : std::uint16_t {
        Formula = 1,
        SharedString = 2, ///< LABELSST
        Multiple = 4,     ///< MULRK, MULBLANK
        Carrier = 8,      ///< a SHRFMLA, ARRAY or TABLE record follows
        Dependent = 16,   ///< the formula belongs to another cell or follows this one: PtgExp
    };
    std::uint32_t begin = 0; ///< offset of the first record
    std::uint32_t end = 0;   ///< after the last one
    std::uint16_t row = 0;
    std::uint16_t first = 0; ///< column
    std::uint16_t last = 0;  ///< column
    std::uint16_t flags = 0;

    bool Has(Flag flag) const { return (flags & flag) != 0; }
    bool Contains(std::uint16_t column) const { return column >= first && column <= last; }
};

/// A row that has a ROW record or cells.
struct RowPlace {
    enum Flag : std::uint16_t {
        Formulas = 1,
        Overlapping = 2, ///< a cell has several records: the last in the file counts
        OneRun = 4,      ///< the records of the cells are contiguous
    };
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;
    std::uint32_t record = kNone; ///< offset of its ROW record, of several the last one
    std::uint32_t firstCell = 0;  ///< index among all cells
    std::uint32_t cellCount = 0;
    std::uint16_t number = 0; ///< from 0
    std::uint16_t flags = 0;

    bool Has(Flag flag) const { return (flags & flag) != 0; }
    bool HasRecord() const { return record != kNone; }
};

/// A SHRFMLA record. The cells that share its formula refer to the cell that it follows.
struct SharedFormulaPlace {
    std::uint32_t begin = 0; ///< offset of the record
    std::uint16_t row = 0;   ///< of the cell that it follows, from 0
    std::uint16_t column = 0;
};

/// Where the rows and cells are in the bytes of a sheet.
struct SheetIndex {
    std::vector<RowPlace> rows; ///< in order, each once
    /// Row by row, by column; overlapping cells in the order of the file.
    std::vector<CellPlace> cells;
    std::vector<Span> runs; ///< contiguous records of the cell table, in the order of the file
    std::vector<std::uint32_t> blocks; ///< offsets of the DBCELL records
    std::vector<SharedFormulaPlace> sharedFormulas;
    std::vector<CellRange> arrays;    ///< data tables too; no cell changes on its own
    std::size_t stringReferences = 0; ///< the number of cells that refer to shared strings
    bool hasFormulas = false;

    /// The row, or nullptr.
    const RowPlace* FindRow(std::int32_t number) const;
    std::span<const CellPlace> CellsOf(const RowPlace& row) const;
    /// The records that may contain the column; few, except in overlapping rows.
    std::span<const CellPlace> CellsAround(const RowPlace& row, std::uint16_t column) const;
    /// The record that counts for a cell, or nullptr.
    const CellPlace* FindCell(const RowPlace& row, std::uint16_t column) const;
    const CellPlace* FindCell(CellAddress address) const;
};

/// Makes the index from the records of a sheet, which it takes in the order of the file.
class SheetIndexReader {
public:
    /// Whether the record belongs to the cell table and so was taken.
    /// Throws Error(DamagedWorkbook) if it is too short for its type.
    bool Take(const Record& record);
    SheetIndex Finish();

private:
    struct RowRecord {
        std::uint16_t number;
        std::uint32_t offset;
    };
    bool TakeFollower(const Record& record);
    void AddShared(const Record& record);
    void AddArray(const CellRange& range);
    void TakeRow(const Record& record);
    void TakeCell(const Record& record, unsigned flags);
    void TakeMultiple(const Record& record, std::size_t size);
    void AddRun(const Record& record);
    void SortCells();
    void AddRow(std::uint16_t number, std::uint32_t record, std::size_t& cell);
    void Mark(RowPlace& row);

    SheetIndex index_;
    std::vector<RowRecord> rowRecords_;
    std::size_t followed_ = static_cast<std::size_t>(-1); // end of the last cell's records
    bool isSorted_ = true;
};

/// The index of the XF record of a cell in that record.
std::uint16_t FormatIn(std::string_view bytes, const CellPlace& place, std::uint16_t column);

} // namespace orrery::xls
