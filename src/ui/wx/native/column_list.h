#pragma once

#include <wx/window.h>

#include <functional>
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
    /// `onSelect` gets the index of a line that the user selects.
    ColumnList(wxWindow& parent, const std::vector<ColumnTitle>& columns,
               std::function<void(int)> onSelect);

    wxWindow& Window() const;
    /// Shows the lines and selects one; with a negative index none.
    void Show(const std::vector<std::string>& lines, int selected);

private:
    void SetLines();
    void Select(int line);
    /// The system selected a line, for the user or for the program.
    void TakeSelection(int line);

    // The one that the system has.
    [[maybe_unused]] wxDataViewListCtrl* cells_ = nullptr;
    [[maybe_unused]] wxListView* report_ = nullptr;
    std::function<void(int)> onSelect_;
    std::vector<std::string> lines_; ///< the lines shown
    int selected_ = -1;
    bool isUpdating_ = false; ///< the program selects, not the user
};

} // namespace orrery::ui::wx
