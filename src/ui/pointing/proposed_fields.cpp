#include "ui/pointing/proposed_fields.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace orrery::ui {
namespace {

/// The control of a parameter: a check box, or a label with a text box or a list.
struct ControlOfKey {
    std::string_view key;
    const Control* caption = nullptr;
    const CheckBox* check = nullptr;
    const TextBox* text = nullptr;
    const ComboBox* list = nullptr;

    const Control* Field() const
    {
        if (check != nullptr)
            return check;
        return text != nullptr ? static_cast<const Control*>(text) : list;
    }
};

std::vector<ControlOfKey> ControlsOf(const ParameterTab& tab)
{
    const auto check = [](std::string_view key, const CheckBox& box) {
        return ControlOfKey{key, &box, &box, nullptr, nullptr};
    };
    const auto text = [](std::string_view key, const Label& label, const TextBox& box) {
        return ControlOfKey{key, &label, nullptr, &box, nullptr};
    };
    const auto list = [](std::string_view key, const Label& label, const ComboBox& box) {
        return ControlOfKey{key, &label, nullptr, nullptr, &box};
    };
    std::vector<ControlOfKey> controls{
        check("Output", tab.chkOutCalendar),
        text("SheetName", tab.lblSheetName, tab.txtSheetName),
        list("FirstDayOfWeek", tab.lblFirstDayofWeek, tab.cboFirstDayofWeek),
        text("FirstCellOfDay", tab.lblFirstCellofDay, tab.txtFirstCellofDay),
        text("ColIntervalOfDay", tab.lblColInterval, tab.txtColInterval),
        text("RowIntervalOfDay", tab.lblRowInterval, tab.txtRowInterval),
        check("OutWeekday", tab.chkOutWeekday),
        text("FirstCellOfWeekday", tab.lblFirstCellofWeekday, tab.txtFirstCellofWeekday),
        list("WeekdayName", tab.lblWeekdayName, tab.cboWeekdayName),
        check("OutMonth", tab.chkOutMonth),
        text("FirstCellOfMonth", tab.lblFirstCellofMonth, tab.txtFirstCellofMonth),
        list("MonthName", tab.lblMonthName, tab.cboMonthName),
        check("OutYear", tab.chkOutYear),
        text("FirstCellOfYear", tab.lblFirstCellofYear, tab.txtFirstCellofYear),
        check("OutHoliday", tab.chkOutHoliday),
        text("FirstCellOfHoliday", tab.lblFirstCellofHoliday, tab.txtFirstCellofHoliday),
        list("MultiHolidays", tab.lblMultiHolidays, tab.cboMultiHolidays)};
    if (const auto* const grid = dynamic_cast<const YearlyTab*>(&tab)) {
        controls.push_back(list("MonthLayout", grid->lblLayoutofMonths, grid->cboLayoutofMonths));
        controls.push_back(
            text("ColIntervalOfMonth", grid->lblColIntervalofMonth, grid->txtColIntervalofMonth));
        controls.push_back(
            text("RowIntervalOfMonth", grid->lblRowIntervalofMonth, grid->txtRowIntervalofMonth));
    }
    return controls;
}

/// Without the mark of the mnemonic and the colon.
std::string PlainCaption(const Control& control)
{
    std::string text = control.caption;
    std::erase(text, '&');
    if (text.ends_with(':'))
        text.pop_back();
    return text;
}

std::string ValueOf(const ControlOfKey& control)
{
    if (control.check != nullptr)
        return control.check->checked ? "on" : "off";
    if (control.text != nullptr)
        return control.text->text;
    if (!control.list->HasSelection())
        return "not chosen";
    return control.list->entries.at(static_cast<std::size_t>(control.list->selected));
}

std::string AskingFor(const ControlOfKey& control)
{
    return (control.list != nullptr ? "Please choose " : "Please click ") +
           PlainCaption(*control.caption);
}

} // namespace

ProposedFields FillWithProposal(ParameterTab& tab, const look::Proposal& proposal)
{
    auto* const yearly = dynamic_cast<YearlyTab*>(&tab);
    const std::string calendar = yearly != nullptr ? "yearly" : "monthly";
    const bool isFound =
        yearly != nullptr ? proposal.sets.Yearly.Output : proposal.sets.Monthly.Output;
    if (!isFound)
        return {{"No " + calendar +
                 " calendar was found on the sheets. Please click the first cell of day."},
                &tab.txtFirstCellofDay};
    if (yearly != nullptr)
        yearly->Enter(proposal.sets.Yearly);
    else
        tab.Enter(proposal.sets.Monthly);

    const auto controls = ControlsOf(tab);
    ProposedFields fields;
    std::vector<std::string> reasons;
    for (const look::Reason& reason : proposal.reasons) {
        const auto control = std::ranges::find_if(controls, [&](const ControlOfKey& one) {
            return reason.parameter == calendar + '.' + std::string(one.key);
        });
        if (control == controls.end() || !control->Field()->enabled)
            continue;
        if (proposal.unknown.contains(reason.parameter)) {
            fields.sentences.push_back(AskingFor(*control) + ": " + reason.because + ".");
            fields.missing = fields.missing != nullptr ? fields.missing : control->Field();
        }
        else
            reasons.push_back(PlainCaption(*control->caption) + " is " + ValueOf(*control) + ": " +
                              reason.because + ".");
    }
    fields.sentences.insert(fields.sentences.end(), reasons.begin(), reasons.end());
    return fields;
}

} // namespace orrery::ui
