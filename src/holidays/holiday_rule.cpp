#include "holidays/holiday_rule.h"

#include "holidays/date.h"
#include "util/numbers.h"
#include "util/text.h"

#include <cstdlib>
#include <utility>

namespace orrery::holidays {

namespace {

/// The three fields of a rule line; later commas stay in the name.
struct Fields {
    std::string_view date;
    std::string kind; ///< upper case
    std::string_view name;
};

std::optional<Fields> SplitFields(std::string_view line)
{
    const std::size_t first = line.find(',');
    if (first == std::string_view::npos)
        return std::nullopt;
    const std::size_t second = line.find(',', first + 1);
    if (second == std::string_view::npos)
        return std::nullopt;
    return Fields{util::Trim(line.substr(0, first)),
                  util::ToUpperAscii(util::Trim(line.substr(first + 1, second - first - 1))),
                  line.substr(second + 1)};
}

struct Word {
    std::string_view brief;
    std::string_view full;
    std::int16_t value;
};

template <std::size_t Count>
std::optional<std::int16_t> FindWord(const std::array<Word, Count>& words, std::string_view text)
{
    for (const Word& word : words) {
        if (text == word.brief || text == word.full)
            return word.value;
    }
    return std::nullopt;
}

constexpr std::array<Word, 8> kKinds = {{{"SUN", "SUNDAY", 1},
                                         {"MON", "MONDAY", 2},
                                         {"TUE", "TUESDAY", 3},
                                         {"WED", "WEDNESDAY", 4},
                                         {"THU", "THURSDAY", 5},
                                         {"FRI", "FRIDAY", 6},
                                         {"SAT", "SATURDAY", 7},
                                         {"", "DAY", kFixedDay}}};
constexpr std::string_view kEasterWord = "EASTER";
constexpr std::array<Word, 5> kEasterDays = {{{"FRI", "FRIDAY", -2},
                                              {"SAT", "SATURDAY", -1},
                                              {"SUN", "SUNDAY", 0},
                                              {"MON", "MONDAY", 1},
                                              {"TUE", "TUESDAY", 2}}};

/// Days from Easter Sunday, taken from the weekday after the word EASTER, else from the date field.
std::int16_t EasterOffset(const Fields& fields)
{
    const std::string_view rest = std::string_view(fields.kind).substr(kEasterWord.size());
    if (const auto offset = FindWord(kEasterDays, util::Trim(rest)))
        return *offset;
    return util::RoundTo16(util::ReadNumber(fields.date).value_or(0));
}

/// The date code of a fixed date or a weekday of a month, or nothing if the date field has none.
std::optional<std::int16_t> MonthAndDayCode(const Fields& fields, std::int16_t kind)
{
    const auto number = util::ReadNumber(fields.date);
    if (!number)
        return std::nullopt;
    const std::int32_t code = util::RoundTo32(*number);
    // Rounded, not truncated: 1250 passes as month 12 and 1251 fails as month 13.
    const std::int32_t month = util::RoundTo32(code / 100.0);
    const std::int32_t day = code % 100;
    if (month < 0 || month > 12)
        return std::nullopt;
    // Month 0 throws here, which ends the reading of a file.
    if (kind == kFixedDay && day > TableDaysInMonth(static_cast<std::int16_t>(month)))
        return std::nullopt;
    if (day < 0)
        return std::nullopt;
    return util::RoundTo16(code);
}

} // namespace

std::string FormatDateCode(const HolidayDef& rule)
{
    if (rule.Kind >= kEaster)
        return std::to_string(rule.DateCode);
    constexpr std::size_t minDigits = 4;
    std::string digits = std::to_string(std::abs(int{rule.DateCode}));
    if (digits.size() < minDigits)
        digits.insert(0, minDigits - digits.size(), '0');
    return rule.DateCode < 0 ? '-' + digits : digits;
}

void HolidayList::Append(HolidayDef rule)
{
    if (!IsFull())
        rules_.push_back(std::move(rule));
}

std::optional<HolidayDef> ParseHolidayLine(std::string_view line)
{
    const auto fields = SplitFields(line);
    if (!fields)
        return std::nullopt;
    const std::string name(fields->name);
    if (const auto kind = FindWord(kKinds, fields->kind)) {
        const auto code = MonthAndDayCode(*fields, *kind);
        return code ? std::optional(HolidayDef{*code, *kind, name}) : std::nullopt;
    }
    if (fields->kind.starts_with(kEasterWord))
        return HolidayDef{EasterOffset(*fields), kEaster, name};
    return std::nullopt;
}

} // namespace orrery::holidays
