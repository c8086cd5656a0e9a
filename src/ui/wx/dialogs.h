#pragma once

#include "ui/about_form.h"
#include "ui/desktop.h"
#include "ui/holiday_form.h"
#include "ui/parameter_form.h"
#include "ui/tip_form.h"

#include <wx/window.h>

#include <string>

/// Each function shows a dialog over its parent and returns when it is closed.
namespace orrery::ui::wx {

/// What every dialog gets.
struct DialogPlace {
    wxWindow* parent;
    Desktop& desktop;
    const std::string& settingsFile; ///< remembers the sizes of dialogs that can be resized
};

void ShowParameterDialog(const DialogPlace& place, ParameterForm& form);
void ShowHolidayDialog(const DialogPlace& place, HolidayForm& form);
void ShowTipDialog(const DialogPlace& place, TipForm& form);
void ShowAboutDialog(const DialogPlace& place, AboutForm& form);

} // namespace orrery::ui::wx
