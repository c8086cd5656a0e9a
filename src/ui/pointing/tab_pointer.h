#pragma once

#include "book/cell_address.h"
#include "model/name_lists.h"
#include "ui/pointing/marks.h"
#include "ui/pointing/tab_fields.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orrery::ui {

/// Sets the fields of a tab by pointing at cells of its model sheet. Cells of a merged range are
/// named by the range's first one.
class TabPointer {
public:
    /// Both outlive the object.
    TabPointer(ParameterTab& tab, const model::NameTables& names);

    /// Looks at the fields again. False if nothing that is shown has changed.
    bool Update();
    const std::vector<MarkedCell>& Marks() const { return marks_; }
    const TabValues& Values() const { return values_; }
    const ParameterTab& Tab() const { return tab_; }
    /// The sentence that OK would report for this tab, in one line; empty if all is well.
    const std::string& Problem() const { return problem_; }
    /// Whether the problem is in that field.
    bool IsWrong(Field field) const { return wrong_ == field; }

    /// The field that takes the cell that is pointed at.
    std::optional<Field> Active() const { return active_; }
    /// A field that is disabled is not activated.
    void Activate(std::optional<Field> field);
    /// Gives the active field the cell. An interval is the way from the first day to the cell, and
    /// stays if there is none. False if no field is active.
    bool Point(book::CellAddress cell);
    /// Moves the cell of the active field. False if the field holds no cell.
    bool Move(int rows, int columns);
    /// The field whose outline has that cell; where several have, the active one, then the one
    /// with fewer cells.
    std::optional<Field> FieldAt(book::CellAddress cell) const;

    /// Takes hold of what is at a cell. False if nothing is.
    bool BeginDrag(book::CellAddress cell);
    bool IsDragging() const { return dragged_.has_value(); }
    /// Drags to a cell: moves the outline, or by its second column or row changes an interval; by
    /// another block the intervals of months. All within the limits of the fields.
    void DragTo(book::CellAddress cell);
    void EndDrag() { dragged_.reset(); }
    /// The fields are as they were before.
    void CancelDrag();

    /// What a screen reader tells of a cell that shows that text: "B6, empty, first cell of day".
    std::string Describe(book::CellAddress cell, std::string_view shown) const;
    /// What the user can do.
    std::string Hint() const;

private:
    /// What is dragged, and how everything was before.
    struct Dragged {
        MarkedCell mark;
        TabValues values;
        std::vector<std::pair<TextBox*, TextBox>> boxes;
    };

    bool IsEnabled(Field field) const;
    const MarkedCell* MarkAt(book::CellAddress cell) const;
    void FindProblem();
    void SetCell(Field field, std::int64_t row, std::int64_t column);
    void SetInterval(Field field, double interval);
    void DragBlock(book::CellAddress cell);
    static std::string NameOfMark(const MarkedCell& mark);

    ParameterTab& tab_;
    const model::NameTables& names_;
    TabValues values_;
    std::vector<MarkedCell> marks_;
    std::string holiday_;
    std::string problem_;
    std::optional<Field> wrong_;
    std::optional<Field> active_;
    std::optional<Dragged> dragged_;
};

} // namespace orrery::ui
