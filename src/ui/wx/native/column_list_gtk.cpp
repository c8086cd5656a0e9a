#include "ui/wx/native/column_list.h"
#include "ui/wx/native/text.h"

#include <wx/dataview.h>
#include <wx/tokenzr.h>

#include <utility>

namespace orrery::ui::wx {

ColumnList::ColumnList(wxWindow& parent, const std::vector<ColumnTitle>& columns,
                       std::function<void(int)> onSelect)
    : cells_(
          new wxDataViewListCtrl(&parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxDV_SINGLE)),
      onSelect_(std::move(onSelect))
{
    cells_->Bind(wxEVT_DATAVIEW_SELECTION_CHANGED, [this, list = cells_](wxDataViewEvent&) {
        if (!list->IsBeingDeleted())
            TakeSelection(list->GetSelectedRow());
    });
    for (const ColumnTitle& column : columns) {
        cells_
            ->AppendTextColumn(ToWx(column.text), wxDATAVIEW_CELL_INERT, column.width, wxALIGN_LEFT,
                               wxDATAVIEW_COL_RESIZABLE)
            ->GetRenderer()
            ->EnableEllipsize(wxELLIPSIZE_END);
    }
}

wxWindow& ColumnList::Window() const
{
    return *cells_;
}

void ColumnList::SetLines()
{
    cells_->DeleteAllItems();
    for (const std::string& line : lines_) {
        wxVector<wxVariant> row;
        for (const wxString& cell : wxStringTokenize(ToWx(line), "\t", wxTOKEN_RET_EMPTY_ALL))
            row.push_back(cell);
        row.resize(cells_->GetColumnCount());
        cells_->AppendItem(row);
    }
}

void ColumnList::Select(int line)
{
    const wxDataViewItem item = cells_->RowToItem(line);
    cells_->SetCurrentItem(item); // arrow keys move on from it
    cells_->Select(item);
    cells_->EnsureVisible(item);
}

} // namespace orrery::ui::wx
