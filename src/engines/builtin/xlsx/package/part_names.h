#pragma once

#include <string>
#include <string_view>

namespace orrery::xlsx {

/// The form that all names of a part share: a leading "/", "/" for "\", lower case (ASCII),
/// percent-escapes decoded (except those of slashes). [ECMA-376-2] 6.2.2.3
std::string PartKey(std::string_view name);

/// The absolute part name ("/xl/media/image1.png") of a relationship's target, seen from a part (""
/// for the package): percent-escapes stay, "." and ".." are resolved, "\" counts as "/".
/// A place in the workbook ("#Sheet1!A1") gives a name that no part has.
std::string ResolveTarget(std::string_view fromPart, std::string_view target);
/// The relationships part of a part: "/xl/workbook.xml" -> "/xl/_rels/workbook.xml.rels".
std::string RelationshipsPartName(std::string_view part);
/// A target for `toPart` as seen from `fromPart`, relative if they share a folder.
std::string RelativeTarget(std::string_view fromPart, std::string_view toPart);

/// Whether a namespace URI is SpreadsheetML's main namespace, transitional or strict.
bool IsMainNamespace(std::string_view uri);

} // namespace orrery::xlsx
