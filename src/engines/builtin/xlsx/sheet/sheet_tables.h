#pragma once

#include "book/spreadsheet.h"
#include "engines/builtin/common/text_patch.h"
#include "engines/builtin/xlsx/formula/cell_address.h"
#include "engines/builtin/xlsx/formula/table_names.h"
#include "engines/builtin/xlsx/package/package.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

using builtin::TextPatch;

/// A table of the template.
struct Table {
    std::string name; ///< as formulas use it
    CellRange range;  ///< header and totals rows included
    bool hasHeader = true;
    bool hasTotals = false;
    std::vector<std::string> columns; ///< their names, decoded, from left to right
};

/// The tables of a sheet and what was written into their header and totals rows. A copied sheet
/// copies both; the template's tables are shared.
class SheetTables {
public:
    explicit SheetTables(std::vector<Table> tables);
    /// Reads the tables of the sheet `part`; a part that describes no table is ignored. Throws
    /// Error as `Package` and `xml::Scanner` do.
    static SheetTables Read(const Package& package, const std::string& part);

    /// Renames the column of a header cell and returns the new name, which is the text that the
    /// cell has to show. As in Excel it is always a text, cut to 255 UTF-16 units, unique in the
    /// table without regard to case ("Sun", "Sun2", "Sun3"), and "Column1" or the next free one if
    /// the value is empty. Nothing if the cell is not a header cell.
    std::optional<std::string> WriteHeader(CellAddress cell, const book::CellValue& value);
    /// Records a value written into a totals row, where it replaces the table's function or label.
    void WriteTotal(CellAddress cell, const book::CellValue& value);

    /// Whether a part of these tables has to change.
    bool HasChanges() const;
    /// The table around a cell; nullptr if there is none.
    const Table* Around(CellAddress cell) const;
    /// The changes of the tables that have any.
    std::vector<TableChange> Changes() const;
    /// The changes of the table that the template calls `name`, under that name.
    TableChange ChangeOf(std::string_view name) const;

private:
    struct Written {
        TableChange change;
        std::multiset<std::string> taken; // folded names of the columns; filled by the first header
    };
    std::optional<std::size_t> Find(CellAddress cell) const;
    void Rename(const Table& table, Written& written, std::size_t column, const std::string& name);

    std::shared_ptr<const std::vector<Table>> tables_;
    std::vector<Written> written_; // one for each table
};

/// The replacements in a table part that give it the current column names and the current labels of
/// its totals row; formulas are not changed.
TextPatch PatchTable(std::string_view xml, std::string_view partName, const TableChange& change);
/// The name that formulas use for the table of such a part; empty if it is not a table.
std::string TableNameOf(std::string_view xml, std::string_view partName);
/// Whether the content type is that of a table part.
bool IsTable(std::string_view type);

} // namespace orrery::xlsx
