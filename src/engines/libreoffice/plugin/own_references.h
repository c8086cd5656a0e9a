#pragma once

#include <com/sun/star/sheet/XSpreadsheet.hpp>

namespace orrery::libreoffice {

// When a sheet is copied in Excel, its references to itself by name become references to the copy.
// In LibreOffice, with content from Excel's files, they still name the model. Call both functions
// inside Office::Call.

/// Prepares the formulas of a sheet that is to be copied.
void UpdateFormulas(
    const com::sun::star::uno::Reference<com::sun::star::sheet::XSpreadsheet>& model);

/// Updates the charts of a copy. Call it after the copy is made and before it is renamed.
void UpdateCharts(const rtl::OUString& model,
                  const com::sun::star::uno::Reference<com::sun::star::sheet::XSpreadsheet>& copy);

/// A sheet's name as written before a cell, "'It''s May'.".
rtl::OUString SheetPrefix(const rtl::OUString& sheetName);

/// A formula or ranges in LibreOffice's syntax, "$'It''s May'.$B$2", with `prefix` in place of that
/// sheet's name and the "$" before it. Texts in a formula and sheets of other files stay.
rtl::OUString ReplaceSheet(const rtl::OUString& sheetName, const rtl::OUString& prefix,
                           const rtl::OUString& text);

} // namespace orrery::libreoffice
