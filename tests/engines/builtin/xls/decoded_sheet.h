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
struct DecodedCell {
    std::uint16_t type = 0; ///< of the record
    std::uint16_t format = 0;
    std::string value;      ///< of a formula its stored result, text results included
    std::string flags;      ///< of a formula
    std::string expression; ///< of a formula; of a shared one with the shared expression
    friend bool operator==(const DecodedCell&, const DecodedCell&) = default;
};
void PrintTo(const DecodedCell& cell, std::ostream* out);

/// A sheet, read without the engine's code.
struct DecodedSheet {
    using Address = std::pair<int, int>;  ///< row and column from 0
    std::map<Address, DecodedCell> cells; ///< the last record of a cell
    std::map<int, std::string> rows;      ///< data of the ROW records
    std::vector<std::string>
        others;             ///< records outside the cell table, except those that describe it
    std::string dimensions; ///< data
    /// What a reader relies on and does not find: order, blocks, offsets, extents, shared formulas.
    std::vector<std::string> faults;
    std::size_t stringReferences = 0; ///< records that refer to them
};

/// `offset` is where the sheet is in its stream.
DecodedSheet DecodeSheet(std::string_view sheet, std::size_t offset);

} // namespace orrery::xls::test
