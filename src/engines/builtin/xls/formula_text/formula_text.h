#pragma once

#include "book/cell_address.h"
#include "engines/builtin/xls/formula_text/formula_names.h"

#include <optional>
#include <string>
#include <string_view>

namespace orrery::xls {

/// Where a formula stands.
struct FormulaContext {
    const FormulaNames& names;
    /// The cell whose formula it is. Shared formulas are told as this cell has them; those of
    /// conditional formats as the upper left cell around all their ranges has them. Names count
    /// from A1.
    book::CellAddress cell{1, 1};
};

/// A parsed expression in the notation of .xlsx files: A1 references, English names of functions,
/// commas, no "=", no blanks between tokens. Parentheses are those of the file. `extra` are the
/// bytes behind the tokens ("rgcb"), which hold array constants.
///
/// Nothing if it cannot be told: damaged tokens, links that are not there, labels of rows and
/// columns, a text over 32 KiB, and the tokens PtgExp and PtgTbl, which only say where the formula
/// is (the caller resolves them). Never throws. [MS-XLS] 2.2.2
std::optional<std::string> FormulaText(std::string_view tokens, std::string_view extra,
                                       const FormulaContext& context);

} // namespace orrery::xls
