#include "engines/builtin/xlsx/sheet/sheet_tables.h"

#include "engines/builtin/xml/attribute_patch.h"
#include "engines/builtin/xml/reading.h"
#include "engines/common/sheet_names.h"

#include <algorithm>

namespace orrery::xlsx {

using engines::CutToUnits;
using engines::FoldCase;

namespace {

constexpr std::size_t kMaxNameLength = 255; // UTF-16 units; Excel reads no longer names

/// Calls `visit` at the StartTag of every column, with its position; `visit` reads the column to
/// its end. The scanner is at the root.
template <typename Visit> void ForEachColumn(xml::Scanner& scanner, Visit&& visit)
{
    std::size_t column = 0;
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() != "tableColumns")
            return scanner.SkipElement();
        xml::ForEachChild(scanner, [&] {
            if (scanner.LocalName() != "tableColumn")
                return scanner.SkipElement();
            visit(column++);
        });
    });
}

/// Nothing if the part has no valid range.
std::optional<Table> ReadTable(std::string_view xml, std::string_view partName)
{
    xml::Scanner scanner(xml, partName);
    xml::EnterRoot(scanner);
    const auto range = ParseCellRange(scanner.AttributeText("ref").value_or(""));
    if (scanner.LocalName() != "table" || !range)
        return std::nullopt;
    Table table;
    table.name = scanner.AttributeText("displayName").value_or("");
    table.range = *range;
    table.hasHeader = xml::ReadDigits(scanner.Attribute("headerRowCount")).value_or(1) != 0;
    table.hasTotals = xml::ReadDigits(scanner.Attribute("totalsRowCount")).value_or(0) != 0;
    ForEachColumn(scanner, [&](std::size_t) {
        table.columns.push_back(DecodeColumnName(scanner.AttributeText("name").value_or("")));
        scanner.SkipElement();
    });
    return table;
}

std::string TextOf(const book::CellValue& value)
{
    const auto* text = std::get_if<std::string>(&value);
    return text != nullptr ? *text : std::to_string(std::get<std::int16_t>(value));
}

/// The name that Excel gives a column: a number is appended directly.
std::string UniqueName(const std::string& wanted, const std::multiset<std::string>& taken)
{
    const std::string base = wanted.empty() ? "Column" : wanted;
    std::string name(wanted.empty() ? "Column1" : CutToUnits(base, kMaxNameLength));
    for (std::size_t number = 2; taken.contains(FoldCase(name)); ++number) {
        const std::string suffix = std::to_string(number);
        name = std::string(CutToUnits(base, kMaxNameLength - suffix.size())) + suffix;
    }
    return name;
}

void RemoveAttribute(TextPatch& patch, const xml::Scanner& element, std::string_view name)
{
    if (const auto attribute = element.Attribute(name))
        patch.Remove(attribute->begin, attribute->end);
}

/// A value that was written is a label, or no label, instead of a function. Reads the column to its
/// end.
void PatchTotal(TextPatch& patch, std::string_view xml, xml::Scanner& column,
                const std::string& label)
{
    RemoveAttribute(patch, column, "totalsRowFunction");
    if (label.empty())
        RemoveAttribute(patch, column, "totalsRowLabel");
    else
        xml::SetAttribute(patch, xml, column.Begin(), "totalsRowLabel", EncodeColumnName(label));
    xml::ForEachChild(column, [&] {
        const bool isFormula = column.LocalName() == "totalsRowFormula";
        const std::size_t begin = column.Begin();
        column.SkipElement();
        if (isFormula)
            patch.Remove(begin, column.End());
    });
}

} // namespace

SheetTables::SheetTables(std::vector<Table> tables)
    : tables_(std::make_shared<const std::vector<Table>>(std::move(tables))),
      written_(tables_->size())
{
    for (std::size_t i = 0; i < written_.size(); ++i)
        written_[i].change.name = (*tables_)[i].name;
}

SheetTables SheetTables::Read(const Package& package, const std::string& part)
{
    std::vector<Table> tables;
    for (const auto& relationship : package.RelationshipsOf(part).All()) {
        const auto target = ResolveTarget(part, relationship.Target);
        if (relationship.External || !relationship.Is("table") || !package.Has(target))
            continue;
        if (auto table = ReadTable(*package.ReadXml(target), target))
            tables.push_back(std::move(*table));
    }
    return SheetTables(std::move(tables));
}

