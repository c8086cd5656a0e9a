#include "look/number_format/locale_names.h"

#include "look/number_format/locale_table.h"
#include "util/text.h"

#include <algorithm>

namespace orrery::look {
namespace {

constexpr std::uint16_t kEnglish = 0x0409;

// The lines of a language, in the order of `LocaleTexts()`.
constexpr std::size_t kLongDate = 0;
constexpr std::size_t kLongTime = 1;
constexpr std::size_t kHalves = 2;
constexpr std::size_t kDays = 4;
constexpr std::size_t kShortDays = 11;
constexpr std::size_t kMonths = 18;
constexpr std::size_t kShortMonths = 30;
constexpr std::size_t kMonthsOfDate = 42;

const LocaleEntry* FindLanguage(std::uint16_t language)
{
    const auto locales = Locales();
    const auto found = std::lower_bound(
        locales.begin(), locales.end(), language,
        [](const LocaleEntry& entry, std::uint16_t wanted) { return entry.language < wanted; });
    return found != locales.end() && found->language == language ? &*found : nullptr;
}

const LocaleEntry* FindPrimaryLanguage(std::uint16_t language)
{
    const auto locales = Locales();
    const auto found = std::find_if(locales.begin(), locales.end(), [=](const LocaleEntry& entry) {
        return (entry.language & kPrimaryLanguage) == (language & kPrimaryLanguage);
    });
    return found != locales.end() ? &*found : nullptr;
}

/// The first language whose tag begins like that.
std::uint16_t FindTag(std::string_view tag)
{
    for (const auto& entry : Locales()) {
        if (util::EqualIgnoringCase(std::string_view(entry.tag).substr(0, tag.size()), tag)) {
            return entry.language;
        }
    }
    return 0;
}

} // namespace

std::string_view LocaleNames::LongDate() const
{
    return Line(kLongDate);
}

std::string_view LocaleNames::LongTime() const
{
    return Line(kLongTime);
}

std::string_view LocaleNames::HalfOfDay(std::size_t half) const
{
    return Line(kHalves + half);
}

std::string_view LocaleNames::Day(std::size_t weekday) const
{
    return Line(kDays + weekday);
}

std::string_view LocaleNames::ShortDay(std::size_t weekday) const
{
    return Line(kShortDays + weekday);
}

std::string_view LocaleNames::Month(std::size_t month) const
{
    return Line(kMonths + month);
}

std::string_view LocaleNames::ShortMonth(std::size_t month) const
{
    return Line(kShortMonths + month);
}

std::string_view LocaleNames::MonthOfDate(std::size_t month) const
{
    return Line(kMonthsOfDate + month);
}

std::string_view LocaleNames::Line(std::size_t number) const
{
    std::string_view rest = lines_;
    for (; number > 0; --number)
        rest.remove_prefix(rest.find('\n') + 1);
    return rest.substr(0, rest.find('\n'));
}

LocaleNames NamesOf(std::uint16_t language)
{
    const auto* entry = FindLanguage(language);
    if (!entry)
        entry = FindPrimaryLanguage(language);
    if (!entry)
        entry = FindLanguage(kEnglish);
    return LocaleNames(LocaleTexts().substr(entry->begin));
}

std::uint16_t LanguageOfTag(std::string_view tag)
{
    constexpr std::size_t kLongestTag = 85; // of Windows
    tag = tag.substr(0, std::min(tag.find(','), kLongestTag));
    while (tag.size() >= 2) {
        if (const auto language = FindTag(tag)) {
            return language;
        }
        const auto dash = tag.rfind('-');
        tag = tag.substr(0, dash == std::string_view::npos ? 0 : dash);
    }
    return 0;
}

} // namespace orrery::look
