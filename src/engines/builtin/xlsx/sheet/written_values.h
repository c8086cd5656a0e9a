#pragma once

#include "engines/builtin/xlsx/formula/cell_address.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <variant>

namespace orrery::xlsx {

/// A text of the workbook's shared texts.
struct SharedText {
    std::size_t index;
};

/// What is written into a cell.
using WrittenValue = std::variant<std::int16_t, SharedText>;
using WrittenValues = std::map<CellAddress, WrittenValue>;

/// The formula as it reads with the current names.
using FormulaChange = std::function<std::string(std::string formula)>;

} // namespace orrery::xlsx
