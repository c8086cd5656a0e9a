#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrery::xls::test {

/// A cell as any reader of the format sees it. Records of several cells count as several records.
struct SeenCell {
    std::uint16_t type = 0; ///< of the record
    std::uint16_t format = 0;
    std::string value;      ///< of a formula its stored result, with the text
    std::string flags;      ///< of a formula
    std::string expression; ///< of a formula; a shared one's with what it shares
    friend bool operator==(const SeenCell&, const SeenCell&) = default;
};
void PrintTo(const SeenCell& cell, std::ostream* out);

/// A sheet read by code that knows nothing of the engine's.
struct SeenSheet {
    using Address = std::pair<int, int>; ///< row and column from 0
    std::map<Address, SeenCell> cells;   ///< the last record of a cell
    std::map<int, std::string> rows;     ///< data of the ROW records
    std::vector<std::string> others;     ///< records outside the cell table, but what speaks of it
    std::string dimensions;              ///< data
    /// What a reader relies on and does not find: order, blocks, places, extents, shared formulas.
    std::vector<std::string> faults;
    std::size_t sharedTexts = 0; ///< records that refer to them
};

/// `offset` is where the sheet stands in its stream.
SeenSheet SeeSheet(std::string_view sheet, std::size_t offset);

} // namespace orrery::xls::test
