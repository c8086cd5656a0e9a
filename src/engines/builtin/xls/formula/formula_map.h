#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>

/// What the formulas in whole records (a sheet's substream, some NAME records) name outside their
/// sheet, and how to give it other numbers.
namespace orrery::xls {

/// New numbers for what formulas name.
struct FormulaMap {
    /// For an index of EXTERNSHEET's list.
    std::function<std::uint16_t(std::uint16_t sheet)> sheet;
    /// For a one-based index of the NAME records.
    std::function<std::uint32_t(std::uint32_t name)> name;
    /// For the name's index where a formula names it together with `sheet`, the index as it was in
    /// EXTERNSHEET's list. `sheet` above is asked for that index as well.
    std::function<std::uint32_t(std::uint16_t sheet, std::uint32_t name)> externName;
};
/// Gives formulas the new numbers, in place. What cannot be read stays as it is. Throws
/// Error(DamagedWorkbook) where a record runs past the end.
void RemapFormulas(std::string& records, const FormulaMap& map);

/// What the formulas of cells and names depend on.
struct FormulaFacts {
    std::set<std::uint16_t> sheets;      ///< indexes of EXTERNSHEET's list
    std::set<std::uint32_t> names;       ///< one-based indexes of the NAME records
    std::set<std::uint16_t> externNames; ///< indexes of EXTERNSHEET's list that names come from
    /// A function that may read anything or that changes by itself, or a formula that cannot be
    /// read to its end.
    bool readsElsewhere = false;
    bool hasFormulas = false; ///< some cell has one
};
/// Throws Error(DamagedWorkbook) where a record runs past the end.
FormulaFacts ReadFacts(std::string_view records);

} // namespace orrery::xls
