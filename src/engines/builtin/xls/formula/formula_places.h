#pragma once

#include "engines/builtin/xls/records/records.h"

#include <cstddef>
#include <functional>
#include <string_view>

namespace orrery::xls {

/// A parsed expression ("rgce") in a sequence of records.
struct FormulaPlace {
    RecordType record{};   ///< the kind of record that holds it
    std::size_t begin = 0; ///< offset in the records
    std::size_t size = 0;  ///< bytes
};

/// Calls `visit` with every expression in whole records (a sheet's or a chart's substream, some
/// NAME records): those of cells, names, conditional formats, validations, charts and controls. The
/// formulas that a table keeps for new cells of its columns are left out. False if a record lacks
/// an expression that it announces; those before the first missing one are visited.
/// Throws Error(DamagedWorkbook) if a record runs past the end.
bool ForEachFormula(std::string_view records,
                    const std::function<void(const FormulaPlace&)>& visit);

} // namespace orrery::xls
