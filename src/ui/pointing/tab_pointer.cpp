#include "ui/pointing/tab_pointer.h"

#include "ui/parameter_checks.h"
#include "util/error_text.h"
#include "util/text.h"

#include <algorithm>
#include <cmath>
#include <exception>

namespace orrery::ui {
namespace {

using book::CellAddress;
using model::CellPosition;

std::string InOneLine(const std::string& text)
{
    std::string line;
    for (const std::string_view part : util::SplitLines(text))
        line += (line.empty() ? "" : " ") + std::string(part);
    return line;
}

std::optional<Problem> Check(const ParameterTab& tab)
{
    const auto* const yearly = dynamic_cast<const YearlyTab*>(&tab);
    return yearly != nullptr ? CheckYearly(*yearly) : CheckMonthly(tab);
}

void TypeIfOther(TextBox& box, const std::string& text)
{
    if (box.text != text)
        box.Type(text);
}

/// Fewer cells are harder to hit, so they come first.
int RankOf(Field mark)
{
    constexpr std::array order{Field::Year, Field::Month, Field::Weekday, Field::Day,
                               Field::Holiday};
    return static_cast<int>(std::find(order.begin(), order.end(), mark) - order.begin());
}

} // namespace

TabPointer::TabPointer(ParameterTab& tab, const model::NameTables& names) : tab_(tab), names_(names)
{
    Update();
}

bool TabPointer::Update()
{
    if (active_ && !IsEnabled(*active_))
        active_.reset();
    const std::string problemBefore = problem_;
    const auto wrongBefore = wrong_;
    FindProblem();
    TabValues values = ReadTab(tab_);
    std::string holiday(util::Trim(tab_.lblHolidaySample.caption));
    const bool isSame = values == values_ && holiday == holiday_ && problem_ == problemBefore &&
                        wrong_ == wrongBefore;
    if (isSame)
        return false;
    values_ = std::move(values);
    holiday_ = std::move(holiday);
    marks_ = MarksOf(values_, names_, holiday_);
    return true;
}

void TabPointer::FindProblem()
{
    problem_.clear();
    wrong_.reset();
    if (!tab_.chkOutCalendar.checked)
        return;
    try {
        const auto problem = Check(tab_);
        if (!problem)
            return;
        problem_ = InOneLine(problem->message);
        wrong_ = FieldNamed(tab_, problem->control->name);
    }
    catch (const std::exception& error) {
        problem_ = InOneLine(util::ErrorText(error));
    }
}

bool TabPointer::IsEnabled(Field field) const
{
    const TextBox* const box = BoxOf(tab_, field);
    return box != nullptr && box->enabled;
}

void TabPointer::Activate(std::optional<Field> field)
{
    active_ = field && IsEnabled(*field) ? field : std::nullopt;
}

void TabPointer::SetCell(Field field, std::int64_t row, std::int64_t column)
{
    const CellPosition cell{
        static_cast<std::int32_t>(std::clamp<std::int64_t>(row, 1, model::kMaxRow)),
        static_cast<std::int32_t>(std::clamp<std::int64_t>(column, 1, model::kMaxColumn))};
    TypeIfOther(*BoxOf(tab_, field), model::FormatCellRef(cell));
}

void TabPointer::SetInterval(Field field, double interval)
{
    const double kept =
        std::clamp<double>(std::round(interval), 1, static_cast<double>(LargestInterval(field)));
    TypeIfOther(*BoxOf(tab_, field), std::to_string(static_cast<int>(kept)));
}

bool TabPointer::Point(CellAddress cell)
{
    if (!active_)
        return false;
    const CellPosition day = values_.set.FirstCellOfDay;
    const bool isAcross = active_ == Field::ColInterval || active_ == Field::ColIntervalOfMonth;
    const std::int32_t way = isAcross ? cell.column - day.column : cell.row - day.row;
    if (IsCellField(*active_))
        SetCell(*active_, cell.row, cell.column);
    else if (day.row >= 1 && way >= 1)
        SetInterval(*active_, way);
    Update();
    return true;
}

bool TabPointer::Move(int rows, int columns)
{
    if (!active_ || !IsCellField(*active_))
        return false;
    const CellPosition cell = values_.set.*PartsOf(*active_).cell;
    SetCell(*active_, std::int64_t{cell.row} + rows, std::int64_t{cell.column} + columns);
    Update();
    return true;
}

const MarkedCell* TabPointer::MarkAt(CellAddress cell) const
{
    const auto isBetter = [this](const MarkedCell& mark, const MarkedCell& than) {
        const auto rank = [this](const MarkedCell& one) {
            return one.mark == active_ ? -1 : RankOf(one.mark);
        };
        return rank(mark) < rank(than);
    };
    const MarkedCell* best = nullptr;
    for (const MarkedCell& mark : marks_) {
        if (mark.cell == cell && (best == nullptr || isBetter(mark, *best)))
            best = &mark;
    }
    return best;
}

std::optional<Field> TabPointer::FieldAt(CellAddress cell) const
{
    const MarkedCell* const mark = MarkAt(cell);
    return mark == nullptr ? std::nullopt : std::optional(mark->mark);
}

bool TabPointer::BeginDrag(CellAddress cell)
{
    const MarkedCell* const mark = MarkAt(cell);
    if (mark == nullptr)
        return false;
    dragged_ = Dragged{*mark, values_, {}};
    for (const Field field : kAllFields) {
        if (TextBox* const box = BoxOf(tab_, field))
            dragged_->boxes.emplace_back(box, *box);
    }
    return true;
}

void TabPointer::DragTo(CellAddress cell)
{
    if (!dragged_)
        return;
    const MarkedCell& mark = dragged_->mark;
    const CellPosition first = dragged_->values.set.*PartsOf(mark.mark).cell;
    const bool isDay = mark.mark == Field::Day;
    if (mark.month > 1)
        DragBlock(cell);
    else if (isDay && mark.place == generate::GridPosition{0, 1})
        SetInterval(Field::ColInterval, cell.column - first.column);
    else if (isDay && mark.place == generate::GridPosition{1, 0})
        SetInterval(Field::RowInterval, cell.row - first.row);
    else
        SetCell(mark.mark, std::int64_t{first.row} + cell.row - mark.cell.row,
                std::int64_t{first.column} + cell.column - mark.cell.column);
    Update();
}

/// The blocks before it share the way that it was moved.
void TabPointer::DragBlock(CellAddress cell)
{
    const MarkedCell& mark = dragged_->mark;
    const model::YearlyParameters& set = dragged_->values.set;
    const int across = (mark.month - 1) % set.MonthLayout;
    const int down = (mark.month - 1) / set.MonthLayout;
    if (across > 0)
        SetInterval(Field::ColIntervalOfMonth,
                    set.ColIntervalOfMonth +
                        static_cast<double>(cell.column - mark.cell.column) / across);
    if (down > 0)
        SetInterval(Field::RowIntervalOfMonth,
                    set.RowIntervalOfMonth + static_cast<double>(cell.row - mark.cell.row) / down);
}

void TabPointer::CancelDrag()
{
    if (!dragged_)
        return;
    for (const auto& [box, before] : dragged_->boxes) {
        box->text = before.text;
        box->changed = before.changed;
    }
    dragged_.reset();
    Update();
}

std::string TabPointer::NameOfMark(const MarkedCell& mark)
{
    const std::string noun = PartsOf(mark.mark).noun;
    std::string name;
    if (mark.place == generate::GridPosition())
        name = "first cell of " + noun;
    else if (mark.mark == Field::Day && mark.place == generate::GridPosition{0, 1})
        name = "second column of days";
    else if (mark.mark == Field::Day && mark.place == generate::GridPosition{1, 0})
        name = "second row of days";
    else
        name = "cell of " + noun + (mark.mark == Field::Day ? " " + mark.sample : "");
    if (name.back() == ' ')
        name.pop_back(); // no day of the sample
    return mark.month == 1 ? name : name + " in block " + std::to_string(mark.month);
}

std::string TabPointer::Describe(CellAddress cell, std::string_view shown) const
{
    std::string text = book::FormatCellAddress(cell) + ", ";
    text += shown.empty() ? "empty" : shown;
    for (const MarkedCell& mark : marks_) {
        if (mark.cell == cell)
            text += ", " + NameOfMark(mark);
    }
    return text;
}

std::string TabPointer::Hint() const
{
    if (!tab_.chkOutCalendar.checked)
        return "This calendar is not output.";
    if (!active_)
        return "Drag an outline, or choose a field and click its cell.";
    switch (*active_) {
    case Field::ColInterval:
        return "Click the second column of days.";
    case Field::RowInterval:
        return "Click the second row of days.";
    case Field::ColIntervalOfMonth:
        return "Click the first day of the month at the right.";
    case Field::RowIntervalOfMonth:
        return "Click the first day of the month below.";
    default:
        return "Click the " + NameOf(*active_) + ", or move it by Ctrl and the arrow keys.";
    }
}

} // namespace orrery::ui
