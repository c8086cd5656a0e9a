#include "ui/own_day_form.h"

#include "holidays/language/next_days.h"
#include "holidays/language/rule_words.h"
#include "holidays/language/words.h"
#include "util/text.h"

#include <array>
#include <utility>

namespace orrery::ui {
namespace {

using holidays::OwnDay;
using OwnKind = OwnDay::Kind;

constexpr int kMonthsOfYear = 12;
constexpr int kDaysOfWeek = 7;

/// The weekday of a place in the list, which begins with Monday, and back.
std::int16_t WeekdayAt(int place)
{
    return static_cast<std::int16_t>((place + 1) % kDaysOfWeek + 1);
}
int PlaceOf(std::int16_t weekday)
{
    return (weekday - 2 + kDaysOfWeek) % kDaysOfWeek;
}

std::optional<int> NumberIn(const TextBox& box)
{
    return holidays::IntegerOf(util::Trim(box.text));
}

std::string TextOf(std::optional<int> number)
{
    return number ? std::to_string(*number) : std::string();
}

holidays::RuleSet RulesOf(const OwnDay& day)
{
    holidays::HolidayList list;
    holidays::AppendEntries(holidays::EntriesOf(day), list);
    return holidays::RulesOf(list);
}

/// "Fri 14 May 2027", or where in every year it is.
std::string DateInWords(const OwnDay& day, std::optional<int> year)
{
    const holidays::RuleSet rules = RulesOf(day);
    const bool hasDate = day.kind == OwnKind::OneDate || day.kind == OwnKind::Range;
    if (hasDate)
        year = day.year;
    if (!year)
        return holidays::RuleInWords(rules.rules.front(), {});
    const auto next = holidays::NextDaysOf(rules, *year, {}).front();
    if (next.state != holidays::NextDays::State::Given)
        return holidays::RuleInWords(rules.rules.front(), {});
    std::string words = holidays::DateInWords(next.first, true);
    if (day.kind == OwnKind::Range)
        words = holidays::RuleInWords(rules.rules.front(), {});
    const int age =
        static_cast<int>(std::chrono::year_month_day(next.first).year()) - day.year.value_or(0);
    if (day.kind == OwnKind::Birthday && day.year && age > 0)
        words += ": " + std::to_string(age) + (age == 1 ? " year" : " years");
    return hasDate ? words : "Next: " + words;
}

void ShowAll(std::initializer_list<Control*> controls, bool visible)
{
    for (Control* const control : controls)
        control->visible = visible;
}

} // namespace

OwnDayForm::OwnDayForm(const std::optional<OwnDay>& day, std::optional<int> year)
    : Form("frmOwnDay", day ? "Change Own Day" : "Add Own Day", "holidays"), year_(year)
{
    FillLists();
    OwnDay shown = day.value_or(OwnDay());
    if (!day) {
        shown.year = year;
        shown.lastYear = year.value_or(0);
    }
    Show(shown);
    cboKind_Click();
    SetFocus(txtName);
}

void OwnDayForm::FillLists()
{
    cboKind.entries = {"Every year on a date", "Birthday", "Every year on a weekday", "One date",
                       "Several days in a row"};
    cboOrdinal.entries = {"First", "Second", "Third", "Fourth", "Last"};
    for (int place = 0; place < kDaysOfWeek; ++place)
        cboWeekday.entries.emplace_back(
            holidays::kKindWords.at(static_cast<std::size_t>(WeekdayAt(place))));
    for (int month = 1; month <= kMonthsOfYear; ++month)
        cboMonth.entries.emplace_back(holidays::MonthInWords(month));
    cboLastMonth.entries = cboMonth.entries;
}

void OwnDayForm::Show(const OwnDay& day)
{
    txtName.text = std::string(util::Trim(day.name));
    cboKind.selected = static_cast<int>(day.kind);
    cboOrdinal.selected = day.ordinal - 1;
    cboWeekday.selected = PlaceOf(day.weekday);
    txtDay.text = std::to_string(day.day.day);
    cboMonth.selected = day.day.month - 1;
    txtYear.text = TextOf(day.year);
    txtLastDay.text = std::to_string(day.lastDay.day);
    cboLastMonth.selected = day.lastDay.month - 1;
    txtLastYear.text = day.lastYear == 0 ? std::string() : std::to_string(day.lastYear);
}

OwnDay OwnDayForm::Day() const
{
    OwnDay day;
    day.kind = static_cast<OwnKind>(cboKind.selected);
    day.name = std::string(util::Trim(txtName.text));
    day.day = {cboMonth.selected + 1, 1};
    if (day.kind == OwnKind::Weekday) {
        day.ordinal = cboOrdinal.selected + 1;
        day.weekday = WeekdayAt(cboWeekday.selected);
        return day;
    }
    day.day.day = NumberIn(txtDay).value_or(0);
    if (day.kind != OwnKind::EveryYear)
        day.year = NumberIn(txtYear);
    if (day.kind == OwnKind::Range) {
        day.lastDay = {cboLastMonth.selected + 1, NumberIn(txtLastDay).value_or(0)};
        day.lastYear = NumberIn(txtLastYear).value_or(0);
    }
    return day;
}

void OwnDayForm::cboKind_Click()
{
    const auto kind = static_cast<OwnKind>(cboKind.selected);
    if (kind == OwnKind::Birthday && cboKind.changed && !txtYear.changed)
        txtYear.text.clear(); // the year of the calendar is no year of birth
    ShowAll({&lblOrdinal, &cboOrdinal, &lblWeekday, &cboWeekday}, kind == OwnKind::Weekday);
    ShowAll({&lblDay, &txtDay}, kind != OwnKind::Weekday);
    ShowAll({&lblYear, &txtYear},
            kind == OwnKind::Birthday || kind == OwnKind::OneDate || kind == OwnKind::Range);
    ShowAll({&lblLastDay, &txtLastDay, &lblLastMonth, &cboLastMonth, &lblLastYear, &txtLastYear},
            kind == OwnKind::Range);
    lblDay.caption = kind == OwnKind::Range ? "First &Day:" : "&Day:";
    lblYear.caption = kind == OwnKind::Birthday ? "&Year of Birth:" : "&Year:";
    ShowDate();
}

std::optional<OwnDayForm::Problem> OwnDayForm::FindTextProblem() const
{
    const auto isWrong = [](const TextBox& box) {
        return box.visible && !NumberIn(box) && !util::Trim(box.text).empty();
    };
    for (const TextBox* const box : {&txtDay, &txtLastDay}) {
        if (box->visible && !NumberIn(*box))
            return Problem{"Type the day as a number, such as 14.", box};
    }
    for (const TextBox* const box : {&txtYear, &txtLastYear}) {
        if (isWrong(*box))
            return Problem{"Type the year as a number, such as 2027.", box};
    }
    return std::nullopt;
}

std::optional<OwnDayForm::Problem> OwnDayForm::FindProblem() const
{
    OwnDay day = Day();
    const bool isNameless = day.name.empty();
    day.name = "x";
    if (auto problem = FindTextProblem())
        return problem;
    if (auto problem = holidays::ProblemOf(day)) {
        // What is wrong with the first day is wrong with the same single date.
        OwnDay first = day;
        first.kind = day.kind == OwnKind::Range ? OwnKind::OneDate : day.kind;
        const bool isFirst = holidays::ProblemOf(first).has_value();
        const TextBox& box = isFirst ? txtDay : txtLastDay;
        return Problem{*std::move(problem), &box};
    }
    if (isNameless)
        return Problem{"Type the name of the day.", &txtName};
    return std::nullopt;
}

void OwnDayForm::ShowDate()
{
    const auto problem = FindProblem();
    if (problem && problem->field != &txtName)
        return lblDate.ShowText(problem->sentence);
    OwnDay day = Day();
    if (problem)
        day.name = "x"; // the date is known before the name
    lblDate.ShowText(DateInWords(day, year_));
}

void OwnDayForm::cmdOK_Click()
{
    const auto problem = FindProblem();
    if (!problem)
        return Accept();
    lblDate.ShowText(problem->sentence);
    SetFocus(*problem->field);
}

} // namespace orrery::ui
