#pragma once

#include "util/fixed_text.h"

#include <cstdint>

namespace orrery::xls {

/// A function that formulas call by its number. [MS-XLS] 2.5.198.17
struct BuiltInFunction {
    std::uint16_t number = 0;
    util::FixedText<20> name; ///< in English, as in .xlsx files
    std::uint8_t fewest = 0;
    std::uint8_t most = 0; ///< arguments
};

/// The number that calls of other functions have; their first argument is the function's name.
inline constexpr std::uint16_t kUserDefinedFunction = 255;

/// Nothing if no built-in function has the number.
const BuiltInFunction* FindFunction(std::uint16_t number);

} // namespace orrery::xls
