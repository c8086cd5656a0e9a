#pragma once

#include "book/look/page_setup.h"
#include "book/look/workbook_view.h"
#include "engines/builtin/xlsx/look/cells/left_out_list.h"
#include "engines/builtin/xml/scanner.h"

#include <cstddef>
#include <vector>

namespace orrery::xlsx {

/// Reads an element of a sheet that tells how it is printed to its end; false for other elements,
/// which are not read. ECMA-376 18.3.1
bool ReadPageElement(xml::Scanner& scanner, book::PageSetup& page);

/// The attributes of <pageSetUpPr>.
void ReadPageProperties(const xml::Scanner& scanner, book::PageSetup& page);

/// Sets what the names of the workbook tell of a sheet: print areas and titles.
void ApplyPrintNames(const std::vector<book::DefinedName>& names, std::size_t sheet,
                     book::PageSetup& page, LeftOutList& leftOut);

} // namespace orrery::xlsx
