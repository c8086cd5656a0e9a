#pragma once

#include "engines/builtin/common/text_patch.h"
#include "engines/builtin/xlsx/formula/formula.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

using builtin::TextPatch;

/// A place in a part that refers to sheets or tables.
struct ReferenceSite {
    enum class Kind {
        FormulaText,      ///< element content is a formula (f, formula1, xm:f, c:f, ...)
        FormulaAttribute, ///< attribute value is a formula (textlink, fmlaLink, ...)
        Location,   ///< attribute value is a place in the workbook ("Sheet1!A1", also "#Sheet1!A1")
        SheetName,  ///< attribute value is a bare sheet name (worksheetSource sheet="...")
        TableName,  ///< attribute value is a bare table name
        PivotTable, ///< element content is a pivot table of a sheet ("[Book1.xlsx]Sheet1!Sales")
    };
    Kind kind = Kind::FormulaText;
    std::size_t begin = 0; ///< of the undecoded value in the part's text
    std::size_t end = 0;
};

/// Every place of an XML part that contains a formula or a sheet name, found in one pass; only
/// those that refer to something (contain "!" or "[", are bare names or a chart's) are listed.
/// Knows worksheets, chart sheets, charts, drawings, tables, pivot caches, control properties,
/// connections, slicers and extension lists, by element and attribute names alone. References to
/// another file (r:id beside the name) are left out. Throws Error as `xml::Scanner` does.
std::vector<ReferenceSite> FindReferences(std::string_view xml, std::string_view partName);

/// The same for a VML drawing, which need not be well-formed: the formulas of its controls
/// ("x:FmlaLink", "x:FmlaRange" ...) are searched as text.
std::vector<ReferenceSite> FindVmlReferences(std::string_view vml);

/// The replacements that the new names require at these places.
TextPatch RenameReferences(std::string_view xml, const std::vector<ReferenceSite>& sites,
                           const SheetNames& sheets, const TableNames& tables);

/// A place in the workbook ("Sheet1!A1", "#'My Sheet'!B2", decoded) with the sheet's new name;
/// nothing if it does not change. Sheet names without the apostrophes that they need ("My
/// Sheet!A1") are recognised, too.
std::optional<std::string> RenameInLocation(std::string_view location, const SheetNames& sheets);

} // namespace orrery::xlsx
