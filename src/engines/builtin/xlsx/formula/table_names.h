#pragma once

#include "engines/builtin/xlsx/formula/column_names.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace orrery::xlsx {

/// A table of the template and what has changed in it.
struct TableChange {
    std::string name; ///< the current one, as formulas write it
    /// The current names of renamed columns, by position from 0.
    std::map<std::size_t, std::string> headers;
    /// The same by the names that the template's formulas use, in the form of `FoldCase`.
    std::map<std::string, std::string> columns;
    /// The columns whose cell in the totals row was written, by position from 0: the text, or empty
    /// if it received a number.
    std::map<std::size_t, std::string> totals;

    bool Empty() const { return headers.empty() && totals.empty(); }
    /// The current name of the column that a formula calls `column`, as `ColumnLookup` wants it.
    const std::string* FindColumn(std::string_view column) const;
};

/// The current names of the tables that formulas refer to, and of their columns. Other names of the
/// workbook that a copy has under names of its own count as tables without columns. Names are found
/// without regard to case. Copies are cheap.
class TableNames {
public:
    /// `templateName` is the name in the template's formulas.
    void Set(std::string_view templateName, TableChange change);
    /// The same as seen from a formula of that table, where "[Day]" without a name before it means
    /// a column of the table.
    TableNames Inside(std::string_view templateName) const;

    /// The current name of the table that a formula calls `name`; nothing if it stays as it is.
    std::optional<std::string> NameOf(std::string_view name) const;
    /// The changes of the table that a formula calls `name`; nullptr if there are none. Lives as
    /// long as these names.
    const TableChange* Find(std::string_view name) const;
    /// The same for the table that the formula belongs to.
    const TableChange* Own() const { return own_.empty() ? nullptr : Find(own_); }

private:
    using Tables = std::map<std::string, TableChange>; // by folded names
    std::shared_ptr<Tables> tables_;                   // by folded name
    std::string own_;
};

} // namespace orrery::xlsx
