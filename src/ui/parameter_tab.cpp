#include "ui/parameter_tab.h"

#include "model/parameter_table.h"
#include "util/error.h"
#include "util/numbers.h"
#include "util/text.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <utility>

namespace orrery::ui {
namespace {

/// Months side by side, in the order of the layout list.
constexpr std::array<std::int16_t, 6> kMonthsAcross{1, 2, 3, 4, 6, 12};
constexpr std::int16_t kDefaultMonthsAcross = 3;

/// A control's name: "txt", 'M', "SheetName".
std::string ControlName(const char* prefix, char letter, const char* role)
{
    return std::string(prefix) + letter + role;
}

/// "January, February, ...", with the list's title before it: "English: January, ...".
template <std::size_t NamesPerList>
std::string EntryOf(const model::NameLists<NamesPerList>& table, std::int16_t index)
{
    const auto& names = table.At(index);
    const std::string joined = util::Join({names.begin(), names.end()}, ", ");
    const std::string& title = table.Title(index);
    return title.empty() ? joined : title + ": " + joined;
}

/// One entry for each counted list, by index: a skipped list has an entry without names.
template <std::size_t NamesPerList>
std::vector<std::string> EntriesOf(const model::NameLists<NamesPerList>& table)
{
    std::vector<std::string> entries;
    for (std::int16_t index = 0; index < table.Count(); ++index)
        entries.push_back(EntryOf(table, index));
    return entries;
}

/// Selects the first entry with that text, or the first entry of the list if there is none.
void SelectText(ComboBox& list, const std::string& text)
{
    const auto found = std::find(list.entries.begin(), list.entries.end(), text);
    const auto index = found == list.entries.end() ? 0 : found - list.entries.begin();
    list.selected = list.entries.empty() ? -1 : static_cast<int>(index);
}

/// The index to store; 0 if nothing is selected.
std::int16_t IndexOf(const ComboBox& list)
{
    return static_cast<std::int16_t>(std::max(list.selected, 0));
}

/// An invalid text gives -1 in both numbers.
model::CellPosition CellOf(const TextBox& box)
{
    model::CellPosition cell;
    try {
        model::ParseCellRef(util::Trim(box.text), cell);
    }
    catch (const util::OverflowError&) {
        // No sheet has that row.
    }
    return cell;
}

void Enable(bool enabled, std::initializer_list<Control*> controls)
{
    for (Control* control : controls)
        control->enabled = enabled;
}

} // namespace

std::int32_t IntervalOf(const TextBox& box)
{
    const auto number = util::ReadNumber(box.text);
    if (!number)
        throw Error(util::ErrorKind::NotNumeric, box.text);
    return util::RoundTo32(*number);
}

// ---- what both calendars have

ParameterTab::ParameterTab(char letter, std::string tabKey, std::string outputCaption,
                           const model::NameTables& names)
    : key(std::move(tabKey)),
      chkOutCalendar(ControlName("chk", letter, "OutCalendar"), std::move(outputCaption)),
      lblSheetName(ControlName("lbl", letter, "SheetName"), "&Sheet Name:"),
      txtSheetName(ControlName("txt", letter, "SheetName")),
      cmdSheets(ControlName("cmd", letter, "Sheets"), "..."),
      lblFirstDayofWeek(ControlName("lbl", letter, "FirstDayofWeek"), "First Day of Week:"),
      cboFirstDayofWeek(ControlName("cbo", letter, "FirstDayofWeek")),
      lblFirstCellofDay(ControlName("lbl", letter, "FirstCellofDay"), "First Cell of &Day:"),
      txtFirstCellofDay(ControlName("txt", letter, "FirstCellofDay")),
      lblColInterval(ControlName("lbl", letter, "ColInterval"), "Col &Interval of Day:"),
      txtColInterval(ControlName("txt", letter, "ColInterval")),
      updColInterval(ControlName("upd", letter, "ColInterval"), txtColInterval,
                     model::kColIntervalOfDay.low, model::kColIntervalOfDay.dialogHigh),
      lblRowInterval(ControlName("lbl", letter, "RowInterval"), "&Row Interval of Day:"),
      txtRowInterval(ControlName("txt", letter, "RowInterval")),
      updRowInterval(ControlName("upd", letter, "RowInterval"), txtRowInterval,
                     model::kRowIntervalOfDay.low, model::kRowIntervalOfDay.dialogHigh),
      chkOutWeekday(ControlName("chk", letter, "OutWeekday"), "Output Name of &Weekday"),
      lblFirstCellofWeekday(ControlName("lbl", letter, "FirstCellofWeekday"),
                            "First Cell of Weekday:"),
      txtFirstCellofWeekday(ControlName("txt", letter, "FirstCellofWeekday")),
      lblWeekdayName(ControlName("lbl", letter, "WeekdayName"), "Weekday Name:"),
      cboWeekdayName(ControlName("cbo", letter, "WeekdayName")),
      chkOutMonth(ControlName("chk", letter, "OutMonth"), "Output Mo&nth"),
      lblFirstCellofMonth(ControlName("lbl", letter, "FirstCellofMonth"), "First Cell of Month:"),
      txtFirstCellofMonth(ControlName("txt", letter, "FirstCellofMonth")),
      lblMonthName(ControlName("lbl", letter, "MonthName"), "Month Name:"),
      cboMonthName(ControlName("cbo", letter, "MonthName")),
      chkOutYear(ControlName("chk", letter, "OutYear"), "Output Y&ear"),
      lblFirstCellofYear(ControlName("lbl", letter, "FirstCellofYear"), "First Cell of Year:"),
      txtFirstCellofYear(ControlName("txt", letter, "FirstCellofYear")),
      chkOutHoliday(ControlName("chk", letter, "OutHoliday"), "Output &Holiday"),
      lblFirstCellofHoliday(ControlName("lbl", letter, "FirstCellofHoliday"),
                            "First Cell of Holiday:"),
      txtFirstCellofHoliday(ControlName("txt", letter, "FirstCellofHoliday")),
      lblMultiHolidays(ControlName("lbl", letter, "MultiHolidays"),
                       "Multiple Holidays on the Same Day:"),
      cboMultiHolidays(ControlName("cbo", letter, "MultiHolidays")),
      lblHolidaySLabel(ControlName("lbl", letter, "HolidaySLabel"), "Holiday Sample:"),
      lblHolidaySample(ControlName("lbl", letter, "HolidaySample")),
      cmdChangeHoliday(ControlName("cmd", letter, "ChangeHoliday"), "Chan&ge"),
      lblHolidayProblems(ControlName("lbl", letter, "HolidayProblems")), names_(names)
{
    cboWeekdayName.entries = EntriesOf(names.Weekdays);
    cboMonthName.entries = EntriesOf(names.Months);
    cboFirstDayofWeek.entries = {"Sunday", "Monday"};
    cboMultiHolidays.entries = {"Overwrite", "Next Row", "Next Column"};
    texts_ = {&txtSheetName,       &txtFirstCellofDay,     &txtColInterval,
              &txtRowInterval,     &txtFirstCellofWeekday, &txtFirstCellofMonth,
              &txtFirstCellofYear, &txtFirstCellofHoliday};
    lists_ = {&cboFirstDayofWeek, &cboWeekdayName, &cboMonthName, &cboMultiHolidays};
    checks_ = {&chkOutCalendar, &chkOutWeekday, &chkOutMonth, &chkOutYear, &chkOutHoliday};
}

void ParameterTab::chkOutCalendar_Click()
{
    Enable(chkOutCalendar.checked,
           {&lblSheetName, &txtSheetName, &cmdSheets, &lblFirstDayofWeek, &cboFirstDayofWeek,
            &lblFirstCellofDay, &txtFirstCellofDay, &lblColInterval, &txtColInterval,
            &updColInterval, &lblRowInterval, &txtRowInterval, &updRowInterval, &chkOutWeekday,
            &chkOutMonth, &chkOutYear, &chkOutHoliday});
    chkOutWeekday_Click();
    chkOutMonth_Click();
    chkOutYear_Click();
    chkOutHoliday_Click();
}

void ParameterTab::chkOutWeekday_Click()
{
    Enable(IsOn(chkOutWeekday),
           {&lblFirstCellofWeekday, &txtFirstCellofWeekday, &lblWeekdayName, &cboWeekdayName});
}

void ParameterTab::chkOutMonth_Click()
{
    Enable(IsOn(chkOutMonth),
           {&lblFirstCellofMonth, &txtFirstCellofMonth, &lblMonthName, &cboMonthName});
}

void ParameterTab::chkOutYear_Click()
{
    Enable(IsOn(chkOutYear), {&lblFirstCellofYear, &txtFirstCellofYear});
}

void ParameterTab::chkOutHoliday_Click()
{
    Enable(IsOn(chkOutHoliday),
           {&lblFirstCellofHoliday, &txtFirstCellofHoliday, &lblMultiHolidays, &cboMultiHolidays,
            &lblHolidaySLabel, &cmdChangeHoliday, &lblHolidaySample});
}

void ParameterTab::ShowHolidaySample()
{
    lblHolidaySample.ShowText(holidays.Count() == 0 ? std::string() : holidays[0].Name);
}

void ParameterTab::Show(const model::CalendarParameters& parameters)
{
    txtSheetName.text = parameters.SheetName;
    cboFirstDayofWeek.selected = parameters.FirstDayOfWeek;
    txtFirstCellofDay.text = model::FormatCellRef(parameters.FirstCellOfDay);
    txtColInterval.text = std::to_string(parameters.ColIntervalOfDay);
    txtRowInterval.text = std::to_string(parameters.RowIntervalOfDay);
    chkOutWeekday.checked = parameters.OutWeekday;
    txtFirstCellofWeekday.text = model::FormatCellRef(parameters.FirstCellOfWeekday);
    SelectText(cboWeekdayName, EntryOf(names_.Weekdays, parameters.WeekdayName));
    chkOutMonth.checked = parameters.OutMonth;
    txtFirstCellofMonth.text = model::FormatCellRef(parameters.FirstCellOfMonth);
    SelectText(cboMonthName, EntryOf(names_.Months, parameters.MonthName));
    chkOutYear.checked = parameters.OutYear;
    txtFirstCellofYear.text = model::FormatCellRef(parameters.FirstCellOfYear);
    chkOutHoliday.checked = parameters.OutHoliday;
    txtFirstCellofHoliday.text = model::FormatCellRef(parameters.FirstCellOfHoliday);
    cboMultiHolidays.selected = parameters.MultiHolidays;
    holidays = parameters.Holidays;
    holidayChoice = parameters.ShownHolidays;
    ShowHolidaySample();
    chkOutCalendar.checked = parameters.Output;
    chkOutCalendar_Click();
    ClearChanged();
}

void ParameterTab::EnterBy(const std::function<void()>& show)
{
    const auto before = Values();
    std::vector<bool> changedBefore;
    changedBefore.reserve(before.size());
    for (const auto& [field, value] : before)
        changedBefore.push_back(field->changed);
    const holidays::HolidayList holidaysBefore = holidays;
    const holidays::HolidayChoice choiceBefore = holidayChoice;
    const bool holidaysChangedBefore = holidaysChanged;
    show();
    holidays = holidaysBefore;
    holidayChoice = choiceBefore;
    holidaysChanged = holidaysChangedBefore;
    ShowHolidaySample();
    const auto after = Values();
    for (std::size_t i = 0; i < after.size(); ++i)
        after[i].first->changed = changedBefore[i] || after[i].second != before[i].second;
}

void ParameterTab::Enter(const model::CalendarParameters& parameters)
{
    EnterBy([&] { Show(parameters); });
}

void ParameterTab::Save(model::CalendarParameters& parameters) const
{
    parameters.Output = chkOutCalendar.checked;
    if (!parameters.Output)
        return;
    parameters.SheetName = txtSheetName.text;
    parameters.FirstDayOfWeek = IndexOf(cboFirstDayofWeek);
    parameters.FirstCellOfDay = CellOf(txtFirstCellofDay);
    parameters.ColIntervalOfDay = IntervalOf(txtColInterval);
    parameters.RowIntervalOfDay = IntervalOf(txtRowInterval);
    parameters.OutWeekday = chkOutWeekday.checked;
    parameters.FirstCellOfWeekday = CellOf(txtFirstCellofWeekday);
    parameters.WeekdayName = IndexOf(cboWeekdayName);
    parameters.OutMonth = chkOutMonth.checked;
    parameters.FirstCellOfMonth = CellOf(txtFirstCellofMonth);
    parameters.MonthName = IndexOf(cboMonthName);
    parameters.OutYear = chkOutYear.checked;
    parameters.FirstCellOfYear = CellOf(txtFirstCellofYear);
    parameters.OutHoliday = chkOutHoliday.checked;
    parameters.FirstCellOfHoliday = CellOf(txtFirstCellofHoliday);
    parameters.MultiHolidays = IndexOf(cboMultiHolidays);
    parameters.Holidays = holidays;
    parameters.ShownHolidays = holidayChoice;
}

std::vector<std::pair<Control*, std::string>> ParameterTab::Values() const
{
    std::vector<std::pair<Control*, std::string>> values;
    for (TextBox* const box : texts_)
        values.emplace_back(box, box->text);
    for (ComboBox* const list : lists_)
        values.emplace_back(list, std::to_string(list->selected));
    for (CheckBox* const box : checks_)
        values.emplace_back(box, box->checked ? "on" : "off");
    return values;
}

bool ParameterTab::Changed() const
{
    const auto values = Values();
    return holidaysChanged || std::any_of(values.begin(), values.end(),
                                          [](const auto& one) { return one.first->changed; });
}

void ParameterTab::ClearChanged()
{
    holidaysChanged = false;
    for (const auto& [field, value] : Values())
        field->changed = false;
}

bool ParameterTab::IsOn(const CheckBox& inner) const
{
    return chkOutCalendar.checked && inner.checked;
}

// ---- the grid of months

YearlyTab::YearlyTab(const model::NameTables& names)
    : ParameterTab('Y', "YCalendar", "Output &Yearly Calendar", names),
      lblLayoutofMonths("lblLayoutofMonths", "&Layout of Months:"),
      cboLayoutofMonths("cboLayoutofMonths"),
      lblColIntervalofMonth("lblYColIntervalofMonth", "Col &Interval of Month:"),
      txtColIntervalofMonth("txtYColIntervalofMonth"),
      updColIntervalofMonth("updYColIntervalofMonth", txtColIntervalofMonth,
                            model::kColIntervalOfMonth.low, model::kColIntervalOfMonth.dialogHigh),
      lblRowIntervalofMonth("lblYRowIntervalofMonth", "&Row Interval of Month:"),
      txtRowIntervalofMonth("txtYRowIntervalofMonth"),
      updRowIntervalofMonth("updYRowIntervalofMonth", txtRowIntervalofMonth,
                            model::kRowIntervalOfMonth.low, model::kRowIntervalOfMonth.dialogHigh)
{
    cboLayoutofMonths.entries = {"1 x 12 Months", "2 x 6 Months", "3 x 4 Months",
                                 "4 x 3 Months",  "6 x 2 Months", "12 x 1 Months"};
    lists_.push_back(&cboLayoutofMonths);
    texts_.insert(texts_.end(), {&txtColIntervalofMonth, &txtRowIntervalofMonth});
}

void YearlyTab::chkOutCalendar_Click()
{
    ParameterTab::chkOutCalendar_Click();
    Enable(chkOutCalendar.checked, {&lblLayoutofMonths, &cboLayoutofMonths});
    if (chkOutCalendar.checked) {
        cboLayoutofMonths_Click();
        return;
    }
    EnableColInterval(false);
    EnableRowInterval(false);
}

void YearlyTab::cboLayoutofMonths_Click()
{
    if (!cboLayoutofMonths.HasSelection())
        return;
    EnableColInterval(HasSeveralColumns());
    EnableRowInterval(HasSeveralRows());
}

void YearlyTab::EnableColInterval(bool enabled)
{
    Enable(enabled, {&lblColIntervalofMonth, &txtColIntervalofMonth, &updColIntervalofMonth});
}

void YearlyTab::EnableRowInterval(bool enabled)
{
    Enable(enabled, {&lblRowIntervalofMonth, &txtRowIntervalofMonth, &updRowIntervalofMonth});
}

void YearlyTab::Show(const model::YearlyParameters& parameters)
{
    const auto* const layout =
        std::find(kMonthsAcross.begin(), kMonthsAcross.end(), parameters.MonthLayout);
    cboLayoutofMonths.selected =
        layout == kMonthsAcross.end() ? -1 : static_cast<int>(layout - kMonthsAcross.begin());
    txtColIntervalofMonth.text = std::to_string(parameters.ColIntervalOfMonth);
    txtRowIntervalofMonth.text = std::to_string(parameters.RowIntervalOfMonth);
    ParameterTab::Show(parameters);
}

void YearlyTab::Enter(const model::YearlyParameters& parameters)
{
    EnterBy([&] { Show(parameters); });
}

void YearlyTab::Save(model::YearlyParameters& parameters) const
{
    ParameterTab::Save(parameters);
    if (!parameters.Output)
        return;
    parameters.MonthLayout = MonthsAcross().value_or(kDefaultMonthsAcross);
    if (HasSeveralColumns())
        parameters.ColIntervalOfMonth = IntervalOf(txtColIntervalofMonth);
    if (HasSeveralRows())
        parameters.RowIntervalOfMonth = IntervalOf(txtRowIntervalofMonth);
}

std::optional<std::int16_t> YearlyTab::MonthsAcross() const
{
    if (!cboLayoutofMonths.HasSelection())
        return std::nullopt;
    return kMonthsAcross.at(static_cast<std::size_t>(cboLayoutofMonths.selected));
}

} // namespace orrery::ui
