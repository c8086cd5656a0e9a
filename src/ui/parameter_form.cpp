#include "ui/parameter_form.h"

#include "ui/holiday_form.h"
#include "ui/line_problems.h"
#include "util/paths.h"

#include <utility>

namespace orrery::ui {
namespace {

constexpr int kMonthlyTab = 1;
constexpr int kYearlyTab = 2;

} // namespace

ParameterForm::ParameterForm(app::WorkingSets& working, const model::NameTables& names,
                             app::TemplateLocation location, book::Engines& engines,
                             Desktop& desktop)
    : Form("frmParameter", "Modify Parameters", "parameters"),
      monthly('M', "MCalendar", "Output &Monthly Calendar", names), yearly(names),
      working_(working), names_(names), location_(std::move(location)), engines_(engines),
      desktop_(desktop)
{
    Form_Load();
}

void ParameterForm::Form_Load()
{
    const model::ParameterSets& sets = working_.sets;
    monthly.Show(sets.Monthly);
    yearly.Show(sets.Yearly);
    monthly.lblHolidayProblems.ShowText(SummarizeProblems(working_.monthlyProblems));
    yearly.lblHolidayProblems.ShowText(SummarizeProblems(working_.yearlyProblems));
    tabOrrery_Click(sets.Yearly.Output && !sets.Monthly.Output ? kYearlyTab : kMonthlyTab);
}

void ParameterForm::FillWith(const model::ParameterSets& sets)
{
    monthly.Show(sets.Monthly);
    yearly.Show(sets.Yearly);
    monthly.chkOutCalendar.changed = yearly.chkOutCalendar.changed = true;
    tabOrrery_Click(sets.Yearly.Output && !sets.Monthly.Output ? kYearlyTab : kMonthlyTab);
}

bool ParameterForm::ValidateMParameters()
{
    return Passes(CheckMonthly(monthly), kMonthlyTab);
}

bool ParameterForm::ValidateYParameters()
{
    return Passes(CheckYearly(yearly), kYearlyTab);
}

bool ParameterForm::Passes(const std::optional<Problem>& problem, int tab)
{
    if (!problem)
        return true;
    desktop_.Report(problem->message);
    tabOrrery_Click(tab);
    SetFocus(*problem->control);
    return false;
}

void ParameterForm::SaveMParameters()
{
    monthly.Save(working_.sets.Monthly);
}

void ParameterForm::SaveYParameters()
{
    yearly.Save(working_.sets.Yearly);
}

void ParameterForm::cmdMChangeHoliday_Click()
{
    HolidayForm viewer(holidays::CalendarKind::Monthly, location_, working_.parameterFileExists,
                       {monthly.holidays, monthly.holidayChoice}, year_, desktop_, [this] {
                           SetMHolidayChanged();
                           ShowMHolidaySample();
                       });
    desktop_.ShowModal(viewer);
}

void ParameterForm::cmdYChangeHoliday_Click()
{
    HolidayForm viewer(holidays::CalendarKind::Yearly, location_, working_.parameterFileExists,
                       {yearly.holidays, yearly.holidayChoice}, year_, desktop_, [this] {
                           SetYHolidayChanged();
                           ShowYHolidaySample();
                       });
    desktop_.ShowModal(viewer);
}

void ParameterForm::cmdOK_Click()
{
    if (monthly.chkOutCalendar.checked && !ValidateMParameters())
        return;
    SaveMParameters();
    working_.monthlyChanged = monthly.Changed();
    if (yearly.chkOutCalendar.checked && !ValidateYParameters())
        return;
    SaveYParameters();
    working_.yearlyChanged = yearly.Changed();
    Accept();
}

void ParameterForm::tabOrrery_Click(int index)
{
    tabOrrery.selected = index;
    tabOrrery.monthlyCaption = index == kMonthlyTab ? "Monthly Calendar" : "&Monthly Calendar";
    tabOrrery.yearlyCaption = index == kYearlyTab ? "Yearly Calendar" : "&Yearly Calendar";
}

ParameterTab& ParameterForm::SelectedTab()
{
    if (tabOrrery.selected == kYearlyTab)
        return yearly;
    return monthly;
}

std::filesystem::path ParameterForm::TemplatePath() const
{
    return util::ToPath(location_.templateFolder + location_.templateFile);
}

} // namespace orrery::ui
