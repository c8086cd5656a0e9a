#include "app/settings.h"
#include "holidays/files/holiday_readers.h"
#include "model/parameter_table.h"
#include "util/file_read.h"
#include "util/numbers.h"
#include "util/paths.h"
#include "util/text.h"

#include <algorithm>
#include <set>

namespace orrery::app {
namespace {

using model::CellPosition;

constexpr const char* kMonthlySection = "Monthly Calendar";
constexpr const char* kYearlySection = "Yearly Calendar";

/// One section's values, trimmed.
class Section {
public:
    Section(const util::Profile& profile, const char* name) : profile_(profile), name_(name) {}

    std::string Text(std::string_view key, std::string_view fallback) const
    {
        const std::string value = profile_.Read(name_, key, fallback);
        return std::string(util::Trim(value));
    }

private:
    const util::Profile& profile_;
    const char* name_;
};

/// Reads a set's parameters from a section.
template <typename Set> class DefaultReader {
public:
    DefaultReader(const Section& section, const model::NameTables& names, const Set& set)
        : section_(section), names_(names), set_(set)
    {
    }

    /// Any value other than yes or no counts as a missing key.
    void operator()(const model::FlagParameter& flag, bool& field) const
    {
        const bool initial = flag.initial.template Of<Set>();
        const std::string value = section_.Text(flag.key, "");
        field =
            initial ? !util::EqualIgnoringCase(value, "N") : util::EqualIgnoringCase(value, "Y");
    }
    void operator()(const model::SheetNameParameter& name, std::string& field) const
    {
        field = section_.Text(name.key, name.initial.template Of<Set>());
    }
    void operator()(const model::FirstDayParameter& day, std::int16_t& field) const
    {
        const std::string value = section_.Text(day.key, "");
        field = util::EqualIgnoringCase(value, "Monday") || util::ReadNumber(value) == 1.0 ? 1 : 0;
    }
    template <typename Field>
    void operator()(const model::NumberParameter& number, Field& field) const
    {
        const auto value = util::ReadNumber(section_.Text(number.key, ""));
        field = static_cast<Field>(value && *value >= number.low && *value <= number.high
                                       ? util::RoundTo32(*value)
                                       : number.initial.template Of<Set>());
    }
    /// The first day's cell is read before the cells that depend on it.
    void operator()(const model::CellParameter& cell, CellPosition& field) const
    {
        const std::string text = section_.Text(cell.key, cell.initial.template Of<Set>());
        field = model::ReadCell(text).value_or(cell.fallback(set_.FirstCellOfDay));
    }
    void operator()(const model::WeekdayNamesParameter& list, std::int16_t& field) const
    {
        field = List(list.key, names_.Weekdays);
    }
    void operator()(const model::MonthNamesParameter& list, std::int16_t& field) const
    {
        field = List(list.key, names_.Months);
    }

private:
    template <std::size_t NamesPerList>
    std::int16_t List(std::string_view key, const model::NameLists<NamesPerList>& lists) const
    {
        const auto names = model::SplitNames<NamesPerList>(section_.Text(key, ""));
        return names ? std::max(lists.Find(*names), std::int16_t{0}) : std::int16_t{0};
    }

    const Section& section_;
    const model::NameTables& names_;
    const Set& set_;
};

template <typename Set> Set ReadSet(const Section& section, const model::NameTables& names)
{
    Set set;
    model::VisitParameters(set, DefaultReader<Set>(section, names, set));
    return set;
}

/// The holiday file that the settings name for a set; the folder itself if they name none.
std::string NamedHolidayFile(const Section& section, const std::string& holidayFolder)
{
    return util::ResolvePath(holidayFolder, section.Text("HolidayFile", ""));
}

/// The set's holiday file, or the first file of the holiday folder if it does not exist.
std::string ReadHolidayFileName(const Section& section, const std::string& holidayFolder)
{
    std::string file = NamedHolidayFile(section, holidayFolder);
    return util::FileExists(file) ? file : util::FirstFileOfFolder(holidayFolder);
}

holidays::HolidayList HolidaysOf(const std::string& file)
{
    holidays::HolidayList list;
    if (!file.empty())
        holidays::ReadHolidayFile(util::ToPath(file), list);
    return list;
}

} // namespace

model::DefaultParameters LoadDefaults(const util::Profile& profile, const model::NameTables& names,
                                      const std::string& holidayFolder)
{
    const Section monthly(profile, kMonthlySection);
    const Section yearly(profile, kYearlySection);
    model::DefaultParameters defaults;
    defaults.Monthly = ReadSet<model::MonthlyParameters>(monthly, names);
    defaults.MonthlyHolidayFile = ReadHolidayFileName(monthly, holidayFolder);
    defaults.Monthly.Holidays = HolidaysOf(defaults.MonthlyHolidayFile);
    defaults.Yearly = ReadSet<model::YearlyParameters>(yearly, names);
    defaults.YearlyHolidayFile = ReadHolidayFileName(yearly, holidayFolder);
    defaults.Yearly.Holidays = defaults.YearlyHolidayFile == defaults.MonthlyHolidayFile
                                   ? defaults.Monthly.Holidays
                                   : HolidaysOf(defaults.YearlyHolidayFile);
    return defaults;
}

std::vector<util::Error> FindHolidayFileErrors(const util::Profile& profile,
                                               const std::string& holidayFolder)
{
    std::set<std::string> files;
    for (const char* name : {kMonthlySection, kYearlySection}) {
        const Section section(profile, name);
        if (!section.Text("HolidayFile", "").empty())
            files.insert(NamedHolidayFile(section, holidayFolder));
        files.insert(ReadHolidayFileName(section, holidayFolder));
    }
    std::vector<util::Error> errors;
    for (const std::string& file : files) {
        if (auto error = util::FindExistingTextReadError(util::ToPath(file)))
            errors.push_back(*std::move(error));
    }
    return errors;
}

} // namespace orrery::app
