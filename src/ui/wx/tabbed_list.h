#pragma once

#include <wx/window.h>

#include <string>
#include <vector>

class wxDataViewListCtrl;
class wxListBox;

namespace orrery::ui::wx {

/// A list of lines whose columns are separated by tabs, in the control that the system has for it.
class TabbedList {
public:
    /// `header` is the text that stands above the list as a label.
    TabbedList(wxWindow& parent, const std::vector<int>& tabStops, const std::string& header);

    wxWindow& Window() const;
    void SetLines(const std::vector<std::string>& lines);

private:
    [[maybe_unused]] wxDataViewListCtrl* columns_ =
        nullptr;                                ///< where a list box knows no tab stops
    [[maybe_unused]] wxListBox* box_ = nullptr; ///< where it knows them
    std::vector<std::string> lines_;            ///< on show
};

} // namespace orrery::ui::wx
