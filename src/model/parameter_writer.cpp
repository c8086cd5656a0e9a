#include "model/parameter_text.h"

#include "holidays/key_line.h"

#include <algorithm>
#include <array>

namespace orrery::model {

namespace {

/// Appends lines to the text of a parameter file.
class Writer {
public:
    void Line(std::string_view text) { (text_ += text) += "\r\n"; }
    void Text(std::string_view key, std::string_view value)
    {
        ((text_ += key) += '=') += value;
        text_ += "\r\n";
    }
    void Flag(std::string_view key, bool value) { Text(key, value ? "Y" : "N"); }
    void Number(std::string_view key, std::int32_t value) { Text(key, std::to_string(value)); }
    void Cell(std::string_view key, CellPosition value) { Text(key, FormatCellRef(value)); }
    template <std::size_t NamesPerList>
    void Names(std::string_view key, const std::array<std::string, NamesPerList>& names)
    {
        std::string joined = names.front();
        for (std::size_t i = 1; i < names.size(); ++i)
            (joined += ',') += names[i];
        Text(key, joined);
    }
    std::string Take() { return std::move(text_); }

private:
    std::string text_;
};

/// "1225,,Christmas Day"; kinds above the Easter rule count as one.
std::string RuleText(const holidays::HolidayDef& rule)
{
    const auto word =
        static_cast<std::size_t>(std::clamp(rule.Kind, holidays::kFixedDay, holidays::kEaster));
    return holidays::FormatDateCode(rule) + ',' + std::string(holidays::kKindWords[word]) + ',' +
           rule.Name;
}

void WriteHead(Writer& out, std::string_view header, const CalendarParameters& set)
{
    out.Line(header);
    out.Flag("Output", set.Output);
    out.Text("SheetName", set.SheetName);
    out.Number("FirstDayOfWeek", set.FirstDayOfWeek);
}

/// What both sections have behind their head, the holidays included.
void WriteCells(Writer& out, const NameTables& names, const CalendarParameters& set)
{
    out.Cell("FirstCellOfDay", set.FirstCellOfDay);
    out.Number("ColIntervalOfDay", set.ColIntervalOfDay);
    out.Number("RowIntervalOfDay", set.RowIntervalOfDay);
    out.Flag("OutWeekday", set.OutWeekday);
    out.Cell("FirstCellOfWeekday", set.FirstCellOfWeekday);
    out.Names("WeekdayName", names.Weekdays.At(set.WeekdayName));
    out.Flag("OutMonth", set.OutMonth);
    out.Cell("FirstCellOfMonth", set.FirstCellOfMonth);
    out.Names("MonthName", names.Months.At(set.MonthName));
    out.Flag("OutYear", set.OutYear);
    out.Cell("FirstCellOfYear", set.FirstCellOfYear);
    out.Flag("OutHoliday", set.OutHoliday);
    out.Cell("FirstCellOfHoliday", set.FirstCellOfHoliday);
    out.Number("MultiHolidays", set.MultiHolidays);
    int number = 0;
    for (const holidays::HolidayDef& rule : set.Holidays)
        out.Text("Holiday" + std::to_string(++number), RuleText(rule));
}

} // namespace

std::string FormatParameterText(const NameTables& names, const ParameterSets& sets)
{
    Writer out;
    WriteHead(out, holidays::kMonthlySection, sets.Monthly);
    WriteCells(out, names, sets.Monthly);
    out.Line("");
    WriteHead(out, holidays::kYearlySection, sets.Yearly);
    out.Number("MonthLayout", sets.Yearly.MonthLayout);
    out.Number("ColIntervalOfMonth", sets.Yearly.ColIntervalOfMonth);
    out.Number("RowIntervalOfMonth", sets.Yearly.RowIntervalOfMonth);
    WriteCells(out, names, sets.Yearly);
    return out.Take();
}

} // namespace orrery::model
