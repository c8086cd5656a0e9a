#pragma once

#include "exchange/table/table_layout.h"
#include "exchange/table/table_text.h"

#include <string>
#include <vector>

namespace orrery::exchange {

/// What was found in a table. All of it can be changed before the table is read.
struct FoundTable {
    TableLayout layout;
    /// In which orders the dates can be read: more than one if they give different dates, the
    /// layout then has the first.
    std::vector<DateOrder> orders;
    std::vector<std::string> columns; ///< their headers, or "Column 2"
    std::vector<std::string> ignored; ///< columns that are neither date nor name
};

/// Finds out by its content how a table is laid out. Throws Error(NoDates) if there are none beside
/// a name; the subject is the name of the file.
FoundTable FindTable(const TableText& text, const std::string& name);

} // namespace orrery::exchange
