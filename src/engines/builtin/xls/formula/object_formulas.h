#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

/// The formulas of drawing objects: macros, linked cells, ranges of lists, linked pictures.
namespace orrery::xls {

using ObjectFormulaVisitor = std::function<void(std::size_t begin, std::size_t size)>;

/// Calls `visit` with the place of every parsed expression in the data of an OBJ record.
/// Throws Error(DamagedWorkbook) if the data ends within one; those before it are visited.
void ForEachObjectFormula(std::string_view data, const ObjectFormulaVisitor& visit);
/// The same for the data of a TXO record.
void ForEachTextFormula(std::string_view data, const ObjectFormulaVisitor& visit);

} // namespace orrery::xls
