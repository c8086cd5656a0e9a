#pragma once

#include "engines/builtin/common/text_patch.h"

#include <cstddef>
#include <optional>
#include <string_view>

/// The definition of a table ("list") in its record, FEATURE11 or FEATURE12: a header, the table's
/// ranges, the table with its columns. [MS-XLS] 2.4.114, 2.5.266
///
/// `record` is the data of that record.
namespace orrery::xls {

/// In the record: the table's size in bytes; 0 if that is the rest of the record.
inline constexpr std::size_t kTableSizeField = 21;
inline constexpr std::size_t kTableId = 4;    ///< in the table
inline constexpr std::size_t kTableName = 64; ///< in the table

/// The offset of the table in its record, which may lie behind the record's end; nothing if the
/// record is too short to tell.
std::optional<std::size_t> TablePlace(std::string_view record);

/// How a table is mapped to elements of the workbook's XML maps.
enum class XmlMapping {
    None,
    Cell, ///< it is nothing but a single cell that is mapped
    Columns
};
/// If the record is too short to tell a cell from columns, these are columns.
XmlMapping XmlMappingOf(std::string_view record);

/// The replacements that make a table with mapped columns a plain one; a plain one stays plain.
/// The data of the record's continuations are joined to `record`. The columns' names in the XML
/// source become their numbers, as in tables without a source; their titles stay. Throws
/// Error(DamagedWorkbook) if the record does not end where its last column does.
builtin::TextPatch RemoveXmlMapping(std::string_view record);

} // namespace orrery::xls
