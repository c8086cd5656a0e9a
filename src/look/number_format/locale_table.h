#pragma once

#include "util/fixed_text.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace orrery::look {

/// Where the texts of a language begin.
struct LocaleEntry {
    std::uint16_t language;  ///< Windows' language identifier
    util::FixedText<10> tag; ///< "en-US"
    std::uint16_t begin;     ///< in `LocaleTexts()`
};

/// Rising by language.
std::span<const LocaleEntry> Locales();

/// The lines of every language, one behind the other; each ends with a line feed. The first is the
/// system's long date as a number format code, the second its long time; then come the halves of
/// the day, the days from Sunday on, their short forms, the months, their short forms, and the
/// months as they stand behind the number of a day.
std::string_view LocaleTexts();

} // namespace orrery::look
