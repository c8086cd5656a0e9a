#pragma once

#include "app/working_sets.h"
#include "model/name_lists.h"
#include "ui/desktop.h"
#include "ui/form.h"
#include "ui/parameter_checks.h"
#include "ui/parameter_tab.h"

#include <optional>
#include <string>

namespace orrery::ui {

/// The dialog in which the user edits both sets of a template (frmParameter).
class ParameterForm : public Form {
public:
    /// Does what `Form_Load` does. Everything referred to outlives the form.
    ParameterForm(app::WorkingSets& working, const model::NameTables& names,
                  app::TemplatePlace place, Desktop& desktop);

    /// The checks of a tab, in their order; the first that fails is reported, and the tab and the
    /// focus go to its control. Throw as `CheckMonthly` and `CheckYearly` do.
    bool ValidateMParameters();
    bool ValidateYParameters();
    /// Write the controls of a tab into its record.
    void SaveMParameters();
    void SaveYParameters();

    // The holiday viewer calls these after a change.
    void ShowMHolidaySample() { monthly.ShowHolidaySample(); }
    void ShowYHolidaySample() { yearly.ShowHolidaySample(); }
    void SetMHolidayChanged() { monthly.holidaysChanged = true; }
    void SetYHolidayChanged() { yearly.holidaysChanged = true; }

    void cmdMChangeHoliday_Click();
    void cmdYChangeHoliday_Click();
    /// Checks and stores the monthly tab, then the yearly one; what was stored stays stored.
    void cmdOK_Click();
    void cmdCancel_Click() { Close(); }
    /// The user selected a tab of the strip: 1 monthly, 2 yearly.
    void tabOrrery_Click(int index);

    /// The strip: the selected tab loses its mnemonic, the other keeps one.
    struct TabStrip : Control {
        using Control::Control;
        int selected = 1; ///< 1 monthly, 2 yearly; also the frame on show (fraOrrery)
        std::string monthlyCaption;
        std::string yearlyCaption;
    };

    TabStrip tabOrrery{"tabOrrery"};
    ParameterTab monthly;
    YearlyTab yearly;
    Button cmdOK{"cmdOK", "OK"};
    Button cmdCancel{"cmdCancel", "&Cancel"};

private:
    void Form_Load();
    bool Accept(const std::optional<Problem>& problem, int tab);

    app::WorkingSets& working_;
    const app::TemplatePlace place_;
    Desktop& desktop_;
};

} // namespace orrery::ui
