#include "look/filled/filled_view.h"

#include "book/names.h"

#include <algorithm>
#include <utility>

namespace orrery::look {
namespace {

using book::Cell;
using book::SheetLook;

/// A cell of the file, or a new one in the style that its place has.
Cell CellAt(const SheetLook& look, book::CellAddress address)
{
    if (const Cell* cell = look.FindCell(address))
        return *cell;
    Cell cell;
    cell.address = address;
    cell.style = look.StyleAt(address);
    return cell;
}

/// The cells of a sheet with the written ones in their places.
std::vector<Cell> MergedCells(const SheetLook& look,
                              const std::map<book::CellAddress, book::CellContent>& written)
{
    std::vector<Cell> merged;
    merged.reserve(look.cells.size() + written.size());
    auto next = written.begin();
    const auto put = [&](const auto& entry) {
        Cell cell = CellAt(look, entry.first);
        cell.content = entry.second;
        cell.formula = -1;
        cell.richText = -1;
        merged.push_back(std::move(cell));
    };
    for (const Cell& cell : look.cells) {
        for (; next != written.end() && next->first < cell.address; ++next)
            put(*next);
        if (next != written.end() && next->first == cell.address)
            put(*next++);
        else
            merged.push_back(cell);
    }
    for (; next != written.end(); ++next)
        put(*next);
    return merged;
}

} // namespace

FilledView::FilledView(book::WorkbookView& model, std::vector<FilledSheet> filled)
    : model_(model), filled_(std::move(filled)), workbook_(model.Workbook())
{
    ListSheets();
    CopyLocalNames();
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        if (entries_[i].model == model_.Workbook().activeSheet) {
            workbook_.activeSheet = i;
            break;
        }
    }
}

void FilledView::ListSheets()
{
    const auto& sheets = model_.Workbook().sheets;
    workbook_.sheets.clear();
    for (std::size_t i = 0; i < sheets.size(); ++i) {
        bool isModel = false;
        for (const FilledSheet& filled : filled_) {
            if (!book::SameName(filled.model, sheets[i].name))
                continue;
            isModel = true;
            entries_.push_back({i, &filled, std::nullopt});
            workbook_.sheets.push_back({filled.name, sheets[i].kind, sheets[i].state});
        }
        if (!isModel) {
            entries_.push_back({i, nullptr, std::nullopt});
            workbook_.sheets.push_back(sheets[i]);
        }
    }
}

/// Each copy has its model's own names.
void FilledView::CopyLocalNames()
{
    workbook_.names.clear();
    for (const book::DefinedName& name : model_.Workbook().names) {
        if (!name.sheet) {
            workbook_.names.push_back(name);
            continue;
        }
        for (std::size_t i = 0; i < entries_.size(); ++i) {
            if (entries_[i].model == *name.sheet)
                workbook_.names.push_back({name.name, i, name.formula});
        }
    }
}

const SheetLook& FilledView::Sheet(std::size_t index)
{
    Entry& entry = entries_.at(index);
    if (entry.filled == nullptr)
        return model_.Sheet(entry.model);
    if (!entry.look)
        entry.look = Fill(entry);
    return *entry.look;
}

SheetLook FilledView::Fill(const Entry& entry)
{
    SheetLook look = model_.Sheet(entry.model);
    look.cells = MergedCells(look, entry.filled->cells);
    look.name = entry.filled->name;
    return look;
}

std::optional<std::size_t> FilledView::ReferencedSheet(std::string_view name,
                                                       std::size_t from) const
{
    const auto& models = model_.Workbook().sheets;
    const auto means = [&](const Entry& entry) {
        return book::SameName(models[entry.model].name, name);
    };
    if (from < entries_.size() && means(entries_[from]))
        return from;
    const auto found = std::find_if(entries_.begin(), entries_.end(), means);
    if (found == entries_.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - entries_.begin());
}

std::vector<book::CellOfSheet> FilledView::WrittenCells() const
{
    std::vector<book::CellOfSheet> cells;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        if (entries_[i].filled == nullptr)
            continue;
        for (const auto& [cell, content] : entries_[i].filled->cells)
            cells.push_back({i, cell});
    }
    return cells;
}

} // namespace orrery::look
