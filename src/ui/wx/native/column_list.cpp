#include "ui/wx/native/column_list.h"

#include <utility>

namespace orrery::ui::wx {

void ColumnList::Show(const std::vector<std::string>& lines, int selected)
{
    if (lines == lines_ && selected == selected_)
        return;
    isUpdating_ = true;
    if (lines != lines_) {
        lines_ = lines;
        SetLines();
    }
    selected_ = selected;
    if (selected >= 0)
        Select(selected);
    isUpdating_ = false;
}

void ColumnList::TakeSelection(int line)
{
    if (isUpdating_ || line < 0 || line == selected_)
        return;
    selected_ = line;
    onSelect_(line);
}

} // namespace orrery::ui::wx
