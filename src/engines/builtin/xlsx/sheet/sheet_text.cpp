#include "engines/builtin/xlsx/sheet/sheet_text.h"

#include "book/error.h"
#include "util/error.h"

#include <algorithm>
#include <limits>

namespace orrery::xlsx {

namespace {

/// Adds the ranges of a list like "A1:B2 D4"; anything else in it is ignored.
void AddRanges(std::string_view list, std::vector<CellRange>& ranges)
{
    while (!list.empty()) {
        const std::size_t blank = list.find(' ');
        if (const auto range = ParseCellRange(list.substr(0, blank)))
            ranges.push_back(*range);
        list.remove_prefix(blank == std::string_view::npos ? list.size() : blank + 1);
    }
}

/// The ranges in an attribute of the children that `accept` takes.
template <typename Accept>
RangeIndex ReadRanges(xml::Scanner& scanner, std::string_view attribute, Accept accept)
{
    std::vector<CellRange> ranges;
    xml::ForEachChild(scanner, [&] {
        const auto list = scanner.Attribute(attribute);
        if (std::string decoded; list && accept())
            AddRanges(list->Value(decoded), ranges);
        scanner.SkipElement();
    });
    return RangeIndex(std::move(ranges));
}

std::optional<xml::TextRange> ValueRange(const std::optional<xml::ScannedAttribute>& attribute)
{
    if (!attribute)
        return std::nullopt;
    return xml::TextRange{attribute->valueBegin, attribute->end - 1};
}

} // namespace

SheetText::SheetText(PartText xml, std::string partName)
    : xml_(std::move(xml)), partName_(std::move(partName))
{
    // The index holds offsets of 32 bits.
    if (xml_->size() > std::numeric_limits<std::uint32_t>::max())
        throw util::Error(book::ErrorKind::TooLargeUnpacked, {}, partName_);
    xml::Scanner scanner(*xml_, partName_);
    xml::EnterRoot(scanner);
    AddIdentities(scanner, identities_);
    xml::ForEachChild(scanner, [&] { ReadPart(scanner); });
    CollectArrays();
    references_ = FindReferences(*xml_, partName_);
}

void SheetText::ReadPart(xml::Scanner& scanner)
{
    const std::string_view name = scanner.LocalName();
    if (name == "sheetPr")
        ReadProperties(scanner);
    else if (name == "sheetViews")
        ReadViews(scanner);
    else if (name == "cols")
        ReadColumns(scanner);
    else if (name == "sheetData" && !sheetData_)
        ReadSheetData(scanner);
    else if (name == "mergeCells")
        merges_ = ReadRanges(scanner, "ref", [] { return true; });
    else if (name == "protectedRanges") {
        const auto isOpen = [&] {
            return !scanner.Attribute("password") && !scanner.Attribute("hashValue");
        };
        editableRanges_ = ReadRanges(scanner, "sqref", isOpen);
    }
    else {
        if (name == "dimension")
            dimension_ = ValueRange(scanner.Attribute("ref"));
        if (name == "sheetProtection")
            isProtected_ = xml::IsTrue(scanner.Attribute("sheet"));
        ReadIdentities(scanner, identities_);
    }
}

void SheetText::ReadProperties(xml::Scanner& scanner)
{
    if (const auto codeName = scanner.Attribute("codeName")) {
        std::string decoded;
        codeName_ = codeName->Value(decoded);
        codeNamePlace_ = xml::TextRange{codeName->begin, codeName->end};
    }
    scanner.SkipElement();
}

void SheetText::ReadViews(xml::Scanner& scanner)
{
    xml::ForEachChild(scanner, [&] {
        if (scanner.LocalName() == "sheetView")
            views_.push_back(ReadStartTag(*xml_, scanner.Begin()));
        scanner.SkipElement();
    });
}

void SheetText::ReadColumns(xml::Scanner& scanner)
{
    xml::ForEachChild(scanner, [&] {
        const auto first = xml::ReadDigits(scanner.Attribute("min"));
        const auto last = xml::ReadDigits(scanner.Attribute("max"));
        const auto format = xml::ReadDigits(scanner.Attribute("style"));
        if (first && last && format && *first <= kSheetColumns && *last <= kSheetColumns)
            columns_.push_back(
                {static_cast<std::int32_t>(*first), static_cast<std::int32_t>(*last), *format});
        scanner.SkipElement();
    });
    std::stable_sort(columns_.begin(), columns_.end(),
                     [](const ColumnFormat& left, const ColumnFormat& right) {
                         return left.first < right.first;
                     });
}

void SheetText::ReadSheetData(xml::Scanner& scanner)
{
    sheetData_ = ReadStartTag(*xml_, scanner.Begin());
    index_ = ReadSheetIndex(scanner, partName_);
    sheetDataEnd_ = scanner.Begin();
}

void SheetText::CollectArrays()
{
    std::vector<CellRange> ranges;
    for (const ArrayFormula& array : index_.arrays)
        if (array.kind == ArrayFormula::Kind::Fixed)
            ranges.push_back(array.range);
    fixedArrays_ = RangeIndex(std::move(ranges));
}

TextPatch SheetText::SetCodeName(const std::optional<std::string>& name) const
{
    TextPatch patch;
    if (!codeNamePlace_)
        return patch;
    std::string attribute;
    if (name)
        attribute = " codeName=\"" + xml::EncodeAttribute(*name) + '"';
    patch.Replace(codeNamePlace_->begin, codeNamePlace_->end, std::move(attribute));
    return patch;
}

TextPatch SheetText::SelectTab(bool selected) const
{
    TextPatch patch;
    for (const StartTag& view : views_) {
        const auto attribute = view.Attribute("tabSelected");
        if (attribute && !selected && xml::IsTrue(attribute))
            patch.Remove(attribute->begin, attribute->end);
        else if (attribute && selected && !xml::IsTrue(attribute))
            patch.Replace(attribute->valueBegin, attribute->end - 1, "1");
        else if (!attribute && selected)
            patch.Insert(view.nameEnd, " tabSelected=\"1\"");
    }
    return patch;
}

std::size_t SheetText::FormatOf(CellAddress cell) const
{
    if (const CellPlace* place = index_.FindCell(cell))
        return xml::ReadDigits(ReadStartTag(*xml_, place->begin).Attribute("s")).value_or(0);
    if (const RowPlace* row = index_.FindRow(cell.row))
        if (const auto format = FormatOfRow(ReadStartTag(*xml_, row->begin)))
            return *format;
    return FormatOfColumn(cell.column);
}

std::size_t SheetText::FormatOfColumn(std::int32_t column) const
{
    const auto behind = std::upper_bound(
        columns_.begin(), columns_.end(), column,
        [](std::int32_t wanted, const ColumnFormat& range) { return wanted < range.first; });
    if (behind == columns_.begin() || std::prev(behind)->last < column)
        return 0;
    return std::prev(behind)->format;
}

std::optional<std::size_t> SheetText::FormatOfRow(const StartTag& row)
{
    if (!xml::IsTrue(row.Attribute("customFormat")))
        return std::nullopt;
    return xml::ReadDigits(row.Attribute("s")).value_or(0);
}

bool SheetText::IsHiddenByMerge(CellAddress cell) const
{
    const CellRange* merge = merges_.Find(cell);
    return merge != nullptr && cell != merge->first;
}

bool SheetText::IsProtected(CellAddress cell) const
{
    return isProtected_ && editableRanges_.Find(cell) == nullptr;
}

} // namespace orrery::xlsx
