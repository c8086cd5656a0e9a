#pragma once

#include "ui/about_form.h"
#include "ui/desktop.h"
#include "ui/holiday_form.h"
#include "ui/import_form.h"
#include "ui/own_day_form.h"
#include "ui/parameter_form.h"
#include "ui/tip_form.h"

#include <wx/window.h>

#include <string>

/// Each function shows a dialog over its parent and returns when the dialog is closed.
namespace orrery::ui::wx {

/// What every dialog needs.
struct DialogContext {
    wxWindow* parent;
    Desktop& desktop;
    const std::string& settingsFile; ///< stores the placement of resizable dialogs
};

void ShowParameterDialog(const DialogContext& context, ParameterForm& form);
void ShowHolidayDialog(const DialogContext& context, HolidayForm& form);
void ShowCountryDialog(const DialogContext& context, CountryForm& form);
void ShowOwnDayDialog(const DialogContext& context, OwnDayForm& form);
void ShowImportDialog(const DialogContext& context, ImportForm& form);
void ShowTipDialog(const DialogContext& context, TipForm& form);
void ShowAboutDialog(const DialogContext& context, AboutForm& form);

} // namespace orrery::ui::wx
