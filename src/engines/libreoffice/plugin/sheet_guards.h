#pragma once

#include "engines/common/cell_address.h"

#include <com/sun/star/frame/XModel2.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/table/XCell.hpp>

#include <vector>

namespace orrery::libreoffice {

/// What has to be known of a sheet before a cell may be written. It is asked for once: a run does
/// not change it, and a copy has what its model has. All is to be called inside Office::Call.
class SheetGuards {
public:
    using Document = com::sun::star::uno::Reference<com::sun::star::frame::XModel2>;
    using Sheet = com::sun::star::uno::Reference<com::sun::star::sheet::XSpreadsheet>;
    using Cell = com::sun::star::uno::Reference<com::sun::star::table::XCell>;

    /// `whole` is all that a sheet of the file's format has.
    SheetGuards(const Document& document, const Sheet& sheet, const engines::CellRange& whole);

    /// Throws Error (CellLocked, PartOfArray).
    void CheckChangeable(const Sheet& sheet, const Cell& cell, engines::CellAddress address) const;
    /// Whether another cell lies over this one because both are merged. Such a cell takes no value,
    /// as in Excel.
    bool IsCovered(engines::CellAddress address) const;
    /// Whether the cell names a column of a table. Such a name is always a text, as in Excel.
    bool NamesColumn(engines::CellAddress address) const;

private:
    bool isProtected_;
    std::vector<engines::CellRange> formulas_;
    std::vector<engines::CellRange> tableHeaders_;
    std::vector<engines::CellRange> merged_;
};

} // namespace orrery::libreoffice
