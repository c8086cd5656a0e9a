#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace orrery::xlsx {

/// A table column's name as a table part writes it: escaped like all texts of the file, with line
/// feeds and tabs as well ("Room_x000a_area"), because an attribute cannot hold them.
std::string EncodeColumnName(std::string_view name);
/// The name that such an attribute's decoded value stands for.
std::string DecodeColumnName(std::string_view value);

/// The current name of the column that a formula calls `name`; nullptr if it stays as it is.
using ColumnLookup = std::function<const std::string*(std::string_view name)>;

/// The brackets of a structured reference with the names of columns replaced; nothing if none
/// changes. `brackets` includes the outer brackets.
///
///     brackets = "[" ["@"] [ "#" keyword | name | list ] "]"
///     list     = "[" ("#" keyword | name) "]" {("," | ":") "[" ("#" keyword | name) "]"}
///     name     = {any but ' [ ] # @ | "'" any}
///
/// So "[Day]", "[@Day]" and "[[#This Row],[Day]:[Work]]" name columns, "[#All]" names none.
std::optional<std::string> RenameInBrackets(std::string_view brackets, const ColumnLookup& columns);

} // namespace orrery::xlsx
