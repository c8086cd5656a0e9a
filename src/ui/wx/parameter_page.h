#pragma once

#include "ui/parameter_tab.h"
#include "ui/wx/binding.h"

#include <wx/scrolwin.h>
#include <wx/sizer.h>

#include <string>

namespace orrery::ui::wx {

/// A page of the parameter dialog: the controls of one calendar. Controls that both calendars have
/// are in the same place on both pages. A page that does not fit its window can be scrolled.
class ParameterPage : public wxScrolledWindow {
public:
    /// `monthGrid` is the same tab if it has a grid of months, else nullptr.
    ParameterPage(wxWindow& parent, const std::string& name, Binder& binder, ParameterTab& tab,
                  YearlyTab* monthGrid, Handler onChangeHoliday);

    /// Aligns the fields of both pages, so that nothing jumps between tabs.
    void AlignWith(ParameterPage& other);
    /// Before this call the page requests the space that all its controls need.
    void AllowScrolling();

private:
    wxSizer* BuildCalendar(ParameterTab& tab, YearlyTab* monthGrid);
    wxSizer* BuildOutputs(ParameterTab& tab, Handler onChangeHoliday);

    Binder& binder_;
    wxFlexGridSizer* fields_ = nullptr; ///< the left side
};

} // namespace orrery::ui::wx
