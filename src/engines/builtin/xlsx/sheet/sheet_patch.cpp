#include "engines/builtin/xlsx/sheet/sheet_patch.h"

#include <algorithm>

namespace orrery::xlsx {

namespace {

/// An attribute with the blank before it.
std::string Attribute(std::string_view name, std::string_view value)
{
    return ' ' + std::string(name) + "=\"" + std::string(value) + '"';
}

std::string EndTag(std::string_view name)
{
    return "</" + std::string(name) + '>';
}

/// What follows the attributes of a cell: its type, its value and its end.
std::string CellContent(std::string_view prefix, std::string_view name, const WrittenValue& value)
{
    const auto* text = std::get_if<SharedStringIndex>(&value);
    std::string content = text != nullptr ? Attribute("t", "s") : std::string();
    content += ">";
    content += "<" + std::string(prefix) + "v>";
    content += text != nullptr ? std::to_string(text->index)
                               : std::to_string(std::get<std::int16_t>(value));
    return content + EndTag(std::string(prefix) + "v") + EndTag(name);
}

struct Span {
    std::size_t first;
    std::size_t last;
};

/// The column spans of a row ("1:5 8:9"); empty if the list is not well-formed.
std::vector<Span> ParseSpans(std::string_view list)
{
    std::vector<Span> spans;
    while (!list.empty()) {
        const std::string_view piece = list.substr(0, list.find(' '));
        list.remove_prefix(std::min(piece.size() + 1, list.size()));
        const std::size_t colon = piece.find(':');
        if (colon == std::string_view::npos)
            return {};
        const auto first = xml::ReadDigits(piece.substr(0, colon));
        const auto last = xml::ReadDigits(piece.substr(colon + 1));
        if (!first || !last)
            return {};
        spans.push_back({*first, *last});
    }
    return spans;
}

} // namespace

TextPatch SheetPatch::Make(bool recalculate)
{
    WidenDimension();
    WriteRows();
    MoveSharedMasters();
    if (recalculate)
        DropResults(CellPlace::Formula | CellPlace::ArrayValue,
                    {{1, 1}, {kSheetRows, kSheetColumns}});
    else
        ClearSpills();
    return std::move(patch_);
}

void SheetPatch::WidenDimension()
{
    if (values_.empty() || !text_.Dimension())
        return;
    const xml::TextRange place = *text_.Dimension();
    const auto old = ParseCellRange(
        xml::DecodeAttribute(std::string_view(xml_).substr(place.begin, place.end - place.begin)));
    if (!old)
        return;
    CellRange range = *old;
    for (const auto& [address, value] : values_)
        range.Widen(address);
    if (range != *old)
        patch_.Replace(place.begin, place.end, FormatCellRange(range));
}

void SheetPatch::WriteRows()
{
    std::string atEnd; // the rows after the last one of the text
    for (auto first = values_.begin(); first != values_.end();) {
        const auto last = values_.lower_bound({first->first.row + 1, 0});
        if (const RowPlace* row = index_.FindRow(first->first.row))
            WriteIntoRow(*row, first, last);
        else
            InsertRow(first, last, atEnd);
        first = last;
    }
    if (atEnd.empty())
        return;
    const StartTag& tag = text_.SheetData();
    if (tag.isEmpty)
        Fill(tag, atEnd);
    else
        patch_.Insert(text_.SheetDataEnd(), atEnd);
}

void SheetPatch::Fill(const StartTag& tag, const std::string& content)
{
    patch_.Replace(tag.end - 2, tag.end, ">" + content + EndTag(tag.name)); // over the "/>"
}

void SheetPatch::InsertRow(Written first, Written last, std::string& atEnd)
{
    const std::string_view prefix = text_.SheetData().prefix;
    const std::int32_t number = first->first.row;
    const std::string name = std::string(prefix) + "row";
    std::string row = '<' + name + Attribute("r", std::to_string(number)) + '>';
    for (auto cell = first; cell != last; ++cell)
        row += NewCell(prefix, text_.FormatOfColumn(cell->first.column), *cell);
    row += EndTag(name);

    const auto next = std::upper_bound(
        index_.rows.begin(), index_.rows.end(), number,
        [](std::int32_t wanted, const RowPlace& place) { return wanted < place.number; });
    if (next == index_.rows.end()) {
        atEnd += row;
        return;
    }
    patch_.Insert(next->begin, row);
    // Otherwise it would be counted from the new row. Several new rows may come before it.
    if (next->isCounted && numbered_.insert(next->begin).second)
        patch_.Insert(ReadStartTag(xml_, next->begin).nameEnd,
                      Attribute("r", std::to_string(next->number)));
}

void SheetPatch::WriteIntoRow(const RowPlace& row, Written first, Written last)
{
    const StartTag tag = ReadStartTag(xml_, row.begin);
    const auto format = SheetText::FormatOfRow(tag);
    const auto places = index_.CellsOf(row);
    WidenSpans(tag, first, last);
    std::string atEnd; // the cells after the last one of the text
    auto place = places.begin();
    for (auto cell = first; cell != last; ++cell) {
        const std::int32_t column = cell->first.column;
        place = std::lower_bound(
            place, places.end(), column,
            [](const CellPlace& before, std::int32_t wanted) { return before.column < wanted; });
        if (place != places.end() && place->column == column) {
            ReplaceCell(*place, cell->second);
            continue;
        }
        const std::string text =
            NewCell(tag.prefix, format ? *format : text_.FormatOfColumn(column), *cell);
        if (place == places.end())
            atEnd += text;
        else
            patch_.Insert(place->begin, text);
    }
    if (!atEnd.empty())
        AppendToRow(tag, places, atEnd);
}

void SheetPatch::AppendToRow(const StartTag& tag, std::span<const CellPlace> places,
                             const std::string& cells)
{
    if (tag.isEmpty)
        Fill(tag, cells);
    else if (places.empty())
        patch_.Insert(tag.end, cells);
    else
        patch_.Insert(ReadCellElement(xml_, places.back().begin).end, cells);
}

void SheetPatch::WidenSpans(const StartTag& row, Written first, Written last)
{
    const auto attribute = row.Attribute("spans");
    std::string decoded;
    const auto spans = attribute ? ParseSpans(attribute->Value(decoded)) : std::vector<Span>();
    if (spans.empty())
        return;
    Span all = spans.front();
    for (const Span& span : spans)
        all = {std::min(all.first, span.first), std::max(all.last, span.last)};
    bool isInside = true;
    for (auto cell = first; cell != last; ++cell) {
        const auto column = static_cast<std::size_t>(cell->first.column);
        isInside = isInside && std::any_of(spans.begin(), spans.end(), [&](const Span& span) {
                       return column >= span.first && column <= span.last;
                   });
        all = {std::min(all.first, column), std::max(all.last, column)};
    }
    if (!isInside)
        patch_.Replace(attribute->valueBegin, attribute->end - 1,
                       std::to_string(all.first) + ':' + std::to_string(all.last));
}

std::string SheetPatch::NewCell(std::string_view prefix, std::size_t format,
                                const WrittenValues::value_type& cell)
{
    const std::string name = std::string(prefix) + 'c';
    std::string text = '<' + name + Attribute("r", FormatCellAddress(cell.first));
    if (format != 0)
        text += Attribute("s", std::to_string(format));
    return text + CellContent(prefix, name, cell.second);
}

void SheetPatch::ReplaceCell(const CellPlace& place, const WrittenValue& value)
{
    const CellElement old = ReadCellElement(xml_, place.begin);
    patch_.Replace(old.tag.begin, old.end,
                   old.tag.Without(xml_, {"t", "cm", "vm", "ph"}) +
                       CellContent(old.tag.prefix, old.tag.name, value));
}

void SheetPatch::MoveSharedMasters()
{
    for (const auto& [address, value] : values_) {
        const CellPlace* place = index_.FindCell(address);
        if (place == nullptr || !place->Has(CellPlace::Formula))
            continue;
        if (const SharedFormula* shared = index_.FindShared(index_.IndexOf(*place)))
            MoveMaster(*shared);
    }
}

/// If the master of a shared formula was overwritten, the first of the remaining cells becomes the
/// master.
void SheetPatch::MoveMaster(const SharedFormula& shared)
{
    std::optional<std::uint32_t> newMaster;
    CellRange range; // of the remaining cells
    for (const std::uint32_t dependent : shared.dependents) {
        const CellAddress cell = index_.AddressOf(dependent);
        if (values_.contains(cell))
            continue;
        if (!newMaster) {
            newMaster = dependent;
            range = {cell, cell};
        }
        range.Widen(cell);
    }
    if (!newMaster)
        return;
    const CellAddress from = index_.AddressOf(shared.master);
    const CellAddress to = index_.AddressOf(*newMaster);
    const CellElement master = ReadCellElement(xml_, index_.cells[shared.master].begin);
    const CellElement next = ReadCellElement(xml_, index_.cells[*newMaster].begin);
    std::string formula =
        MoveFormula(master.formula->text, to.row - from.row, to.column - from.column);
    if (change_)
        formula = change_(std::move(formula));
    const StartTag& tag = next.formula->tag;
    patch_.Replace(tag.begin, next.formula->end,
                   tag.Without(xml_, {"ref"}) + Attribute("ref", FormatCellRange(range)) + '>' +
                       xml::EncodeText(formula) + EndTag(tag.name));
}

/// An overwritten dynamic array no longer fills the cells beside it.
void SheetPatch::ClearSpills()
{
    for (const auto& [address, value] : values_) {
        const CellPlace* place = index_.FindCell(address);
        if (place == nullptr || !place->Has(CellPlace::Formula))
            continue;
        const ArrayFormula* array = index_.FindArray(index_.IndexOf(*place));
        if (array != nullptr && array->kind == ArrayFormula::Kind::Dynamic)
            DropResults(CellPlace::ArrayValue, array->range);
    }
}

void SheetPatch::DropResults(unsigned flags, const CellRange& range)
{
    const auto begin = std::lower_bound(
        index_.rows.begin(), index_.rows.end(), range.first.row,
        [](const RowPlace& row, std::int32_t wanted) { return row.number < wanted; });
    for (auto row = begin; row != index_.rows.end() && row->number <= range.last.row; ++row) {
        for (const CellPlace& cell : index_.CellsOf(*row)) {
            const CellAddress address{row->number, cell.column};
            if ((cell.flags & flags) != 0 && range.Contains(address) && !values_.contains(address))
                DropResult(cell);
        }
    }
}

/// Removes the value and the attributes that say how to read it: type and metadata.
void SheetPatch::DropResult(const CellPlace& cell)
{
    const CellElement element = ReadCellElement(xml_, cell.begin);
    for (const std::string_view name : {"t", "vm"})
        if (const auto attribute = element.tag.Attribute(name))
            patch_.Remove(attribute->begin, attribute->end);
    for (const xml::TextRange& value : element.values)
        patch_.Remove(value.begin, value.end);
}

} // namespace orrery::xlsx
