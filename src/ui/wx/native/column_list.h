#pragma once

#include <wx/window.h>

#include <string>
#include <vector>

class wxDataViewListCtrl;
class wxListView;

namespace orrery::ui::wx {

/// A column of a list.
struct ColumnTitle {
    std::string text;
    int width; ///< pixels at first; the user can change it
};

/// A list of lines whose cells are separated by tabs, below the titles of its columns, shown in the
/// system's own control.
class ColumnList {
public:
    ColumnList(wxWindow& parent, const std::vector<ColumnTitle>& columns);

    wxWindow& Window() const;
    void SetLines(const std::vector<std::string>& lines);

private:
    // The one that the system has.
    [[maybe_unused]] wxDataViewListCtrl* cells_ = nullptr;
    [[maybe_unused]] wxListView* report_ = nullptr;
    std::vector<std::string> lines_; ///< the lines shown
};

} // namespace orrery::ui::wx