std::optional<std::size_t> SheetTables::Find(CellAddress cell) const
{
    const auto found = std::find_if(tables_->begin(), tables_->end(),
                                    [&](const Table& table) { return table.range.Contains(cell); });
    if (found == tables_->end())
        return std::nullopt;
    return static_cast<std::size_t>(found - tables_->begin());
}

const Table* SheetTables::Around(CellAddress cell) const
{
    const auto found = Find(cell);
    return found ? &(*tables_)[*found] : nullptr;
}

std::optional<std::string> SheetTables::WriteHeader(CellAddress cell, const book::CellValue& value)
{
    const auto found = Find(cell);
    if (!found)
        return std::nullopt;
    const Table& table = (*tables_)[*found];
    const auto column = static_cast<std::size_t>(cell.column - table.range.first.column);
    if (!table.hasHeader || cell.row != table.range.first.row || column >= table.columns.size())
        return std::nullopt;
    Written& written = written_[*found];
    auto& taken = written.taken;
    if (taken.empty()) {
        for (const auto& name : table.columns)
            taken.insert(FoldCase(name));
    }
    const auto renamed = written.change.headers.find(column);
    const auto& before =
        renamed != written.change.headers.end() ? renamed->second : table.columns[column];
    taken.erase(taken.find(FoldCase(before)));
    auto name = UniqueName(TextOf(value), taken);
    taken.insert(FoldCase(name));
    Rename(table, written, column, name);
    return name;
}

void SheetTables::Rename(const Table& table, Written& written, std::size_t column,
                         const std::string& name)
{
    const std::string key = FoldCase(table.columns[column]);
    if (name == table.columns[column]) {
        written.change.headers.erase(column);
        written.change.columns.erase(key);
        return;
    }
    written.change.headers.insert_or_assign(column, name);
    written.change.columns.insert_or_assign(key, name);
}

void SheetTables::WriteTotal(CellAddress cell, const book::CellValue& value)
{
    const auto found = Find(cell);
    if (!found)
        return;
    const Table& table = (*tables_)[*found];
    if (!table.hasTotals || cell.row != table.range.last.row)
        return;
    const auto* text = std::get_if<std::string>(&value);
    const bool isLabel = text != nullptr && CutToUnits(*text, kMaxNameLength) == *text;
    written_[*found].change.totals.insert_or_assign(
        static_cast<std::size_t>(cell.column - table.range.first.column),
        isLabel ? *text : std::string());
}

bool SheetTables::HasChanges() const
{
    return std::any_of(written_.begin(), written_.end(),
                       [](const Written& written) { return !written.change.Empty(); });
}

std::vector<TableChange> SheetTables::Changes() const
{
    std::vector<TableChange> changes;
    for (const auto& [change, taken] : written_) {
        if (!change.Empty())
            changes.push_back(change);
    }
    return changes;
}

TableChange SheetTables::ChangeOf(std::string_view name) const
{
    const auto found = std::find_if(written_.begin(), written_.end(), [&](const Written& written) {
        return written.change.name == name;
    });
    return found != written_.end() ? found->change : TableChange{std::string(name), {}, {}, {}};
}

TextPatch PatchTable(std::string_view xml, std::string_view partName, const TableChange& change)
{
    TextPatch patch;
    xml::Scanner scanner(xml, partName);
    xml::EnterRoot(scanner);
    ForEachColumn(scanner, [&](std::size_t column) {
        if (const auto header = change.headers.find(column); header != change.headers.end())
            xml::SetAttribute(patch, xml, scanner.Begin(), "name",
                              EncodeColumnName(header->second));
        if (const auto total = change.totals.find(column); total != change.totals.end())
            PatchTotal(patch, xml, scanner, total->second);
        else
            scanner.SkipElement();
    });
    return patch;
}

std::string TableNameOf(std::string_view xml, std::string_view partName)
{
    xml::Scanner scanner(xml, partName);
    xml::EnterRoot(scanner);
    return scanner.AttributeText("displayName").value_or("");
}

bool IsTable(std::string_view type)
{
    return type.ends_with(".table+xml");
}

} // namespace orrery::xlsx
