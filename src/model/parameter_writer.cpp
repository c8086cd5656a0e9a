#include "model/parameter_text.h"

#include "holidays/key_line.h"
#include "model/parameter_table.h"

#include <algorithm>
#include <array>

namespace orrery::model {

namespace {

/// "1225,,Christmas Day"; kinds above Easter count as Easter.
std::string RuleText(const holidays::HolidayDef& rule)
{
    const auto word =
        static_cast<std::size_t>(std::clamp(rule.Kind, holidays::kFixedDay, holidays::kEaster));
    return holidays::FormatDateCode(rule) + ',' + std::string(holidays::kKindWords[word]) + ',' +
           rule.Name;
}

/// Appends lines to the text of a parameter file.
class Writer {
public:
    explicit Writer(const NameTables& names) : names_(names) {}

    void operator()(const FlagParameter& flag, bool value) { Line(flag.key, value ? "Y" : "N"); }
    void operator()(const SheetNameParameter& name, const std::string& value)
    {
        Line(name.key, value);
    }
    void operator()(const FirstDayParameter& day, std::int16_t value)
    {
        Line(day.key, std::to_string(value));
    }
    void operator()(const NumberParameter& number, std::int32_t value)
    {
        Line(number.key, std::to_string(value));
    }
    void operator()(const CellParameter& cell, CellPosition value)
    {
        Line(cell.key, FormatCellRef(value));
    }
    void operator()(const WeekdayNamesParameter& list, std::int16_t value)
    {
        Line(list.key, Join(names_.Weekdays.At(value)));
    }
    void operator()(const MonthNamesParameter& list, std::int16_t value)
    {
        Line(list.key, Join(names_.Months.At(value)));
    }
    /// Writes a section: its parameters, its holidays, and the given rule lines unchanged.
    template <typename Set>
    void Section(std::string_view header, const Set& set, const std::vector<std::string>& rules)
    {
        Line(header);
        VisitParameters(set, *this);
        Holidays(set.Holidays);
        for (const std::string& rule : rules)
            Line(rule);
    }
    /// Writes which holidays are shown, where that is more than usual, and the given lines.
    void ShownHolidays(const ParameterSets& sets, const std::vector<std::string>& lines)
    {
        const holidays::HolidayChoice usual;
        const auto& monthly = sets.Monthly.ShownHolidays;
        const auto& yearly = sets.Yearly.ShownHolidays;
        if (monthly == usual && yearly == usual && lines.empty())
            return;
        Line("");
        Line(holidays::kHolidaysSection);
        Choice("Monthly", monthly);
        Choice("Yearly", yearly);
        for (const std::string& line : lines)
            Line(line);
    }
    void Line(std::string_view text) { (text_ += text) += "\r\n"; }
    /// Appends lines unchanged, with an empty line before them.
    void Text(std::string_view lines)
    {
        if (lines.empty())
            return;
        if (!text_.ends_with('\n'))
            Line("");
        if (!text_.ends_with("\n\r\n"))
            Line("");
        text_ += lines;
    }
    std::string Take() { return std::move(text_); }

private:
    void Choice(const std::string& calendar, const holidays::HolidayChoice& choice)
    {
        const holidays::HolidayChoice usual;
        if (choice.region != usual.region)
            Line(calendar + "Region", choice.region);
        if (choice.categories != usual.categories)
            Line(calendar + "Kinds", holidays::FormatCategories(choice.categories));
        if (choice.language != usual.language)
            Line(calendar + "Language", choice.language);
    }
    /// Numbers the rules and the extra lines, in their order.
    void Holidays(const holidays::HolidayList& list)
    {
        int number = 0;
        for (const holidays::ListEntry& entry : holidays::EntriesOf(list)) {
            const auto* const rule = std::get_if<holidays::HolidayDef>(&entry);
            // An extra line stands behind a blank: "=>" would be one token.
            Line("Holiday" + std::to_string(++number),
                 rule != nullptr ? RuleText(*rule) : ' ' + std::get<std::string>(entry));
        }
    }
    void Line(std::string_view key, std::string_view value)
    {
        ((text_ += key) += '=') += value;
        text_ += "\r\n";
    }
    template <std::size_t NamesPerList>
    static std::string Join(const std::array<std::string, NamesPerList>& names)
    {
        std::string text = names.front();
        for (std::size_t i = 1; i < names.size(); ++i)
            (text += ',') += names[i];
        return text;
    }

    const NameTables& names_;
    std::string text_;
};

} // namespace

std::string FormatParameterText(const NameTables& names, const ParameterSets& sets,
                                const ParameterExtras& extras)
{
    Writer out(names);
    out.Section(holidays::kMonthlySection, sets.Monthly, extras.monthlyRules);
    out.Line("");
    out.Section(holidays::kYearlySection, sets.Yearly, extras.yearlyRules);
    out.ShownHolidays(sets, extras.shownHolidays);
    out.Text(extras.sections);
    out.Text(extras.unread);
    return out.Take();
}

} // namespace orrery::model
