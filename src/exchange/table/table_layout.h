#pragma once

#include "exchange/table/date_text.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace orrery::exchange {

/// Where a table has its dates and names. Columns are counted from 0.
struct TableLayout {
    char separator = ','; ///< `kNoSeparator`: each line has a date and a name
    bool hasHeader = false;
    DateReading dates;
    std::size_t dateColumn = 0;
    std::size_t nameColumn = 1;
    std::optional<std::size_t> endColumn; ///< the last day of an event
    friend bool operator==(const TableLayout&, const TableLayout&) = default;
};

/// A date order as the command line spells it: "dmy", "mdy", "ymd".
std::string_view WordOf(DateOrder order);
std::optional<DateOrder> FindDateOrder(std::string_view word);

/// "day, month, year".
std::string_view InWords(DateOrder order);

/// "comma", "semicolon", "tab", "bar", "none".
std::string_view WordOfSeparator(char separator);

} // namespace orrery::exchange
