#include <windows.h>

#include "ui/wx/native/tabbed_list.h"
#include "ui/wx/native/text.h"

#include <wx/listbox.h>

namespace orrery::ui::wx {
namespace {

constexpr UINT kSetTabStops = 402; // LB_SETTABSTOPS, in quarters of a character's width

} // namespace

// The toolkit's list boxes already have the style LBS_USETABSTOPS.
TabbedList::TabbedList(wxWindow& parent, const std::vector<int>& tabStops,
                       const std::string& /*header*/)
    : box_(new wxListBox(&parent, wxID_ANY))
{
    std::vector<int> stops = tabStops;
    ::SendMessageA(box_->GetHWND(), kSetTabStops, stops.size(),
                   reinterpret_cast<LPARAM>(stops.data()));
}

wxWindow& TabbedList::Window() const
{
    return *box_;
}

void TabbedList::SetLines(const std::vector<std::string>& lines)
{
    if (lines == lines_)
        return;
    lines_ = lines;
    wxArrayString rows;
    for (const std::string& line : lines)
        rows.push_back(ToWx(line));
    box_->Set(rows);
}

} // namespace orrery::ui::wx
