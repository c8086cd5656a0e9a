#pragma once

#include <com/sun/star/sheet/XSpreadsheet.hpp>

namespace orrery::libreoffice {

// What names its own sheet names, on a copy of the sheet, the copy: so it is in Excel. In
// LibreOffice, what comes from Excel's files goes on naming the model. Both are to be called inside
// Office::Call.

/// Makes formulas follow. To be called before the sheet is copied.
void LetFormulasFollow(
    const com::sun::star::uno::Reference<com::sun::star::sheet::XSpreadsheet>& model);

/// Makes charts follow. To be called after the copy was made and before it gets another name.
void LetChartsFollow(
    const rtl::OUString& model,
    const com::sun::star::uno::Reference<com::sun::star::sheet::XSpreadsheet>& copy);

/// A sheet's name as it stands before a cell, "'It''s May'.".
rtl::OUString SheetPrefix(const rtl::OUString& sheetName);

/// A formula or ranges in LibreOffice's spelling, "$'It''s May'.$B$2", with `prefix` for the name
/// of that sheet with the `$` before it. Texts inside a formula, and sheets of other files, stay.
rtl::OUString ReplaceSheet(const rtl::OUString& sheetName, const rtl::OUString& prefix,
                           const rtl::OUString& text);

} // namespace orrery::libreoffice
