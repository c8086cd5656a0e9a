#pragma once

#include "exchange/table/row_reader.h"
#include "exchange/table/table_layout.h"
#include "exchange/table/table_text.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace orrery::exchange {

/// What a row says of an event; texts in UTF-8, as they stand there.
struct TableEntry {
    std::size_t line = 0; ///< counted from 1
    std::string date;
    std::string end; ///< empty if the table has no column for it
    std::string name;
    bool isBroken = false; ///< a quote is not closed
};

/// Reads the rows of a table that are not empty, without its header.
class EntryReader {
public:
    /// Both must outlive the reader.
    EntryReader(const TableText& text, const TableLayout& layout);

    /// False at the end.
    bool Next(TableEntry& entry);
    /// Passes a row over and gives its line; false at the end.
    bool Skip(std::size_t& line);

private:
    bool NextRow();
    std::string TextOf(std::size_t column) const;

    const TableText& text_;
    const TableLayout& layout_;
    RowReader rows_;
    RawRow row_;
    bool isFirst_ = true;
};

/// A field's text in UTF-8.
std::string TextOf(const TableText& text, const RawField& field);

/// Splits a line such as "1 May 2027: Labour Day" or "Labour Day, 1 May 2027". Where it has no
/// date, the whole line is the name.
TableEntry SplitLine(std::string_view line);

} // namespace orrery::exchange
