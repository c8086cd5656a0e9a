#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace orrery::look {

/// Windows' identifiers of languages. [MS-LCID] 2.1: the low ten bits are the language, the others
/// its form in a country.
inline constexpr std::uint16_t kPrimaryLanguage = 0x03FF;
inline constexpr std::uint16_t kJapanese = 0x0011;
inline constexpr std::uint16_t kChineseOfTaiwan = 0x0404;

/// How a language writes dates. The texts are views of a table.
class LocaleNames {
public:
    /// `lines` as `LocaleTexts()` has them, from those of the language on.
    explicit LocaleNames(std::string_view lines) : lines_(lines) {}

    std::string_view LongDate() const; ///< the system's, as a number format code
    std::string_view LongTime() const; ///< the system's, as a number format code
    std::string_view HalfOfDay(std::size_t half) const;
    std::string_view Day(std::size_t weekday) const; ///< 0 is Sunday
    std::string_view ShortDay(std::size_t weekday) const;
    std::string_view Month(std::size_t month) const; ///< 0 is January
    std::string_view ShortMonth(std::size_t month) const;
    std::string_view MonthOfDate(std::size_t month) const; ///< as behind the number of a day

private:
    std::string_view Line(std::size_t number) const;

    std::string_view lines_;
};

/// The names of a language; those of another country's form of it, else English.
LocaleNames NamesOf(std::uint16_t language);

/// "de-AT", or "de-AT-x-other"; 0 if it is unknown.
std::uint16_t LanguageOfTag(std::string_view tag);

} // namespace orrery::look
