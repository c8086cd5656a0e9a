#include "holidays/holiday_rule.h"

#include "holidays/date.h"
#include "holidays/error.h"
#include "util/numbers.h"
#include "util/text.h"

#include <cstdlib>
#include <optional>
#include <utility>

namespace orrery::holidays {

namespace {

using RuleOrError = std::variant<HolidayDef, util::Error>;

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
/// Throws OverflowError.
std::int16_t EasterOffset(const Fields& fields)
{
    const std::string_view rest = std::string_view(fields.kind).substr(kEasterWord.size());
    if (const auto offset = FindWord(kEasterDays, util::Trim(rest)))
        return *offset;
    return util::RoundTo16(util::ReadNumber(fields.date).value_or(0));
}

/// A rule of a fixed date or of a weekday of a month. Throws OverflowError.
RuleOrError DateRule(const Fields& fields, std::int16_t kind)
{
    const auto fail = [&](ErrorKind error) { return util::Error(error, std::string(fields.date)); };
    const auto number = util::ReadNumber(fields.date);
    if (!number)
        return fail(ErrorKind::RuleDateNotNumeric);
    const std::int32_t code = util::RoundTo32(*number);
    // Rounded, not truncated: 1250 passes as month 12 and 1251 fails as month 13.
    const std::int32_t month = util::RoundTo32(code / 100.0);
    const std::int32_t day = code % 100;
    if (month < 0 || month > 12)
        return fail(ErrorKind::NoSuchRuleDate);
    if (kind == kFixedDay && month == 0)
        return fail(ErrorKind::RuleWithoutMonth);
    if (kind == kFixedDay && day > TableDaysInMonth(static_cast<std::int16_t>(month)))
        return fail(ErrorKind::NoSuchRuleDate);
    if (day < 0)
        return fail(ErrorKind::NoSuchRuleDate);
    return HolidayDef{util::RoundTo16(code), kind, std::string(fields.name)};
}

/// Throws OverflowError for a number that does not fit.
RuleOrError RuleOf(const Fields& fields)
{
    if (const auto kind = FindWord(kKinds, fields.kind))
        return DateRule(fields, *kind);
    if (fields.kind.starts_with(kEasterWord))
        return HolidayDef{EasterOffset(fields), kEaster, std::string(fields.name)};
    return util::Error(ErrorKind::UnknownRuleKind, fields.kind);
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

void HolidayList::AppendExtra(std::string text)
{
    if (HasRoomForExtra())
        extras_.push_back({Count(), std::move(text)});
}

void HolidayList::Clear()
{
    rules_.clear();
    extras_.clear();
}

std::string LineOf(const ListEntry& entry)
{
    const auto* const rule = std::get_if<HolidayDef>(&entry);
    if (rule == nullptr)
        return std::get<std::string>(entry);
    const std::string_view kind =
        rule->Kind == kFixedDay ? "DAY" : kKindWords.at(static_cast<std::size_t>(rule->Kind));
    return FormatDateCode(*rule) + ',' + util::ToUpperAscii(kind) + ',' + rule->Name;
}

std::vector<ListEntry> EntriesOf(const HolidayList& list)
{
    std::vector<ListEntry> entries;
    auto extra = list.Extras().begin();
    for (std::int16_t rule = 0; rule <= list.Count(); ++rule) {
        for (; extra != list.Extras().end() && extra->place == rule; ++extra)
            entries.emplace_back(extra->text);
        if (rule < list.Count())
            entries.emplace_back(list[static_cast<std::size_t>(rule)]);
    }
    return entries;
}

void AppendEntries(const std::vector<ListEntry>& entries, HolidayList& list)
{
    for (const ListEntry& entry : entries) {
        if (const auto* const rule = std::get_if<HolidayDef>(&entry))
            list.Append(*rule);
        else
            list.AppendExtra(std::get<std::string>(entry));
    }
}

std::variant<HolidayDef, util::Error> ParseHolidayLine(std::string_view line)
{
    const auto fields = SplitFields(line);
    if (!fields)
        return util::Error(ErrorKind::RuleWithoutFields, std::string(line));
    try {
        return RuleOf(*fields);
    }
    catch (const util::OverflowError&) {
        return util::Error(ErrorKind::RuleNumberTooLarge, std::string(fields->date));
    }
}

} // namespace orrery::holidays
