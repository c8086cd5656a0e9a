#include "exchange/ics/plugin/birth_year.h"

#include "exchange/ics/plugin/clock_time.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <string>
#include <string_view>

namespace orrery::exchange {
namespace {

constexpr int kFirstBirthYear = 1700;
constexpr std::size_t kYearDigits = 4;

std::string InCapitals(const char* text)
{
    std::string capitals = text == nullptr ? "" : text;
    std::transform(capitals.begin(), capitals.end(), capitals.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return capitals;
}

/// The value of a property that is no standard one, in capitals; empty if there is none.
std::string ExtraValue(icalcomponent* event, std::string_view name)
{
    std::string value;
    ForEachProperty(event, ICAL_X_PROPERTY, [&](icalproperty* property) {
        if (InCapitals(icalproperty_get_x_name(property)) == name)
            value = InCapitals(icalproperty_get_x(property));
    });
    return value;
}

/// The year with which a text begins ("1985", "1985-03-02"), or 0.
int YearAtBegin(const std::string& text)
{
    const bool hasDigits = text.size() >= kYearDigits &&
                           std::all_of(text.begin(), text.begin() + kYearDigits,
                                       [](unsigned char c) { return std::isdigit(c) != 0; });
    const int year = hasDigits ? std::atoi(text.substr(0, kYearDigits).c_str()) : 0;
    return year >= kFirstBirthYear && year <= kLastYear ? year : 0;
}

bool IsBirthday(icalcomponent* event)
{
    bool isBirthday = false;
    ForEachProperty(event, ICAL_CATEGORIES_PROPERTY, [&](icalproperty* property) {
        const std::string category = InCapitals(icalproperty_get_categories(property));
        isBirthday = isBirthday || category == "BIRTHDAY" || category == "BIRTHDAYS";
    });
    return isBirthday;
}

/// Whether the name ends with the year in brackets: "Ann (1985)", "Ann (*1985)".
bool NamesYear(icalcomponent* event, int year)
{
    const char* const summary = icalcomponent_get_summary(event);
    const std::string_view name = summary == nullptr ? "" : summary;
    const std::string number = std::to_string(year) + ')';
    return name.ends_with('(' + number) || name.ends_with("(*" + number);
}

} // namespace

int BirthYearOf(icalcomponent* event, const icaltimetype& start)
{
    if (ExtraValue(event, "X-NEXTCLOUD-BC-FIELD-TYPE") == "BDAY")
        return ExtraValue(event, "X-NEXTCLOUD-BC-UNKNOWN-YEAR") == "1"
                   ? 0
                   : YearAtBegin(ExtraValue(event, "X-NEXTCLOUD-BC-YEAR"));
    if (YearAtBegin(ExtraValue(event, "X-APPLE-OMIT-YEAR")) == start.year ||
        start.year < kFirstBirthYear)
        return 0;
    if (ExtraValue(event, "X-KDE-KABC-BIRTHDAY") == "YES")
        return start.year;
    for (const char* const name : {"X-BDAY", "X-BIRTHDAY"}) {
        if (const int year = YearAtBegin(ExtraValue(event, name)))
            return year;
    }
    return IsBirthday(event) && NamesYear(event, start.year) ? start.year : 0;
}

} // namespace orrery::exchange
