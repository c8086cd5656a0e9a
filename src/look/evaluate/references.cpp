#include "look/evaluate/references.h"

#include "book/names.h"
#include "util/error.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace orrery::formula {
namespace {

/// A relative place moves around the edges of the sheet.
std::int32_t Moved(std::int32_t at, std::int32_t distance, std::int32_t size)
{
    const std::int64_t moved = (std::int64_t{at} - 1 + distance) % size;
    return static_cast<std::int32_t>(moved < 0 ? moved + size : moved) + 1;
}

book::CellAddress CellOf(const Corner& corner, const Place& place)
{
    return {corner.isRowRelative
                ? Moved(corner.row, place.cell.row - place.writtenFor.row, kSheetRows)
                : corner.row,
            corner.isColumnRelative
                ? Moved(corner.column, place.cell.column - place.writtenFor.column, kSheetColumns)
                : corner.column};
}

book::CellRange Ordered(book::CellAddress one, book::CellAddress other)
{
    return {{std::min(one.row, other.row), std::min(one.column, other.column)},
            {std::max(one.row, other.row), std::max(one.column, other.column)}};
}

/// Reads one "R[-1]" or "C5"; 0 in `value` with `isWhole`: no number was there.
struct RowColumnPart {
    std::int32_t value = 0;
    bool isRelative = true;
};
std::optional<RowColumnPart> ReadPart(std::string_view& text, char letter)
{
    if (text.empty() || (text.front() & ~0x20) != letter)
        return std::nullopt;
    text.remove_prefix(1);
    RowColumnPart part;
    const bool hasBracket = text.starts_with('[');
    if (hasBracket)
        text.remove_prefix(1);
    const auto read = std::from_chars(text.data(), text.data() + text.size(), part.value);
    if (read.ec == std::errc())
        text.remove_prefix(static_cast<std::size_t>(read.ptr - text.data()));
    part.isRelative = hasBracket || read.ec != std::errc();
    if (hasBracket) {
        if (!text.starts_with(']'))
            return std::nullopt;
        text.remove_prefix(1);
    }
    return part;
}

std::optional<book::CellAddress> ReadRowColumnCell(std::string_view& text, book::CellAddress own)
{
    const auto row = ReadPart(text, 'R');
    const auto column = row ? ReadPart(text, 'C') : std::nullopt;
    if (!column)
        return std::nullopt;
    const auto limit = [](std::int64_t value) {
        return static_cast<std::int32_t>(std::clamp<std::int64_t>(value, 0, kSheetRows + 1));
    };
    const book::CellAddress cell{
        limit(std::int64_t{row->value} + (row->isRelative ? own.row : 0)),
        limit(std::int64_t{column->value} + (column->isRelative ? own.column : 0))};
    if (cell.row < 1 || cell.row > kSheetRows || cell.column < 1 || cell.column > kSheetColumns)
        return std::nullopt;
    return cell;
}

std::optional<std::int32_t> FindColumn(const book::Table& table, const std::string& name)
{
    const auto found =
        std::find_if(table.columns.begin(), table.columns.end(),
                     [&](const std::string& column) { return book::SameName(column, name); });
    if (found == table.columns.end())
        return std::nullopt;
    return static_cast<std::int32_t>(found - table.columns.begin());
}

} // namespace

std::optional<std::size_t> References::FindSheet(const std::string& name, std::size_t from)
{
    const auto [found, isNew] = sheets_.try_emplace({book::FoldCase(name), from});
    if (isNew)
        found->second = view_.ReferencedSheet(name, from);
    return found->second;
}

std::optional<Area> References::AreaOf(const AreaText& text, const Place& place)
{
    Area area;
    area.firstSheet = area.lastSheet = place.sheet;
    if (text.hasSheet) {
        auto first = FindSheet(text.firstSheet, place.sheet);
        auto last = FindSheet(text.lastSheet, place.sheet);
        // A sheet's own name may have a colon where the file does not allow for one.
        if (!first || !last)
            return std::nullopt;
        area.firstSheet = std::min(*first, *last);
        area.lastSheet = std::max(*first, *last);
    }
    area.range = Ordered(CellOf(text.first, place), CellOf(text.last, place));
    return area;
}

const book::DefinedName* References::FindName(const NameText& wanted, std::size_t ownSheet)
{
    const auto sheet =
        wanted.hasSheet ? FindSheet(wanted.sheet, ownSheet) : std::optional(ownSheet);
    const auto& names = view_.Workbook().names;
    for (; indexedNames_ < names.size(); ++indexedNames_)
        names_[book::FoldCase(names[indexedNames_].name)].push_back(indexedNames_);
    const book::DefinedName* found = nullptr;
    const auto same = names_.find(book::FoldCase(wanted.name));
    if (same == names_.end())
        return nullptr;
    for (const std::size_t at : same->second) {
        const book::DefinedName& name = names[at];
        if (name.sheet && name.sheet == sheet)
            return &name;
        if (!name.sheet)
            found = &name;
    }
    return found;
}

