#pragma once

#include "ui/parameter_form.h"
#include "ui/pointing/model_sheets.h"
#include "ui/pointing/proposed_fields.h"
#include "ui/pointing/tab_pointer.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace orrery::ui {

/// The model sheet beside the fields of the parameter dialog: shows what the fields of the tab in
/// front mean, and sets them. Cells that are given may be any of a merged range.
class SheetGuide {
public:
    /// `now` is that of the sheets' formulas. The form outlives the object.
    SheetGuide(ParameterForm& form, double now);

    CheckBox chkSheet{"chkSheet", "Pre&view"};
    Control pvwSheet{"pvwSheet"};
    Label lblSheet{"lblSheet"}; ///< what is wrong, or what can be done
    Button cmdPropose{"cmdPropose", "&Propose"};
    TextBox txtReasons{"txtReasons"}; ///< why, visible after a proposal

    /// Fills the tab in front with what is found on the sheets.
    void cmdPropose_Click();
    /// The same for both tabs. If only one calendar is found, the other is not output, and the
    /// tab of the found one comes to the front.
    void ProposeAll();

    /// Shows what the fields say now. Opens the template, if it has to.
    void Refresh();
    ModelSheets& Sheets() { return sheets_; }
    TabPointer& Pointer();
    /// Rises whenever outlines differ.
    std::uint64_t Version() const { return version_; }
    /// The sentence that OK would report; empty if all is well.
    const std::string& Problem() { return Pointer().Problem(); }

    /// The keyboard's focus is in that control: a field of this tab is active until another control
    /// but the sheet has it.
    void FocusMoved(const std::string& controlName);
    /// The user clicks a cell: the active field takes it; without one, the field whose outline is
    /// there gets the focus.
    void Click(book::CellAddress cell);
    void BeginDrag(book::CellAddress cell);
    void DragTo(book::CellAddress cell);
    void EndDrag();
    void CancelDrag();
    bool IsDragging() { return Pointer().IsDragging(); }
    /// Ctrl and an arrow: moves the cell of the active field. False if none is active.
    bool MoveField(int rows, int columns);
    /// The user chooses a sheet from the list.
    void ChooseSheet(const std::string& name);

    /// The cell that the keys of the sheet move.
    book::CellAddress Cursor() const { return cursor_; }
    /// Moves it over merged cells, within what is shown.
    void MoveCursor(int rows, int columns);
    void SetCursor(book::CellAddress cell);
    /// What a screen reader tells of the cursor's cell.
    std::string Description();

private:
    const look::Proposal* Found();
    void Fill(ParameterTab& tab);
    std::string SheetName();
    book::CellRange MarkedRange();
    book::CellAddress FirstOfMerged(book::CellAddress cell) const;

    ParameterForm& form_;
    const double now_;
    ModelSheets sheets_;
    std::optional<look::Proposal> found_;
    std::array<std::string, 2> reasons_; ///< of the tabs
    TabPointer monthly_;
    TabPointer yearly_;
    book::CellAddress cursor_{1, 1};
    int shownTab_ = 0;
    std::uint64_t version_ = 0;
};

} // namespace orrery::ui
