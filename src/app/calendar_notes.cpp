#include "app/calendar_notes.h"

#include "book/cell_address.h"

#include <algorithm>
#include <map>
#include <variant>

namespace orrery::app {
namespace {

constexpr double kTolerance = 1; // pixels by which a text may touch its cell's edge

bool IsCut(const look::CellBox& cell)
{
    if (cell.rotation != 0)
        return false;
    return std::any_of(cell.lines.begin(), cell.lines.end(), [&](const look::TextLine& line) {
        return line.x < cell.clip.x - kTolerance ||
               line.x + line.width > cell.clip.Right() + kTolerance ||
               line.baseline < cell.clip.y || line.baseline > cell.clip.Bottom() + kTolerance;
    });
}

/// The box that covers a cell, or nullptr.
const look::CellBox* FindBox(const look::Layout& layout, book::CellAddress address)
{
    const auto covers = [address](const look::CellBox& cell) {
        return cell.range.first.row <= address.row && address.row <= cell.range.last.row &&
               cell.range.first.column <= address.column &&
               address.column <= cell.range.last.column;
    };
    const auto found = std::find_if(layout.cells.begin(), layout.cells.end(), covers);
    return found == layout.cells.end() ? nullptr : &*found;
}

bool IsPrinted(const look::Layout& layout, const look::CellBox& cell)
{
    const look::Point middle = cell.box.Middle();
    return std::any_of(layout.pages.begin(), layout.pages.end(), [&](const look::PageBox& page) {
        return page.area.Contains(middle) || page.titleRows.Contains(middle) ||
               page.titleColumns.Contains(middle);
    });
}

/// What is wrong with a name in its cell; empty if nothing is. A cell that hides what it holds, by
/// its format or its size, is meant to: conditional formats read it.
std::string Trouble(const look::Layout& layout, book::CellAddress address)
{
    const look::CellBox* const box = FindBox(layout, address);
    if (box == nullptr)
        return {};
    if (box->range.first != address)
        return " is hidden by merged cells in ";
    if (box->lines.empty())
        return {};
    if (!IsPrinted(layout, *box))
        return " is on no printed page, in ";
    return IsCut(*box) ? " does not fit into " : "";
}

} // namespace

std::vector<std::string> FindHiddenNames(const generate::TrialSheet& sheet, std::int16_t year,
                                         const look::SheetPicture& picture)
{
    // A later text of a cell replaces an earlier one.
    std::map<book::CellAddress, const generate::TrialCell*> written;
    for (const generate::TrialCell& cell : sheet.cells) {
        if (!cell.error)
            written[{cell.cell.row, cell.cell.column}] = &cell;
    }
    std::vector<std::string> notes;
    for (const auto& [address, cell] : written) {
        const auto* const name = std::get_if<std::string>(&cell->value);
        if (name == nullptr || name->empty() || cell->day == 0)
            continue;
        const std::string trouble = Trouble(picture.Layout(), address);
        if (trouble.empty())
            continue;
        notes.push_back(std::to_string(year) + '-' + std::to_string(cell->month) + '-' +
                        std::to_string(cell->day) + ": \"" + *name + '"' + trouble +
                        book::FormatCellAddress(address) + '.');
    }
    return notes;
}

} // namespace orrery::app
