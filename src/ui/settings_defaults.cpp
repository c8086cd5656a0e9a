#include "holidays/holiday_readers.h"
#include "ui/settings.h"
#include "util/file_read.h"
#include "util/numbers.h"
#include "util/paths.h"
#include "util/text.h"

#include <algorithm>
#include <set>

namespace orrery::ui {
namespace {

using model::CellPosition;

constexpr const char* kMonthlySection = "Monthly Calendar";
constexpr const char* kYearlySection = "Yearly Calendar";
constexpr CellPosition kDefaultFirstDay{5, 2}; // B5

/// One section's values, trimmed.
class Section {
public:
    Section(const util::Profile& profile, const char* name) : profile_(profile), name_(name) {}

    std::string Text(const char* key, const char* fallback) const
    {
        const std::string value = profile_.Read(name_, key, fallback);
        return std::string(util::Trim(value));
    }

    bool Is(const char* key, const char* word, const char* fallback) const
    {
        return util::EqualIgnoringCase(Text(key, fallback), word);
    }

    /// A number of [low:high]; the range is checked on the number as written.
    std::int32_t Number(const char* key, std::int32_t low, std::int32_t high,
                        std::int32_t fallback) const
    {
        const auto value = util::ReadNumber(Text(key, ""));
        return value && *value >= low && *value <= high ? util::RoundTo32(*value) : fallback;
    }

    /// `literal` is read where the key is missing, `fallback` stands in for an invalid cell.
    CellPosition Cell(const char* key, const char* literal, CellPosition fallback) const
    {
        return model::ReadCell(Text(key, literal)).value_or(fallback);
    }

    template <std::size_t NamesPerList>
    std::int16_t List(const char* key, const model::NameLists<NamesPerList>& lists) const
    {
        const auto names = model::SplitNames<NamesPerList>(Text(key, ""));
        return names ? std::max(lists.Find(*names), std::int16_t{0}) : std::int16_t{0};
    }

private:
    const util::Profile& profile_;
    const char* name_;
};

std::int16_t ReadFirstDayOfWeek(const Section& section)
{
    const std::string value = section.Text("FirstDayOfWeek", "");
    const bool monday = util::EqualIgnoringCase(value, "Monday") || util::ReadNumber(value) == 1.0;
    return monday ? 1 : 0;
}

/// The key's default text for each cell that has one; an empty text leaves it to the rule that
/// derives the cell from the first day's.
struct LiteralCells {
    const char* FirstCellOfWeekday = "";
    const char* FirstCellOfYear = "";
    const char* FirstCellOfHoliday = "";
};

void ReadCells(const Section& section, const LiteralCells& literals, model::CalendarParameters& set)
{
    set.FirstCellOfDay = section.Cell("FirstCellOfDay", "B5", kDefaultFirstDay);
    const auto [row, column] = set.FirstCellOfDay;
    set.FirstCellOfWeekday = section.Cell("FirstCellOfWeekday", literals.FirstCellOfWeekday,
                                          {std::max(row - 1, 1), column});
    set.FirstCellOfMonth = section.Cell("FirstCellOfMonth", "", {std::max(row - 2, 1), column});
    set.FirstCellOfYear = section.Cell("FirstCellOfYear", literals.FirstCellOfYear, {1, column});
    set.FirstCellOfHoliday =
        section.Cell("FirstCellOfHoliday", literals.FirstCellOfHoliday, {row + 1, column});
}

/// What both calendars read alike.
void ReadCommon(const Section& section, const model::NameTables& names,
                model::CalendarParameters& set)
{
    set.FirstDayOfWeek = ReadFirstDayOfWeek(section);
    set.ColIntervalOfDay = section.Number("ColIntervalOfDay", 1, 36, 1);
    set.OutWeekday = section.Is("OutWeekday", "Y", "N");
    set.WeekdayName = section.List("WeekdayName", names.Weekdays);
    set.OutMonth = section.Is("OutMonth", "Y", "N");
    set.MonthName = section.List("MonthName", names.Months);
    set.OutYear = section.Is("OutYear", "Y", "N");
    set.OutHoliday = section.Is("OutHoliday", "Y", "N");
    set.MultiHolidays = static_cast<std::int16_t>(section.Number("MultiHolidays", 0, 2, 0));
}

/// The holiday file that the settings name for a set; the folder itself where they name none.
std::string NamedHolidayFile(const Section& section, const std::string& holidayFolder)
{
    return util::ResolvePath(holidayFolder, section.Text("HolidayFile", ""));
}

/// The set's holiday file; where that does not exist, the holiday folder's first file.
std::string ReadHolidayFileName(const Section& section, const std::string& holidayFolder)
{
    std::string file = NamedHolidayFile(section, holidayFolder);
    return util::FileExists(file) ? file : util::FirstFileOfFolder(holidayFolder);
}

model::MonthlyParameters ReadMonthly(const Section& section, const model::NameTables& names)
{
    model::MonthlyParameters set;
    set.Output = !section.Is("Output", "N", "Y");
    set.SheetName = section.Text("SheetName", "Sheet2");
    ReadCommon(section, names, set);
    set.RowIntervalOfDay = section.Number("RowIntervalOfDay", 1, 10000, 5);
    ReadCells(section, {}, set);
    return set;
}

model::YearlyParameters ReadYearly(const Section& section, const model::NameTables& names)
{
    model::YearlyParameters set;
    set.Output = section.Is("Output", "Y", "N");
    set.SheetName = section.Text("SheetName", "Sheet1");
    ReadCommon(section, names, set);
    set.RowIntervalOfDay = section.Number("RowIntervalOfDay", 1, 10000, 1);
    ReadCells(section, {"B4", "B1", "B6"}, set);
    set.MonthLayout = static_cast<std::int16_t>(section.Number("MonthLayout", 1, 12, 3));
    set.ColIntervalOfMonth = section.Number("ColIntervalOfMonth", 1, 256, 8);
    set.RowIntervalOfMonth = section.Number("RowIntervalOfMonth", 1, 10000, 9);
    return set;
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
    defaults.Monthly = ReadMonthly(monthly, names);
    defaults.MonthlyHolidayFile = ReadHolidayFileName(monthly, holidayFolder);
    defaults.Monthly.Holidays = HolidaysOf(defaults.MonthlyHolidayFile);
    defaults.Yearly = ReadYearly(yearly, names);
    defaults.YearlyHolidayFile = ReadHolidayFileName(yearly, holidayFolder);
    defaults.Yearly.Holidays = defaults.YearlyHolidayFile == defaults.MonthlyHolidayFile
                                   ? defaults.Monthly.Holidays
                                   : HolidaysOf(defaults.YearlyHolidayFile);
    return defaults;
}

std::vector<util::Error> HolidayObstacles(const util::Profile& profile,
                                          const std::string& holidayFolder)
{
    std::set<std::string> files;
    for (const char* name : {kMonthlySection, kYearlySection}) {
        const Section section(profile, name);
        if (!section.Text("HolidayFile", "").empty())
            files.insert(NamedHolidayFile(section, holidayFolder));
        files.insert(ReadHolidayFileName(section, holidayFolder));
    }
    std::vector<util::Error> obstacles;
    for (const std::string& file : files) {
        if (auto obstacle = util::ObstacleOfExistingText(util::ToPath(file)))
            obstacles.push_back(*std::move(obstacle));
    }
    return obstacles;
}

} // namespace orrery::ui
