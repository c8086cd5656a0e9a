#pragma once

#include "ui/main/main_form.h"
#include "ui/wx/binding.h"

#include <wx/sizer.h>

namespace orrery::ui::wx {

/// Creates the bar above the preview, which says what was found in a template without parameters:
/// a text of as many lines as it needs, and the two buttons below it. It takes no place while they
/// are hidden. The parent lays it out; form and binder outlive it.
wxSizer* MakeProposalBar(wxWindow& parent, MainForm& form, Binder& binder);

} // namespace orrery::ui::wx
