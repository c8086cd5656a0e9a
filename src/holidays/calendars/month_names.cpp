#include "holidays/calendars/month_names.h"

#include <algorithm>
#include <span>

namespace orrery::holidays::calendars {
namespace {

/// A month's name, and its spellings as small letters without anything else, between blanks.
struct NamedMonth {
    MonthNumber month;
    std::string_view name;
    std::string_view spellings;
};

constexpr std::array<NamedMonth, 12> kIslamicMonths = {{
    {{1}, "Muharram", "muharram muharem muharrem"},
    {{2}, "Safar", "safar safer"},
    {{3}, "Rabi al-Awwal", "rabialawwal rabialawal rabiulawwal rabiulawal rabii rabi1 rebiulevvel"},
    {{4},
     "Rabi al-Thani",
     "rabialthani rabiulthani rabiaththani rabialakhir rabiulakhir rabiii rabi2 rebiulahir"},
    {{5},
     "Jumada al-Awwal",
     "jumadaalawwal jumadaalawal jumadalawwal jumadaalula jumadalula jumadiulawwal jumadilawal "
     "jumadai jumada1 cemaziyelevvel"},
    {{6},
     "Jumada al-Thani",
     "jumadaalthani jumadalthani jumadaaththani jumadaalakhira jumadaalakhirah jumadalakhira "
     "jumadalakhirah jumadiulakhir jumadilakhir jumadaii jumada2 cemaziyelahir"},
    {{7}, "Rajab", "rajab recep"},
    {{8}, "Shaban", "shaban shabaan saban"},
    {{9}, "Ramadan", "ramadan ramadhan ramazan"},
    {{10}, "Shawwal", "shawwal shawal syawal sevval"},
    {{11},
     "Dhu al-Qada",
     "dhualqada dhualqadah dhulqada dhulqadah dhulqidah dhualqidah zulkaidah zilkade"},
    {{12},
     "Dhu al-Hijja",
     "dhualhijja dhualhijjah dhulhijja dhulhijjah zulhijja zulhijjah zilhicce"},
}};

constexpr std::array<NamedMonth, 13> kHebrewMonths = {{
    {{1}, "Nisan", "nisan nissan"},
    {{2}, "Iyar", "iyar iyyar"},
    {{3}, "Sivan", "sivan siwan"},
    {{4}, "Tammuz", "tammuz tamuz"},
    {{5}, "Av", "av ab menachemav"},
    {{6}, "Elul", "elul"},
    {{7}, "Tishri", "tishri tishrei"},
    {{8}, "Cheshvan", "cheshvan heshvan marcheshvan marheshvan"},
    {{9}, "Kislev", "kislev chislev"},
    {{10}, "Tevet", "tevet teveth tebeth"},
    {{11}, "Shevat", "shevat shvat shebat"},
    {{12}, "Adar", "adar adarii adar2 adarsheni"},
    {{12, true}, "Adar I", "adari adar1 adarrishon"},
}};

std::span<const NamedMonth> MonthsOf(Calendar calendar)
{
    if (calendar == Calendar::UmmAlQura || calendar == Calendar::IslamicCivil)
        return kIslamicMonths;
    if (calendar == Calendar::Hebrew)
        return kHebrewMonths;
    return {};
}

/// The next letter or digit of a name as a small letter, or 0 at its end.
char NextLetter(std::string_view& name)
{
    while (!name.empty()) {
        const char letter = name.front();
        name.remove_prefix(1);
        if (letter >= 'A' && letter <= 'Z')
            return static_cast<char>(letter - 'A' + 'a');
        const bool between = letter == ' ' || letter == '-' || letter == '\'' || letter == '`';
        if (!between)
            return letter;
    }
    return '\0';
}

bool IsSpelled(std::string_view name, std::string_view spelling)
{
    for (const char letter : spelling)
        if (NextLetter(name) != letter)
            return false;
    return NextLetter(name) == '\0';
}

bool HasSpelling(std::string_view name, std::string_view spellings)
{
    while (!spellings.empty()) {
        const std::size_t length = std::min(spellings.find(' '), spellings.size());
        if (IsSpelled(name, spellings.substr(0, length)))
            return true;
        spellings.remove_prefix(std::min(length + 1, spellings.size()));
    }
    return false;
}

} // namespace

std::optional<MonthNumber> FindMonth(Calendar calendar, std::string_view name)
{
    for (const NamedMonth& one : MonthsOf(calendar))
        if (HasSpelling(name, one.spellings))
            return one.month;
    return std::nullopt;
}

std::string_view MonthName(Calendar calendar, MonthNumber month)
{
    for (const NamedMonth& one : MonthsOf(calendar))
        if (one.month == month)
            return one.name;
    return {};
}

} // namespace orrery::holidays::calendars
