#pragma once

#include "engines/builtin/common/text_patch.h"
#include "engines/builtin/xlsx/formula/references.h"
#include "engines/builtin/xlsx/package/package.h"

#include <string>
#include <string_view>
#include <vector>

/// Where the parts of a package refer to sheets and tables, and how they are renamed.
namespace orrery::xlsx {

using builtin::TextPatch;

/// Whether the relationships contain links into the workbook ("#Sheet1!A1").
bool HasInnerLinks(const Relationships& relationships);
/// The relationships with such links renamed; unchanged if no name changes.
Relationships RenameInnerLinks(Relationships relationships, const SheetNames& names);

/// Whether parts of this content type are text that may refer to sheets.
bool MayReferToSheets(std::string_view type);
/// Whether the content type is that of VML, which need not be well-formed XML.
bool IsVml(std::string_view type);
/// The text of such a part, and the places where it refers to sheets.
PartText ReadText(const Package& package, std::string_view part);
std::vector<ReferenceSite> FindReferencesIn(const Package& package, const std::string& part);
/// The replacements in a part that the current names require, the columns of a table included.
TextPatch RenameInPart(std::string_view text, const std::string& part, std::string_view type,
                       const std::vector<ReferenceSite>& sites, const SheetNames& sheets,
                       const TableNames& tables);

} // namespace orrery::xlsx
