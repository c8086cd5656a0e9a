#pragma once

#include "engines/builtin/xls/formula_text/formula_names.h"
#include "engines/builtin/xls/look/chart/drawing_styles.h"

#include <cstddef>
#include <string_view>

namespace orrery::xls {

/// What drawings and charts are read from. All of it outlives what reads it.
struct DrawingSource {
    std::string_view stream; ///< of the workbook
    const FormulaNames& names;
    const DrawingStyles& styles;
};

/// How much more the charts of a sheet may hold.
struct ChartBudget {
    std::size_t values = 200000; ///< cached ones, and series
};

} // namespace orrery::xls
