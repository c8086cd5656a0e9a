#pragma once

#include "engines/builtin/xlsx/formula/column_names.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace orrery::xlsx {

/// What became of a table of the template.
struct TableChange {
    std::string name; ///< now, as formulas write it
    /// The columns with other names than in the template, from 0.
    std::map<std::size_t, std::string> headers;
    /// The same by what the template's formulas call them, in the form of `FoldCase`.
    std::map<std::string, std::string> columns;
    /// The columns whose cell in the totals row was written, from 0: the text, or empty where it
    /// received a number.
    std::map<std::size_t, std::string> totals;

    bool Empty() const { return headers.empty() && totals.empty(); }
    /// The current name of the column that a formula calls `column`, as `ColumnLookup` wants it.
    const std::string* FindColumn(std::string_view column) const;
};

/// What the tables that formulas name, and their columns, are called now. Names are found without
/// regard to case. Copies are cheap.
class TableNames {
public:
    /// `templateName` is what the template's formulas call the table.
    void Set(std::string_view templateName, TableChange change);
    /// The same as seen from a formula that belongs to that table, where "[Day]" without a name
    /// before it means a column of the table.
    TableNames Inside(std::string_view templateName) const;

    /// The current name of the table that a formula calls `name`; nothing where it stays as it is.
    std::optional<std::string> NameOf(std::string_view name) const;
    /// What became of the table that a formula calls `name`; nullptr where nothing did. It lives as
    /// long as these names.
    const TableChange* Find(std::string_view name) const;
    /// The same of the table that the formula belongs to.
    const TableChange* Own() const { return own_.empty() ? nullptr : Find(own_); }

private:
    using Tables = std::map<std::string, TableChange>; // by folded names
    std::shared_ptr<Tables> tables_; // shared by copies of these names; none where it is empty
    std::string own_;
};

} // namespace orrery::xlsx
