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

/// A place in a part where sheets or tables are named.
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

/// Every place of an XML part where formulas or sheet names stand, found by one pass; only those
/// that name something (contain "!" or "[" or are bare names) are listed. Knows worksheets, chart
/// sheets, charts, drawings, tables, pivot caches, control properties, connections, slicers and
/// extension lists, and goes by element and attribute names alone. What leads into another file
/// (r:id beside the name) is left out. Throws Error as `xml::Scanner` does.
std::vector<ReferenceSite> FindReferences(std::string_view xml, std::string_view partName);

/// The same for a VML drawing, which programs write as they like and which may not be well-formed:
/// the formulas of its controls ("x:FmlaLink", "x:FmlaRange" ...) are searched as text.
std::vector<ReferenceSite> FindVmlReferences(std::string_view vml);

/// The replacements that the new names make at these places.
TextPatch RenameReferences(std::string_view xml, const std::vector<ReferenceSite>& sites,
                           const SheetNames& sheets, const TableNames& tables);

/// A place in the workbook ("Sheet1!A1", "#'My Sheet'!B2", decoded) with the sheet's new name;
/// nothing where it does not change. Sheets whose apostrophes were forgotten ("My Sheet!A1") are
/// known too.
std::optional<std::string> RenameInLocation(std::string_view location, const SheetNames& sheets);

} // namespace orrery::xlsx
