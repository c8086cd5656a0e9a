#pragma once

#include "look/number_format/locale_table.h"

#include <cstdint>
#include <string_view>

namespace orrery::look {

/// Windows' identifiers of languages. [MS-LCID] 2.1: the low ten bits are the language, the others
/// its form in a country.
inline constexpr std::uint16_t kPrimaryLanguage = 0x03FF;
inline constexpr std::uint16_t kJapanese = 0x0011;
inline constexpr std::uint16_t kChineseOfTaiwan = 0x0404;

/// The names of a language; those of another country's form of it, else English.
const LocaleNames& NamesOf(std::uint16_t language);

/// "de-AT", or "de-AT-x-other"; 0 if it is unknown.
std::uint16_t LanguageOfTag(std::string_view tag);

} // namespace orrery::look
