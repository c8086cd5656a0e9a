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
/// The format of cells for which nothing gives one.
inline constexpr std::uint16_t kDefaultFormat = 15;

/// The record of a cell, or of several beside each other (MULRK, MULBLANK), with the records that
/// belong to it: the result of a formula that is a text, a shared formula, an array, a data table.
/// There may be millions, so it is kept small. Rows and columns count from 0, as in the file.
struct CellPlace {
    enum Flag : std::uint16_t {
        Formula = 1,
        SharedText = 2, ///< LABELSST
        Several = 4,    ///< MULRK, MULBLANK
        Carrier = 8,    ///< a SHRFMLA, ARRAY or TABLE record follows
        Dependent = 16, ///< the formula stands at another cell (or behind this one): PtgExp
    };
    std::uint32_t begin = 0; ///< offset of the first record
    std::uint32_t end = 0;   ///< behind the last one
    std::uint16_t row = 0;
    std::uint16_t first = 0; ///< column
    std::uint16_t last = 0;  ///< column
    std::uint16_t flags = 0;

    bool Has(Flag flag) const { return (flags & flag) != 0; }
    bool Holds(std::uint16_t column) const { return column >= first && column <= last; }
};

/// A row that has a ROW record or cells.
struct RowPlace {
    enum Flag : std::uint16_t {
        Formulas = 1,
        Overlapping = 2, ///< a cell has more than one record: the last in the file counts
        OneRun = 4,      ///< the cells lie one behind the other
    };
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;
    std::uint32_t record = kNone; ///< offset of its ROW record, the last one of several
    std::uint32_t firstCell = 0;  ///< index among all cells
    std::uint32_t cellCount = 0;
    std::uint16_t number = 0; ///< from 0
    std::uint16_t flags = 0;

    bool Has(Flag flag) const { return (flags & flag) != 0; }
    bool HasRecord() const { return record != kNone; }
};

/// A SHRFMLA record. The cells that have its formula name the cell that it follows.
struct SharedFormulaPlace {
    std::uint32_t begin = 0; ///< offset of the record
    std::uint16_t row = 0;   ///< of the cell that it follows, from 0
    std::uint16_t column = 0;
};

/// Where rows and cells stand in the bytes of a sheet.
struct SheetIndex {
    std::vector<RowPlace> rows; ///< in order, each once
    /// Row by row, in the order of their columns; where cells overlap, in that of the file.
    std::vector<CellPlace> cells;
    std::vector<Span> runs; ///< of the records of the cell table, in the order of the file
    std::vector<std::uint32_t> blocks; ///< offsets of the DBCELL records
    std::vector<SharedFormulaPlace> sharedFormulas;
    std::vector<CellRange> arrays; ///< that change only as a whole, data tables too
    std::size_t sharedTexts = 0;   ///< cells that refer to shared texts
    bool hasFormulas = false;

    /// The row, or nullptr.
    const RowPlace* FindRow(std::int32_t number) const;
    std::span<const CellPlace> CellsOf(const RowPlace& row) const;
    /// The records that may hold the column, few but in overlapping rows.
    std::span<const CellPlace> CellsAround(const RowPlace& row, std::uint16_t column) const;
    /// The record that counts for a cell, or nullptr.
    const CellPlace* FindCell(const RowPlace& row, std::uint16_t column) const;
    const CellPlace* FindCell(CellAddress address) const;
};

/// Takes the records of a sheet in the order of the file and makes its index.
class SheetIndexReader {
public:
    /// Whether the record belongs to the cell table and was taken.
    /// Throws Error(DamagedWorkbook) where it is too short for what it is.
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
    void TakeSeveral(const Record& record, std::size_t size);
    void AddRun(const Record& record);
    void SortCells();
    void AddRow(std::uint16_t number, std::uint32_t record, std::size_t& cell);
    void Mark(RowPlace& row);

    SheetIndex index_;
    std::vector<RowRecord> rowRecords_;
    std::size_t followed_ = static_cast<std::size_t>(-1); // where a record belongs to the last cell
    bool isSorted_ = true;
};

/// The index of the XF record of a cell that the record holds.
std::uint16_t FormatIn(std::string_view bytes, const CellPlace& place, std::uint16_t column);

} // namespace orrery::xls
