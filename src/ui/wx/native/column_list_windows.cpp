#include "ui/wx/native/column_list.h"
#include "ui/wx/native/text.h"

#include <wx/listctrl.h>
#include <wx/tokenzr.h>
#include <wx/wupdlock.h>

#include <utility>

namespace orrery::ui::wx {

ColumnList::ColumnList(wxWindow& parent, const std::vector<ColumnTitle>& columns,
                       std::function<void(int)> onSelect)
    : report_(new wxListView(&parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                             wxLC_REPORT | wxLC_SINGLE_SEL)),
      onSelect_(std::move(onSelect))
{
    report_->Bind(wxEVT_LIST_ITEM_SELECTED, [this, list = report_](wxListEvent& event) {
        if (!list->IsBeingDeleted())
            TakeSelection(static_cast<int>(event.GetIndex()));
    });
    for (const ColumnTitle& column : columns)
        report_->AppendColumn(ToWx(column.text), wxLIST_FORMAT_LEFT, column.width);
}

wxWindow& ColumnList::Window() const
{
    return *report_;
}

void ColumnList::SetLines()
{
    const wxWindowUpdateLocker paintsOnce(report_);
    report_->DeleteAllItems();
    for (const std::string& line : lines_) {
        const long row = report_->GetItemCount();
        int column = 0;
        for (const wxString& cell : wxStringTokenize(ToWx(line), "\t", wxTOKEN_RET_EMPTY_ALL)) {
            if (column == 0)
                report_->InsertItem(row, cell);
            else if (column < report_->GetColumnCount())
                report_->SetItem(row, column, cell);
            ++column;
        }
    }
}

void ColumnList::Select(int line)
{
    report_->Select(line);
    report_->Focus(line); // arrow keys move on from it
}

} // namespace orrery::ui::wx
