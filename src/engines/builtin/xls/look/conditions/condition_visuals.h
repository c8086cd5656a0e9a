#pragma once

#include "book/look/conditional_format.h"
#include "engines/builtin/xls/formula_text/formula_text.h"
#include "engines/builtin/xls/look/records/byte_cursor.h"
#include "engines/builtin/xls/look/styles/look_colors.h"

namespace orrery::xls {

/// What the formulas and colours of a conditional format are read with.
struct ConditionContext {
    FormulaContext formulas;
    const LookColors& colors;
};

// These read what a rule draws besides its format, at the end of a CF12 record. They throw
// Error(DamagedWorkbook) if it is cut off.

/// Two or three points with their colours. [MS-XLS] 2.5.31 (CFGradient)
std::vector<book::ScalePoint> ReadColorScale(ByteCursor cursor, const ConditionContext& context);
/// [MS-XLS] 2.5.22 (CFDatabar)
book::DataBar ReadDataBar(ByteCursor cursor, const ConditionContext& context);
/// [MS-XLS] 2.5.36 (CFMultistate)
book::IconSet ReadIconSet(ByteCursor cursor, const ConditionContext& context);

} // namespace orrery::xls
