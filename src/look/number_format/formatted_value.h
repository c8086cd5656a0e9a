#pragma once

#include "book/look/color.h"

#include <cstddef>
#include <optional>
#include <string>

namespace orrery::look {

/// A value as its number format shows it.
struct FormattedValue {
    std::string text;
    std::optional<book::Color> color;  ///< of "[Red]" or "[Color 12]"
    std::optional<std::size_t> fillAt; ///< offset in `text` at which `fillCharacter` is repeated
    std::string fillCharacter;         ///< one character
    /// A date before or after the calendar, or a number that no section is for: "#" fills the cell.
    bool isTooWide = false;
    bool isGeneral = false; ///< `text` is the number alone: `FormatGeneral` gives a shorter one
    friend bool operator==(const FormattedValue&, const FormattedValue&) = default;
};

} // namespace orrery::look
