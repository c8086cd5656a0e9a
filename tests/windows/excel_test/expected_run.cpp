#include "excel_test/expected_run.h"

namespace orrery::excel_test {
namespace {

// The calendar of 2024, from a printed one: a leap year that begins on a Monday.
constexpr std::array<int, 12> kDays = {31, 29, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
enum Weekday { Sun, Mon, Tue, Wed, Thu, Fri, Sat };
constexpr std::array<Weekday, 12> kFirst = {Mon, Thu, Fri, Mon, Wed, Sat,
                                            Mon, Thu, Sun, Tue, Fri, Sun};

const std::array<std::string, 12> kMonths = {"January",   "February", "March",    "April",
                                             "May",       "June",     "July",     "August",
                                             "September", "October",  "November", "December"};
const std::array<std::string, 7> kWeekdays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                              "Thursday", "Friday", "Saturday"};

} // namespace

std::string LoggedText(const std::string& text)
{
    std::string logged = "VT_BSTR \"";
    for (const char c : text)
        logged += c == '\\' ? std::string("\\\\") : std::string(1, c);
    return logged + '"';
}

void ExpectedRun::Cell(int sheet, int row, int column, const std::string& value, Member member)
{
    const std::string range = "Range#" + std::to_string(++ranges_);
    calls_.push_back("Worksheet#" + std::to_string(sheet) + ".Cells get|call (VT_I4 " +
                     std::to_string(row) + ", VT_I4 " + std::to_string(column) +
                     ") -> VT_DISPATCH " + range);
    calls_.push_back(range + (member == Member::Default ? "._Default" : ".Value") + " put (" +
                     value + ')');
}

void ExpectedRun::Number(int sheet, int row, int column, int number, Member member)
{
    Cell(sheet, row, column, "VT_I2 " + std::to_string(number), member);
    cells_[sheet][{row, column}] = static_cast<double>(number);
}

void ExpectedRun::Text(int sheet, int row, int column, const std::string& text, Member member)
{
    Cell(sheet, row, column, LoggedText(text), member);
    cells_[sheet][{row, column}] = text;
}

void ExpectedRun::Month(int sheet, int month, const Layout& layout, const Holidays& holidays,
                        int down, int across)
{
    const auto index = static_cast<std::size_t>(month - 1);
    Number(sheet, layout.year.first, layout.year.second, 2024, Member::Default); // never moves
    Text(sheet, layout.month.first + down, layout.month.second + across, kMonths[index],
         Member::Default);
    for (int k = 0; k < 7; ++k)
        Text(sheet, layout.weekdays.first + down,
             layout.weekdays.second + across + k * layout.columnStep,
             kWeekdays[static_cast<std::size_t>(layout.mondayFirst ? (k + 1) % 7 : k)],
             Member::Default);

    // As one fills in a calendar by hand: day by day, with a new line after the last column.
    int column = layout.mondayFirst ? (kFirst[index] + 6) % 7 : kFirst[index];
    int line = 0;
    for (int day = 1; day <= kDays[index]; ++day) {
        const int rows = down + line * layout.rowStep;
        const int columns = across + column * layout.columnStep;
        Number(sheet, layout.days.first + rows, layout.days.second + columns, day, Member::Value);
        if (const auto found = holidays.find({month, day}); found != holidays.end()) {
            int below = 0;
            for (const auto& name : found->second) {
                Text(sheet, layout.holidays.first + rows + below, layout.holidays.second + columns,
                     name, Member::Value);
                below += layout.holidaysBelow ? 1 : 0;
            }
        }
        if (++column == 7) {
            column = 0;
            ++line;
        }
    }
}

} // namespace orrery::excel_test
