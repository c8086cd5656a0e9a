#pragma once

#include "app/working_sets.h"
#include "book/engines.h"
#include "model/name_lists.h"
#include "ui/desktop.h"
#include "ui/form.h"
#include "ui/parameter_checks.h"
#include "ui/parameter_tab.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

namespace orrery::ui {

/// The dialog in which the user edits both sets of a template (frmParameter).
class ParameterForm : public Form {
public:
    /// Also does what `Form_Load` should. The references must outlive the form.
    ParameterForm(app::WorkingSets& working, const model::NameTables& names,
                  app::TemplateLocation location, book::Engines& engines, Desktop& desktop);

    /// Fills both tabs as the user would: nothing is stored before OK.
    void FillWith(const model::ParameterSets& sets);

    /// Run the checks of a tab, in order. Report the first that fails, show its tab and move the
    /// focus to its control. Throw like `CheckMonthly` and `CheckYearly`.
    bool ValidateMParameters();
    bool ValidateYParameters();
    /// Store the controls of a tab in its set.
    void SaveMParameters();
    void SaveYParameters();

    // Called by the holiday dialog after a change.
    void ShowMHolidaySample() { monthly.ShowHolidaySample(); }
    void ShowYHolidaySample() { yearly.ShowHolidaySample(); }
    void SetMHolidayChanged() { monthly.holidaysChanged = true; }
    void SetYHolidayChanged() { yearly.holidaysChanged = true; }

    void cmdMChangeHoliday_Click();
    void cmdYChangeHoliday_Click();
    /// Checks and stores the monthly tab, then the yearly one. If the yearly tab fails, the monthly
    /// set stays stored.
    void cmdOK_Click();
    void cmdCancel_Click() { Close(); }
    /// The user selected a tab: 1 monthly, 2 yearly.
    void tabOrrery_Click(int index);
    ParameterTab& SelectedTab();

    /// Only the tab that is not selected has a mnemonic.
    struct TabStrip : Control {
        using Control::Control;
        int selected = 1; ///< 1 monthly, 2 yearly; also the visible frame (fraOrrery)
        std::string monthlyCaption;
        std::string yearlyCaption;
    };

    TabStrip tabOrrery{"tabOrrery"};
    ParameterTab monthly;
    YearlyTab yearly;
    Button cmdOK{"cmdOK", "OK"};
    Button cmdCancel{"cmdCancel", "&Cancel"};

    // What the model sheets are shown by.
    std::filesystem::path TemplatePath() const;
    book::Engines& Engines() const { return engines_; }
    const model::NameTables& Names() const { return names_; }
    const model::ParameterSets& Sets() const { return working_.sets; }

    /// Before the dialog is shown: the year from which the holiday dialog tells next days, if any.
    void SetYear(std::optional<std::int16_t> year) { year_ = year; }
    /// Before the dialog is shown: it opens with the proposal for both tabs in its fields.
    void ShowProposal() { opensWithProposal_ = true; }
    bool OpensWithProposal() const { return opensWithProposal_; }

private:
    void Form_Load();
    /// True without a problem; else reports it, shows its tab and moves the focus there.
    bool Passes(const std::optional<Problem>& problem, int tab);

    app::WorkingSets& working_;
    const model::NameTables& names_;
    const app::TemplateLocation location_;
    book::Engines& engines_;
    Desktop& desktop_;
    std::optional<std::int16_t> year_;
    bool opensWithProposal_ = false;
};

} // namespace orrery::ui
