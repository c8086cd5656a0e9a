#pragma once

#include <cstdint>

namespace orrery::book {

/// What a workbook counts its days from. ECMA-376 18.17.4.1
enum class DateSystem : std::uint8_t {
    From1900, ///< 1 is 1900-01-01, and 60 is a 29th of February that there never was
    From1904  ///< 0 is 1904-01-01
};

} // namespace orrery::book
