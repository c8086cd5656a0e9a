#include "ui/pointing/sheet_guide.h"

#include "util/text.h"

#include <algorithm>

namespace orrery::ui {

using book::CellAddress;
using book::CellRange;

SheetGuide::SheetGuide(ParameterForm& form, double now)
    : form_(form), now_(now), sheets_(form.Engines(), form.TemplatePath(), now),
      monthly_(form.monthly, form.Names()), yearly_(form.yearly, form.Names())
{
    chkSheet.checked = true;
    txtReasons.visible = false;
}

TabPointer& SheetGuide::Pointer()
{
    return &form_.SelectedTab() == &form_.monthly ? monthly_ : yearly_;
}

std::string SheetGuide::SheetName()
{
    return form_.SelectedTab().txtSheetName.text;
}

CellRange SheetGuide::MarkedRange()
{
    CellRange range{{1, 1}, {1, 1}};
    for (const MarkedCell& mark : Pointer().Marks())
        range.Widen(mark.cell);
    return range;
}

void SheetGuide::Refresh()
{
    TabPointer& pointer = Pointer();
    const bool isOtherTab = shownTab_ != form_.tabOrrery.selected;
    if (pointer.Update() || isOtherTab)
        ++version_;
    shownTab_ = form_.tabOrrery.selected;
    const auto shownBefore = sheets_.Version();
    sheets_.Show(SheetName(), MarkedRange());
    if (sheets_.Version() != shownBefore)
        SetCursor(cursor_);
    txtReasons.text = reasons_.at(static_cast<std::size_t>(shownTab_ - 1));
    txtReasons.visible = !txtReasons.text.empty();
    lblSheet.ShowText(pointer.Problem().empty() ? pointer.Hint() : pointer.Problem());
}

const look::Proposal* SheetGuide::Found()
{
    if (!found_ && sheets_.View() != nullptr)
        found_ = look::Propose(*sheets_.View(), form_.Names(), form_.Sets(), now_);
    return found_ ? &*found_ : nullptr;
}

void SheetGuide::Fill(ParameterTab& tab)
{
    std::string& shown = reasons_.at(&tab == &form_.monthly ? 0 : 1);
    const look::Proposal* const proposal = Found();
    if (proposal == nullptr) {
        shown = sheets_.Sentence();
        return;
    }
    const ProposedFields fields = FillWithProposal(tab, *proposal);
    shown = util::Join(fields.sentences, "\n");
    if (fields.missing != nullptr && &tab == &form_.SelectedTab() && fields.missing->enabled)
        form_.SetFocus(*fields.missing);
}

void SheetGuide::cmdPropose_Click()
{
    Fill(form_.SelectedTab());
}

void SheetGuide::ProposeAll()
{
    if (const look::Proposal* const proposal = Found()) {
        const bool hasMonth = proposal->sets.Monthly.Output;
        const bool hasYear = proposal->sets.Yearly.Output;
        if (hasMonth != hasYear) {
            ParameterTab& other =
                hasMonth ? static_cast<ParameterTab&>(form_.yearly) : form_.monthly;
            if (other.chkOutCalendar.checked)
                other.chkOutCalendar.Toggle();
            other.chkOutCalendar_Click();
            form_.tabOrrery_Click(hasMonth ? 1 : 2);
        }
    }
    Fill(form_.monthly);
    Fill(form_.yearly);
}

void SheetGuide::FocusMoved(const std::string& controlName)
{
    if (controlName == pvwSheet.name)
        return;
    const auto before = Pointer().Active();
    Pointer().Activate(FieldNamed(form_.SelectedTab(), controlName));
    if (Pointer().Active() != before)
        ++version_;
}

CellAddress SheetGuide::FirstOfMerged(CellAddress cell) const
{
    return sheets_.MergedAt(cell).first;
}

void SheetGuide::Click(CellAddress cell)
{
    SetCursor(cell);
    TabPointer& pointer = Pointer();
    if (pointer.Active()) {
        pointer.Point(cursor_);
        ++version_;
    }
    else if (const auto field = pointer.FieldAt(cursor_)) {
        pointer.Activate(field);
        form_.SetFocus(*BoxOf(pointer.Tab(), *field));
        ++version_;
    }
}

void SheetGuide::BeginDrag(CellAddress cell)
{
    Pointer().BeginDrag(FirstOfMerged(cell));
}

void SheetGuide::DragTo(CellAddress cell)
{
    Pointer().DragTo(FirstOfMerged(cell));
    ++version_;
}

void SheetGuide::EndDrag()
{
    Pointer().EndDrag();
}

void SheetGuide::CancelDrag()
{
    Pointer().CancelDrag();
    ++version_;
}

bool SheetGuide::MoveField(int rows, int columns)
{
    if (!Pointer().Move(rows, columns))
        return false;
    ++version_;
    return true;
}

void SheetGuide::ChooseSheet(const std::string& name)
{
    TextBox& box = form_.SelectedTab().txtSheetName;
    if (box.text != name)
        box.Type(name);
    form_.SetFocus(box);
}

void SheetGuide::MoveCursor(int rows, int columns)
{
    const CellRange from = sheets_.MergedAt(cursor_);
    SetCursor({(rows > 0 ? from.last.row : from.first.row) + rows,
               (columns > 0 ? from.last.column : from.first.column) + columns});
}

void SheetGuide::SetCursor(CellAddress cell)
{
    CellAddress end{1, 1};
    if (const auto* const picture = sheets_.Picture())
        end = picture->Layout().range.last;
    cursor_ =
        FirstOfMerged({std::clamp(cell.row, 1, end.row), std::clamp(cell.column, 1, end.column)});
}

std::string SheetGuide::Description()
{
    if (sheets_.Picture() == nullptr)
        return sheets_.PictureSentence();
    return Pointer().Describe(cursor_, sheets_.TextAt(cursor_));
}

} // namespace orrery::ui
