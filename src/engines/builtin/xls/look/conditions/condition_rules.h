#pragma once

#include "book/look/conditional_format.h"
#include "engines/builtin/xls/look/conditions/condition_visuals.h"
#include "engines/builtin/xls/look/records/byte_cursor.h"
#include "engines/builtin/xls/look/styles/cell_formats.h"

#include <optional>
#include <string_view>

namespace orrery::xls {

/// A rule of a CF record; the priority is not set. Rules of old versions stop where they hold.
/// Throws Error(DamagedWorkbook) if it is cut off or its formulas cannot be read. [MS-XLS] 2.4.42
book::ConditionalRule ReadRule(std::string_view data, const ConditionContext& context,
                               const CellFormats& formats);

/// A rule of a CF12 record. Throws as `ReadRule`. [MS-XLS] 2.4.43
book::ConditionalRule ReadRule12(std::string_view data, const ConditionContext& context,
                                 const CellFormats& formats);

/// Changes a rule by what a CFEX record says of it, behind the rule's index: how it was made, its
/// priority, its format. Throws as `ReadRule`. [MS-XLS] 2.5.27 (CFExNonCF12)
void ExtendRule(book::ConditionalRule& rule, ByteCursor cursor, const CellFormats& formats);

} // namespace orrery::xls
