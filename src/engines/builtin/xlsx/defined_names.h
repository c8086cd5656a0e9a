#pragma once

#include "engines/builtin/common/text_patch.h"
#include "engines/builtin/xlsx/formula/formula.h"
#include "engines/builtin/xlsx/saved_sheet.h"
#include "engines/builtin/xml/scanner.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

using builtin::TextPatch;

/// A defined name as the workbook part lists it.
struct NameEntry {
    std::string Name;
    std::optional<std::size_t> LocalSheet; ///< index, from 0, of the sheet whose own name it is; an
                                           ///< index that no sheet has if it is not a number
    std::string Formula;                   ///< decoded
    bool IsMacro = false;  ///< it names a function or procedure, whatever its formula says
    std::size_t begin = 0; ///< of the <definedName> element
    std::size_t end = 0;
    std::size_t formulaBegin = 0; ///< of the undecoded formula
    std::size_t formulaEnd = 0;
};

/// Reads a <definedName> from its StartTag past its EndTag.
NameEntry ReadDefinedName(xml::Scanner& scanner);

/// The current names of the sheets and tables.
struct NameScopes {
    const SheetNames& Workbook; ///< as seen from the workbook
    const TableNames& WorkbookTables;
    /// As seen from the sheet at a position.
    const std::function<SheetNames(std::size_t)>& SheetsFor;
    const std::function<TableNames(std::size_t)>& TablesFor;
};

/// The replacements in the defined names for the sheets as they are saved. The names of a sheet are
/// repeated for its copies. A name of the workbook is repeated on every copy from which its formula
/// reads differently, because it refers to the copy's model; but not if the model has a name of its
/// own that is the same, and not for macros. Names of chart data and of slicers' caches are the
/// workbook's: those that a copy uses get twins with the names that `TablesFor` gives them.
TextPatch PatchDefinedNames(std::string_view xml, const std::vector<NameEntry>& names,
                            const std::vector<SavedSheet>& sheets, const NameScopes& scopes);

} // namespace orrery::xlsx
