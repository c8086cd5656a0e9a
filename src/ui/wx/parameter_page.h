#pragma once

#include "ui/parameter_tab.h"
#include "ui/wx/binding.h"

#include <wx/scrolwin.h>
#include <wx/sizer.h>

#include <functional>
#include <string>
#include <vector>

namespace orrery::ui::wx {

/// What a page asks its dialog for.
struct PageActions {
    Handler changeHoliday;
    std::function<std::vector<std::string>()> listSheets; ///< of the template
    std::function<void(const std::string&)> chooseSheet;
};

/// A page of the parameter dialog: the controls of one calendar. Controls that both calendars have
/// are in the same place on both pages. A page that does not fit its window can be scrolled.
class ParameterPage : public wxScrolledWindow {
public:
    /// `monthGrid` is the same tab if it has a grid of months, else nullptr.
    ParameterPage(wxWindow& parent, const std::string& name, Binder& binder, ParameterTab& tab,
                  YearlyTab* monthGrid, PageActions actions);

    /// Aligns the fields of both pages, so that nothing jumps between tabs.
    void AlignWith(ParameterPage& other);
    /// Before this call the page requests the space that all its controls need.
    void AllowScrolling();
    /// Shows beside the labels of cells how these are outlined on the model sheet.
    void ShowSwatches(bool isShown);
    /// Completes the sheet's name while it is typed.
    void CompleteSheetNames(const std::vector<std::string>& names);

private:
    wxSizer* BuildCalendar(YearlyTab* monthGrid);
    wxSizer* BuildOutputs();
    wxSizer* BuildSheetField();
    void ListSheets();
    void PaintSwatches();

    Binder& binder_;
    ParameterTab& tab_;
    const PageActions actions_;
    wxTextCtrl* sheetName_ = nullptr;
    bool hasSwatches_ = false;
    wxFlexGridSizer* fields_ = nullptr; ///< the left side
};

} // namespace orrery::ui::wx
