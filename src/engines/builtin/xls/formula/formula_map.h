#pragma once

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <string_view>

/// What the formulas in whole records (a sheet's substream, some NAME records) refer to outside
/// their sheet, and how to change these indexes.
namespace orrery::xls {

/// New indexes for what formulas refer to.
struct FormulaMap {
    /// For an index into EXTERNSHEET's list.
    std::function<std::uint16_t(std::uint16_t sheet)> sheet;
    /// For a one-based index of the NAME records.
    std::function<std::uint32_t(std::uint32_t name)> name;
    /// For the name's index if a formula gives it together with `sheet`, the old index into
    /// EXTERNSHEET's list. That index is mapped by `sheet` above, too.
    std::function<std::uint32_t(std::uint16_t sheet, std::uint32_t name)> externName;
};
/// Puts the new indexes into formulas, in place. A formula that cannot be read stays as it is.
/// Throws Error(DamagedWorkbook) if a record runs past the end.
void RemapFormulas(std::string& records, const FormulaMap& map);

/// What the formulas of cells and names depend on.
struct FormulaFacts {
    std::set<std::uint16_t> sheets; ///< indexes into EXTERNSHEET's list
    std::set<std::uint32_t> names;  ///< one-based indexes of the NAME records
    std::set<std::uint16_t>
        externNames; ///< indexes into EXTERNSHEET's list through which names are reached
    /// A volatile function (it may read anything, or changes on its own), or a formula that cannot
    /// be read to its end.
    bool readsElsewhere = false;
    bool hasFormulas = false; ///< at least one cell has a formula
};
/// Throws Error(DamagedWorkbook) if a record runs past the end.
FormulaFacts ReadFacts(std::string_view records);

} // namespace orrery::xls
