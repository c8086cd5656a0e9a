#pragma once

#include "engines/common/cell_address.h"

#include <com/sun/star/frame/XModel2.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/table/XCell.hpp>

#include <vector>

namespace orrery::libreoffice {

/// What must be known of a sheet before a cell may be written. It is read once: a run does not
/// change it, and a copy shares its model's. Call everything inside Office::Call.
class SheetGuards {
public:
    using Document = com::sun::star::uno::Reference<com::sun::star::frame::XModel2>;
    using Sheet = com::sun::star::uno::Reference<com::sun::star::sheet::XSpreadsheet>;
    using Cell = com::sun::star::uno::Reference<com::sun::star::table::XCell>;

    /// `whole` are all cells that a sheet has in the file's format.
    SheetGuards(const Document& document, const Sheet& sheet, const engines::CellRange& whole);

    /// Throws Error (CellLocked, PartOfArray).
    void CheckChangeable(const Sheet& sheet, const Cell& cell, engines::CellAddress address) const;
    /// Whether the cell is in a merged area and not its first cell. Such a cell takes no value, as
    /// in Excel.
    bool IsHiddenByMerge(engines::CellAddress address) const;
    /// Whether the cell names a column of a table. Such a name is always a text, as in Excel.
    bool IsTableHeader(engines::CellAddress address) const;

private:
    bool isProtected_;
    std::vector<engines::CellRange> formulas_;
    std::vector<engines::CellRange> tableHeaders_;
    std::vector<engines::CellRange> merged_;
};

} // namespace orrery::libreoffice
