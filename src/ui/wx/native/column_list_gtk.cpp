#include "ui/wx/native/column_list.h"
#include "ui/wx/native/text.h"

#include <wx/dataview.h>
#include <wx/tokenzr.h>

namespace orrery::ui::wx {

ColumnList::ColumnList(wxWindow& parent, const std::vector<ColumnTitle>& columns)
    : cells_(
          new wxDataViewListCtrl(&parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxDV_SINGLE))
{
    for (const ColumnTitle& column : columns)
        cells_
            ->AppendTextColumn(ToWx(column.text), wxDATAVIEW_CELL_INERT, column.width, wxALIGN_LEFT,
                               wxDATAVIEW_COL_RESIZABLE)
            ->GetRenderer()
            ->EnableEllipsize(wxELLIPSIZE_END);
}

wxWindow& ColumnList::Window() const
{
    return *cells_;
}

void ColumnList::SetLines(const std::vector<std::string>& lines)
{
    if (lines == lines_)
        return;
    lines_ = lines;
    cells_->DeleteAllItems();
    for (const std::string& line : lines) {
        wxVector<wxVariant> row;
        for (const wxString& cell : wxStringTokenize(ToWx(line), "\t", wxTOKEN_RET_EMPTY_ALL))
            row.push_back(cell);
        row.resize(cells_->GetColumnCount());
        cells_->AppendItem(row);
    }
}

} // namespace orrery::ui::wx
