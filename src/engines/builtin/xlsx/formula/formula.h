#pragma once

#include "engines/builtin/xlsx/formula/table_names.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace orrery::xlsx {

/// The current names of the sheets that formulas refer to.
class SheetNames {
public:
    /// The current name of the sheet that a formula calls `name` (decoded, without quotes); nothing
    /// if it stays as it is.
    using Lookup = std::function<std::optional<std::string>(std::string_view name)>;

    SheetNames() = default;
    /// Implicit, so that a lambda will do; the ends of ranges are looked up like single sheets.
    template <typename OneLookup>
    requires std::is_invocable_r_v<std::optional<std::string>, OneLookup, std::string_view>
    SheetNames(OneLookup lookup) : single_(std::move(lookup)), rangeEnd_(single_)
    {
    }
    SheetNames(Lookup single, Lookup rangeEnd)
        : single_(std::move(single)), rangeEnd_(std::move(rangeEnd))
    {
    }

    explicit operator bool() const { return static_cast<bool>(single_); }
    std::optional<std::string> operator()(std::string_view name) const { return single_(name); }
    const Lookup& Single() const { return single_; }
    /// The same for either end of a range of sheets, which is a place in the order of sheets: a
    /// copy's formula still names the model there, as in Excel.
    const Lookup& RangeEnds() const { return rangeEnd_; }

private:
    Lookup single_;
    Lookup rangeEnd_;
};

/// A name as a formula writes it: in apostrophes, with apostrophes inside doubled, if the grammar
/// needs them (blanks and signs, a leading digit, a text that reads as a cell, "R", "C" or a truth
/// value).
std::string QuoteSheetName(std::string_view name);

/// Whether a name of the workbook holds data of a chart of the 2016 kind ("_xlchart.v1.3"). Excel
/// makes these names, and such a chart refers to cells by them alone.
bool IsChartData(std::string_view name);

/// The formula with the names of sheets (before "!", both ends of a range of sheets), of tables
/// (before "[" or alone) and of their columns (in the brackets) replaced; nothing if no name
/// changes. Texts in quotes and references to other workbooks ("[1]Sheet1!A1") stay as they are.
/// There is no "=" before the formula. `formula` is decoded text.
std::optional<std::string> RenameInFormula(std::string_view formula, const SheetNames& sheets,
                                           const TableNames& tables);

/// The formula as it reads `rows` further down and `columns` further right: relative parts of its
/// A1 references move and wrap at the edges of the sheet; absolute parts stay. This is how the
/// cells of a shared formula differ. Names, functions, texts and structured references stay.
std::string MoveFormula(std::string_view formula, int rows, int columns);

/// What a formula depends on, beside its own sheet.
struct FormulaFacts {
    /// Sheets of this workbook, decoded, as written.
    std::set<std::string, std::less<>> sheets;
    /// A name, a table, a range of sheets, or a volatile function: one that may read anything
    /// (INDIRECT, OFFSET) or changes on its own (TODAY).
    bool readsElsewhere = false;
};
/// Adds the facts of a formula. Other workbooks do not count: no calendar changes them.
void CollectFacts(std::string_view formula, FormulaFacts& facts);

} // namespace orrery::xlsx
