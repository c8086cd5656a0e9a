#include "model/parameter_text.h"

#include "holidays/key_line.h"
#include "model/parameter_table.h"
#include "util/numbers.h"
#include "util/text.h"

#include <utility>

namespace orrery::model {

namespace {

/// Index of the list with the value's names, which is added if it is new.
template <std::size_t NamesPerList>
std::int16_t SelectList(std::string_view value, NameLists<NamesPerList>& table)
{
    auto names = SplitNames<NamesPerList>(value);
    if (!names)
        return 0;
    const std::int16_t found = table.Find(*names);
    return found >= 0 ? found : table.Add(*std::move(names));
}

/// Sets the parameter that a line names, if the value is valid.
class LineReader {
public:
    LineReader(const holidays::KeyLine& line, NameTables& names) : line_(line), names_(names) {}

    template <typename Parameter, typename Field>
    void operator()(const Parameter& parameter, Field& field)
    {
        if (!util::EqualIgnoringCase(parameter.key, line_.key))
            return;
        isParameter_ = true;
        Read(parameter, field);
    }
    /// Whether one of the parameters has the line's key.
    bool IsParameter() const { return isParameter_; }

private:
    void Read(const FlagParameter& /*flag*/, bool& field) const
    {
        field = util::EqualIgnoringCase(line_.value, "Y");
    }
    void Read(const SheetNameParameter& /*name*/, std::string& field) const { field = line_.value; }
    /// Kept on purpose: only Monday is ever set, a 0 in the file keeps the default.
    void Read(const FirstDayParameter& /*day*/, std::int16_t& field) const
    {
        if (util::EqualIgnoringCase(line_.value, "MONDAY") || util::ReadNumber(line_.value) == 1.0)
            field = 1;
    }
    template <typename Field> void Read(const NumberParameter& range, Field& field) const
    {
        const auto number = util::ReadNumber(line_.value);
        if (number && *number >= range.low && *number <= range.high)
            field = static_cast<Field>(util::RoundTo32(*number));
    }
    void Read(const CellParameter& /*cell*/, CellPosition& field) const
    {
        if (const auto cell = ReadCell(line_.value))
            field = *cell;
    }
    void Read(const WeekdayNamesParameter& /*list*/, std::int16_t& field)
    {
        field = SelectList(line_.value, names_.Weekdays);
    }
    void Read(const MonthNamesParameter& /*list*/, std::int16_t& field)
    {
        field = SelectList(line_.value, names_.Months);
    }

    const holidays::KeyLine& line_;
    NameTables& names_;
    bool isParameter_ = false;
};

/// If the list is full the rule is not even parsed.
void AppendHoliday(std::string_view value, holidays::HolidayList& list)
{
    if (list.IsFull())
        return;
    if (auto rule = holidays::ParseHolidayLine(value))
        list.Append(*std::move(rule));
}

template <typename Set> void ApplyLine(const holidays::KeyLine& line, NameTables& names, Set& set)
{
    LineReader reader(line, names);
    VisitParameters(set, reader);
    if (!reader.IsParameter() && holidays::IsHolidayKey(line.key))
        AppendHoliday(line.value, set.Holidays);
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
            ApplyLine(*entry, names, sets.Yearly);
    }
}

} // namespace orrery::model
