#pragma once

#include <wx/window.h>

#include <string>
#include <vector>

class wxDataViewListCtrl;
class wxListBox;

namespace orrery::ui::wx {

/// A list of lines whose columns are separated by tabs, shown in the system's own control.
class TabbedList {
public:
    /// `header` is the text of the label above the list.
    TabbedList(wxWindow& parent, const std::vector<int>& tabStops, const std::string& header);

    wxWindow& Window() const;
    void SetLines(const std::vector<std::string>& lines);

private:
    // The one that the system has; a list box if it supports tab stops.
    [[maybe_unused]] wxDataViewListCtrl* columns_ = nullptr;
    [[maybe_unused]] wxListBox* box_ = nullptr;
    std::vector<std::string> lines_; ///< the lines shown
};

} // namespace orrery::ui::wx
