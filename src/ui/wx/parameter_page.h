#pragma once

#include "ui/parameter_tab.h"
#include "ui/wx/binding.h"

#include <wx/scrolwin.h>
#include <wx/sizer.h>

#include <string>

namespace orrery::ui::wx {

/// A page of the parameter dialog: the controls of one calendar. What both calendars have stands in
/// the same place on both pages. A page that its window has no room for can be scrolled.
class ParameterPage : public wxScrolledWindow {
public:
    /// `monthGrid` is the tab again where it has one, else nullptr.
    ParameterPage(wxWindow& parent, const std::string& name, Binder& binder, ParameterTab& tab,
                  YearlyTab* monthGrid, Handler onChangeHoliday);

    /// Lets the fields of both pages begin in the same place, so that nothing jumps between tabs.
    void AlignWith(ParameterPage& other);
    /// Until then the page asks for the room that all of it needs.
    void AllowScrolling();

private:
    wxSizer* BuildCalendar(ParameterTab& tab, YearlyTab* monthGrid);
    wxSizer* BuildOutputs(ParameterTab& tab, Handler onChangeHoliday);

    Binder& binder_;
    wxFlexGridSizer* fields_ = nullptr; ///< the left side
};

} // namespace orrery::ui::wx
