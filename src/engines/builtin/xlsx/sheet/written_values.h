#pragma once

#include "engines/builtin/xlsx/formula/cell_address.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <variant>

namespace orrery::xlsx {

/// A text of a cell, as an index into the workbook's shared strings.
struct SharedStringIndex {
    std::size_t index;
};

using WrittenValue = std::variant<std::int16_t, SharedStringIndex>;
using WrittenValues = std::map<CellAddress, WrittenValue>;

/// The formula with the current names.
using FormulaChange = std::function<std::string(std::string formula)>;

} // namespace orrery::xlsx
