#include "model/parameter_text.h"

#include "holidays/key_line.h"
#include "util/numbers.h"
#include "util/text.h"

#include <array>
#include <span>
#include <type_traits>
#include <utility>

namespace orrery::model {

namespace {

using Common = CalendarParameters;

/// What a key does with its value, which is never empty.
template <typename Set> using Action = void (*)(std::string_view value, NameTables&, Set&);

template <bool Common::*Field> void SetFlag(std::string_view value, NameTables&, Common& set)
{
    set.*Field = util::EqualIgnoringCase(value, "Y");
}

template <CellPosition Common::*Field>
void SetCell(std::string_view value, NameTables&, Common& set)
{
    if (const auto cell = ReadCell(value))
        set.*Field = *cell;
}

/// Takes a number that lies in [Low:High] as it is written; it is rounded after that.
template <auto Field, int Low, int High, typename Set>
void SetNumber(std::string_view value, NameTables&, Set& set)
{
    const auto number = util::ReadNumber(value);
    if (number && *number >= Low && *number <= High)
        set.*Field = static_cast<std::decay_t<decltype(set.*Field)>>(util::RoundTo32(*number));
}

void SetSheetName(std::string_view value, NameTables&, Common& set)
{
    set.SheetName = value;
}

/// Only Monday is ever set: a written 0 keeps the default.
void SetFirstDayOfWeek(std::string_view value, NameTables&, Common& set)
{
    if (util::EqualIgnoringCase(value, "MONDAY") || util::ReadNumber(value) == 1.0)
        set.FirstDayOfWeek = 1;
}

/// Index of the list with the names of the value, which becomes a new list when there is none.
template <std::size_t NamesPerList>
std::int16_t SelectList(std::string_view value, NameLists<NamesPerList>& table)
{
    auto names = SplitNames<NamesPerList>(value);
    if (!names)
        return 0;
    const std::int16_t found = table.Find(*names);
    return found >= 0 ? found : table.Add(*std::move(names));
}

void SetWeekdayName(std::string_view value, NameTables& names, Common& set)
{
    set.WeekdayName = SelectList(value, names.Weekdays);
}

void SetMonthName(std::string_view value, NameTables& names, Common& set)
{
    set.MonthName = SelectList(value, names.Months);
}

template <typename Set> struct Key {
    std::string_view name; ///< upper case
    Action<Set> action;
};

constexpr auto kCommonKeys = std::to_array<Key<Common>>({
    {"OUTPUT", SetFlag<&Common::Output>},
    {"SHEETNAME", SetSheetName},
    {"FIRSTDAYOFWEEK", SetFirstDayOfWeek},
    {"FIRSTCELLOFDAY", SetCell<&Common::FirstCellOfDay>},
    {"COLINTERVALOFDAY", SetNumber<&Common::ColIntervalOfDay, 1, 36>},
    {"ROWINTERVALOFDAY", SetNumber<&Common::RowIntervalOfDay, 1, 10000>},
    {"OUTWEEKDAY", SetFlag<&Common::OutWeekday>},
    {"FIRSTCELLOFWEEKDAY", SetCell<&Common::FirstCellOfWeekday>},
    {"WEEKDAYNAME", SetWeekdayName},
    {"OUTMONTH", SetFlag<&Common::OutMonth>},
    {"FIRSTCELLOFMONTH", SetCell<&Common::FirstCellOfMonth>},
    {"MONTHNAME", SetMonthName},
    {"OUTYEAR", SetFlag<&Common::OutYear>},
    {"FIRSTCELLOFYEAR", SetCell<&Common::FirstCellOfYear>},
    {"OUTHOLIDAY", SetFlag<&Common::OutHoliday>},
    {"FIRSTCELLOFHOLIDAY", SetCell<&Common::FirstCellOfHoliday>},
    {"MULTIHOLIDAYS", SetNumber<&Common::MultiHolidays, 0, 2>},
});

constexpr auto kYearlyKeys = std::to_array<Key<YearlyParameters>>({
    {"MONTHLAYOUT", SetNumber<&YearlyParameters::MonthLayout, 1, 12>},
    {"COLINTERVALOFMONTH", SetNumber<&YearlyParameters::ColIntervalOfMonth, 1, 256>},
    {"ROWINTERVALOFMONTH", SetNumber<&YearlyParameters::RowIntervalOfMonth, 1, 10000>},
});

/// False when the table has no such key.
template <typename Set>
bool ApplyKey(std::span<const Key<Set>> keys, const holidays::KeyLine& line, NameTables& names,
              Set& set)
{
    for (const Key<Set>& key : keys) {
        if (key.name == line.key) {
            key.action(line.value, names, set);
            return true;
        }
    }
    return false;
}

/// A full list passes rules over without reading them.
void AppendHoliday(std::string_view value, holidays::HolidayList& list)
{
    if (list.IsFull())
        return;
    if (auto rule = holidays::ParseHolidayLine(value))
        list.Append(*std::move(rule));
}

void ApplyLine(const holidays::KeyLine& line, NameTables& names, Common& set)
{
    if (!ApplyKey<Common>(kCommonKeys, line, names, set) && holidays::IsHolidayKey(line.key))
        AppendHoliday(line.value, set.Holidays);
}

void ApplyYearlyLine(const holidays::KeyLine& line, NameTables& names, YearlyParameters& set)
{
    if (!ApplyKey<YearlyParameters>(kYearlyKeys, line, names, set))
        ApplyLine(line, names, set);
}

enum class Section { None, Monthly, Yearly };

Section SectionOf(std::string_view header)
{
    if (header == holidays::kMonthlySection)
        return Section::Monthly;
    return header == holidays::kYearlySection ? Section::Yearly : Section::None;
}

} // namespace

void ApplyParameterText(std::string_view text, NameTables& names, ParameterSets& sets)
{
    Section section = Section::None;
    for (const std::string_view whole : util::SplitLines(text)) {
        const std::string_view line = util::Trim(whole);
        if (line.starts_with('[')) {
            section = SectionOf(line);
            continue;
        }
        if (section == Section::None)
            continue;
        const auto entry = holidays::ReadKeyLine(line);
        if (entry && section == Section::Monthly)
            ApplyLine(*entry, names, sets.Monthly);
        if (entry && section == Section::Yearly)
            ApplyYearlyLine(*entry, names, sets.Yearly);
    }
}

} // namespace orrery::model
