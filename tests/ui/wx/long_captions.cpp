#include "long_captions.h"

#include "ui/about_form.h"
#include "ui/country_form.h"
#include "ui/holiday_form.h"
#include "ui/import_form.h"
#include "ui/own_day_form.h"
#include "ui/parameter_form.h"
#include "ui/tip_form.h"

#include <initializer_list>

namespace orrery::ui::wx {
namespace {

void Lengthen(Control& control)
{
    if (!control.caption.empty())
        control.caption.append(control.caption.size() * 2 / 5 + 1, 'm');
}

void Lengthen(std::initializer_list<Control*> controls)
{
    for (Control* const control : controls)
        Lengthen(*control);
}

void Lengthen(ParameterTab& tab)
{
    Lengthen({&tab.chkOutCalendar, &tab.lblSheetName, &tab.lblFirstDayofWeek,
              &tab.lblFirstCellofDay, &tab.lblColInterval, &tab.lblRowInterval, &tab.chkOutWeekday,
              &tab.lblFirstCellofWeekday, &tab.lblWeekdayName, &tab.chkOutMonth,
              &tab.lblFirstCellofMonth, &tab.lblMonthName, &tab.chkOutYear, &tab.lblFirstCellofYear,
              &tab.chkOutHoliday, &tab.lblFirstCellofHoliday, &tab.lblMultiHolidays,
              &tab.lblHolidaySLabel, &tab.cmdChangeHoliday});
}

} // namespace

void Lengthen(MainForm& form)
{
    Lengthen({&form.lblTemplateFile, &form.cmdOpenTemplate, &form.lblYear, &form.lblParameter,
              &form.cmdModify, &form.cmdSave, &form.cmdGenerate, &form.chkPdf, &form.chkPreview,
              &form.cmdHelp, &form.cmdAbout, &form.cmdExit, &form.lblEmptyFolder,
              &form.cmdCopyTemplates, &form.cmdCancel, &form.cmdOpenFolder, &form.cmdUseProposal,
              &form.cmdLookFirst});
}

void TestDesktop::ShowModal(ParameterForm& form)
{
    if (longCaptions) {
        Lengthen(form.monthly);
        Lengthen(form.yearly);
        Lengthen({&form.yearly.lblLayoutofMonths, &form.yearly.lblColIntervalofMonth,
                  &form.yearly.lblRowIntervalofMonth});
        Lengthen({&form.cmdOK, &form.cmdCancel});
    }
    WxDesktop::ShowModal(form);
}

void TestDesktop::ShowModal(HolidayForm& form)
{
    if (longCaptions) {
        HolidayRules& rules = form.rules;
        Lengthen({&form.lblHolidayFile, &form.lblHolidays, &form.lblHolidayList, &form.cmdCountry,
                  &form.cmdOK, &form.cmdCancel, &rules.lblFind, &rules.lblRegion,
                  &rules.lblLanguage, &rules.lblKinds, &rules.lblRules, &rules.lblRule});
        HolidayAdditions& additions = form.additions;
        Lengthen({&additions.cmdFiles, &additions.cmdAddDay, &additions.cmdEditDay,
                  &additions.cmdRemove});
        for (CheckBox& box : rules.chkKinds)
            Lengthen(box);
    }
    WxDesktop::ShowModal(form);
}

void TestDesktop::ShowModal(CountryForm& form)
{
    if (longCaptions)
        Lengthen({&form.lblFind, &form.lblPlaces, &form.cmdOK, &form.cmdCancel});
    WxDesktop::ShowModal(form);
}

void TestDesktop::ShowModal(OwnDayForm& form)
{
    if (longCaptions)
        Lengthen({&form.lblName, &form.lblKind, &form.lblOrdinal, &form.lblWeekday, &form.lblDay,
                  &form.lblMonth, &form.lblYear, &form.lblLastDay, &form.lblLastMonth,
                  &form.lblLastYear, &form.cmdOK, &form.cmdCancel});
    WxDesktop::ShowModal(form);
}

void TestDesktop::ShowModal(ImportForm& form)
{
    if (longCaptions)
        Lengthen({&form.lblDateOrder, &form.lblYears, &form.lblEvents, &form.lblPassedOver,
                  &form.lblTarget, &form.chkReplace, &form.cmdOK, &form.cmdCancel});
    WxDesktop::ShowModal(form);
}

void TestDesktop::ShowModal(TipForm& form)
{
    if (longCaptions)
        Lengthen({&form.lblDidYouKnow, &form.chkLoadTipsAtStartup, &form.cmdNextTip, &form.cmdOK});
    WxDesktop::ShowModal(form);
}

void TestDesktop::ShowModal(AboutForm& form)
{
    if (longCaptions)
        Lengthen(
            {&form.lblSysVer, &form.lblCopyright, &form.lblEmailTo, &form.lblWeb, &form.cmdOK});
    WxDesktop::ShowModal(form);
}

} // namespace orrery::ui::wx
