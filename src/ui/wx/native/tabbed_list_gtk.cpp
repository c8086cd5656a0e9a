#include "ui/wx/native/tabbed_list.h"

#include "ui/wx/native/text.h"

#include <wx/dataview.h>

namespace orrery::ui::wx {
namespace {

constexpr int kCellMargin = 5; // pixels between the list's edge and its text

/// Where the words of the header begin in its label, in pixels.
std::vector<int> WordStarts(const wxWindow& parent, const wxString& header)
{
    std::vector<int> starts;
    for (size_t i = 0; i < header.size(); ++i) {
        if (header[i] != ' ' && (i == 0 || header[i - 1] == ' '))
            starts.push_back(parent.GetTextExtent(header.Left(i)).x);
    }
    return starts;
}

wxVector<wxVariant> SplitLine(const std::string& line, unsigned columns)
{
    wxVector<wxVariant> cells;
    wxString rest = ToWx(line);
    for (unsigned column = 1; column < columns; ++column) {
        cells.push_back(rest.BeforeFirst('\t'));
        rest = rest.AfterFirst('\t');
    }
    cells.push_back(rest);
    return cells;
}

} // namespace

// The system's list has columns instead of tab stops; they begin below the words of the header.
TabbedList::TabbedList(wxWindow& parent, const std::vector<int>& /*tabStops*/,
                       const std::string& header)
    : columns_(new wxDataViewListCtrl(&parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                      wxDV_SINGLE | wxDV_NO_HEADER))
{
    const std::vector<int> starts = WordStarts(parent, ToWx(header));
    for (size_t i = 0; i < starts.size(); ++i) {
        const bool last = i + 1 == starts.size();
        const int begin = i == 0 ? kCellMargin : starts[i];
        const int width = last ? wxCOL_WIDTH_AUTOSIZE : starts[i + 1] - begin;
        columns_->AppendTextColumn("", wxDATAVIEW_CELL_INERT, width, wxALIGN_LEFT, 0);
    }
}

wxWindow& TabbedList::Window() const
{
    return *columns_;
}

void TabbedList::SetLines(const std::vector<std::string>& lines)
{
    if (lines == lines_)
        return;
    lines_ = lines;
    columns_->DeleteAllItems();
    for (const std::string& line : lines)
        columns_->AppendItem(SplitLine(line, columns_->GetColumnCount()));
}

} // namespace orrery::ui::wx