std::optional<References::FoundTable> References::FindTable(const std::string& name,
                                                            const Place& place)
{
    if (name.empty()) { // the table around the formula
        for (const auto& table : view_.Sheet(place.sheet).tables)
            if (table.range.Contains(place.cell))
                return FoundTable{place.sheet, &table};
        return std::nullopt;
    }
    const auto [found, isNew] = tables_.try_emplace(book::FoldCase(name));
    for (std::size_t sheet = 0; isNew && sheet < view_.Workbook().sheets.size(); ++sheet) {
        try {
            for (const auto& table : view_.Sheet(sheet).tables)
                if (book::SameName(table.name, name))
                    found->second = FoundTable{sheet, &table};
        }
        catch (const util::Error&) {
            continue; // the tables of a damaged sheet are not found
        }
    }
    return found->second;
}

bool References::IsTable(const std::string& name)
{
    return !name.empty() && FindTable(name, {}).has_value();
}

std::variant<Area, CellError> References::AreaOfTable(const TableText& text, const Place& place)
{
    const auto found = FindTable(text.table, place);
    if (!found)
        return CellError::Reference;
    const book::Table& table = *found->table;
    Area area{found->sheet, found->sheet, table.range};
    const std::int32_t dataFirst = table.range.first.row + table.headerRows;
    const std::int32_t dataLast = table.range.last.row - table.totalRows;
    if (text.isThisRow) {
        if (place.cell.row < dataFirst || place.cell.row > dataLast)
            return CellError::Value;
        area.range.first.row = area.range.last.row = place.cell.row;
    }
    else {
        if (!text.hasHeaders)
            area.range.first.row = text.hasData ? dataFirst : dataLast + 1;
        if (!text.hasTotals)
            area.range.last.row = text.hasData ? dataLast : dataFirst - 1;
    }
    if (area.range.first.row > area.range.last.row)
        return CellError::Reference;
    if (text.firstColumn) {
        const auto first = FindColumn(table, *text.firstColumn);
        const auto last = FindColumn(table, *text.lastColumn);
        if (!first || !last)
            return CellError::Reference;
        const std::int32_t left = table.range.first.column;
        area.range.first.column = left + std::min(*first, *last);
        area.range.last.column = left + std::max(*first, *last);
    }
    return area;
}

std::optional<Area> References::ReadRowColumn(std::string_view text, const Place& place)
{
    Area area;
    area.firstSheet = area.lastSheet = place.sheet;
    if (const auto mark = text.rfind('!'); mark != std::string_view::npos) {
        std::string_view name = text.substr(0, mark);
        if (name.size() > 1 && name.front() == '\'' && name.back() == '\'')
            name = name.substr(1, name.size() - 2);
        const auto sheet = FindSheet(std::string(name), place.sheet);
        if (!sheet)
            return std::nullopt;
        area.firstSheet = area.lastSheet = *sheet;
        text.remove_prefix(mark + 1);
    }
    const auto first = ReadRowColumnCell(text, place.cell);
    auto last = first;
    if (first && text.starts_with(':')) {
        text.remove_prefix(1);
        last = ReadRowColumnCell(text, place.cell);
    }
    if (!last || !text.empty())
        return std::nullopt;
    area.range = Ordered(*first, *last);
    return area;
}

std::optional<Area> Intersect(const Area& left, const Area& right)
{
    Area common;
    common.firstSheet = std::max(left.firstSheet, right.firstSheet);
    common.lastSheet = std::min(left.lastSheet, right.lastSheet);
    common.range.first = {std::max(left.range.first.row, right.range.first.row),
                          std::max(left.range.first.column, right.range.first.column)};
    common.range.last = {std::min(left.range.last.row, right.range.last.row),
                         std::min(left.range.last.column, right.range.last.column)};
    if (common.firstSheet > common.lastSheet || common.Rows() < 1 || common.Columns() < 1)
        return std::nullopt;
    return common;
}

std::optional<Area> Enclose(const Area& left, const Area& right)
{
    if (left.firstSheet != right.firstSheet || left.lastSheet != right.lastSheet)
        return std::nullopt;
    Area area = left;
    area.range.Widen(right.range.first);
    area.range.Widen(right.range.last);
    return area;
}

} // namespace orrery::formula
