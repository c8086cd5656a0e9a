#include "engines/builtin/xlsx/sheet/sheet_index.h"

#include "book/error.h"
#include "engines/builtin/xml/reading.h"
#include "util/error.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>

namespace orrery::xlsx {

namespace {

/// The columns that array formulas fill in the row being read. A file is read row by row, so a
/// range that a later one overlaps has ended, or the file is wrong and the later one counts.
class FilledColumns {
public:
    void Add(const CellRange& range)
    {
        auto at = filled_.upper_bound(range.first.column);
        if (at != filled_.begin() && std::prev(at)->second.last.column >= range.first.column)
            --at;
        while (at != filled_.end() && at->first <= range.last.column)
            at = filled_.erase(at);
        filled_[range.first.column] = range;
    }

    bool Contain(CellAddress cell) const
    {
        const auto at = filled_.upper_bound(cell.column);
        return at != filled_.begin() && std::prev(at)->second.Contains(cell);
    }

private:
    std::map<std::int32_t, CellRange> filled_; // by first column; no column is in two of them
};

/// `the number "12"`, or `an empty number`.
std::string Named(const std::string& what, std::string_view value)
{
    return value.empty() ? "an empty " + what : "the " + what + " \"" + std::string(value) + "\"";
}

class SheetDataReader {
public:
    SheetDataReader(xml::Scanner& scanner, std::string_view partName)
        : scanner_(scanner), partName_(partName)
    {
    }

    SheetIndex Read()
    {
        xml::ForEachChild(scanner_, [this] {
            if (scanner_.LocalName() == "row")
                ReadRow();
            else
                scanner_.SkipElement();
        });
        return std::move(index_);
    }

private:
    void ReadRow();
    void ReadCell(RowPlace& row);
    std::int32_t ReadColumn(RowPlace& row);
    void CountFromCell(RowPlace& row, std::int32_t number);
    void ReadStringIndex();
    void ReadFormula(bool hasMetadata);
    void AddShared(std::size_t group, bool hasText, bool hasRange);
    void AddArray(std::optional<xml::ScannedAttribute> ref, ArrayFormula::Kind kind);
    std::uint32_t NextCell() const { return static_cast<std::uint32_t>(index_.cells.size()); }
    [[noreturn]] void Fail(const std::string& what) const;

    xml::Scanner& scanner_;
    std::string_view partName_;
    SheetIndex index_;
    FilledColumns filled_;
    std::int32_t lastRow_ = 0;
    std::int32_t lastColumn_ = 0;                                 // of the row being read
    std::unordered_map<std::size_t, std::size_t> sharedFormulas_; // by group, the last so far
};

void SheetDataReader::ReadRow()
{
    RowPlace row{static_cast<std::uint32_t>(scanner_.Begin()), NextCell(), lastRow_ + 1, true};
    if (const auto number = scanner_.Attribute("r")) {
        const auto digits = xml::ReadDigits(number);
        if (!digits || *digits < 1 || *digits > kSheetRows)
            Fail("a row with " + Named("number", number->raw));
        row.number = static_cast<std::int32_t>(*digits);
        row.isCounted = false;
    }
    lastColumn_ = 0;
    xml::ForEachChild(scanner_, [&] {
        if (scanner_.LocalName() == "c")
            ReadCell(row);
        else
            scanner_.SkipElement();
    });
    if (row.number <= lastRow_ || row.number > kSheetRows)
        Fail("row " + std::to_string(row.number) + " is not behind row " +
             std::to_string(lastRow_));
    lastRow_ = row.number;
    index_.rows.push_back(row);
}

void SheetDataReader::ReadCell(RowPlace& row)
{
    CellPlace cell{static_cast<std::uint32_t>(scanner_.Begin()), 0, 0};
    const std::int32_t column = ReadColumn(row);
    cell.column = static_cast<std::uint16_t>(column);
    if (const auto type = scanner_.Attribute("t"); type && type->Is("s"))
        cell.flags |= CellPlace::SharedString;
    const auto metadata = scanner_.Attribute("cm");
    const bool hasMetadata = metadata && !metadata->Is("0");
    xml::ForEachChild(scanner_, [&] {
        if (scanner_.LocalName() == "v" && cell.Has(CellPlace::SharedString))
            return ReadStringIndex();
        if (scanner_.LocalName() != "f")
            return scanner_.SkipElement();
        cell.flags |= CellPlace::Formula;
        ReadFormula(hasMetadata);
    });
    if (!cell.Has(CellPlace::Formula) && filled_.Contain({row.number, column}))
        cell.flags |= CellPlace::ArrayValue;
    lastColumn_ = column;
    index_.cells.push_back(cell);
}

std::int32_t SheetDataReader::ReadColumn(RowPlace& row)
{
    CellAddress cell{row.number, lastColumn_ + 1};
    if (const auto place = scanner_.Attribute("r")) {
        std::string decoded;
        const auto address = ParseCellAddress(place->Value(decoded));
        if (!address)
            Fail("a cell with " + Named("place", place->raw));
        cell = *address;
        CountFromCell(row, cell.row);
    }
    if (cell.column <= lastColumn_ || cell.column > kSheetColumns)
        Fail("the cells of row " + std::to_string(row.number) + " are not in order");
    return cell.column;
}

// A row without a number has that of its first cell, if the cell gives one.
void SheetDataReader::CountFromCell(RowPlace& row, std::int32_t number)
{
    if (row.isCounted && row.firstCell == NextCell())
        row.number = number;
    if (row.number != number)
        Fail("row " + std::to_string(row.number) + " holds a cell of row " +
             std::to_string(number));
}

void SheetDataReader::ReadStringIndex()
{
    if (const auto index = xml::ReadDigits(scanner_.ElementText()))
        index_.stringsUsed = std::max(index_.stringsUsed, *index + 1);
}

void SheetDataReader::ReadFormula(bool hasMetadata)
{
    const auto type = scanner_.Attribute("t");
    const auto ref = scanner_.Attribute("ref");
    const auto group = xml::ReadDigits(scanner_.Attribute("si"));
    const std::string formula = scanner_.ElementText();
    index_.hasFormulas = true;
    if (!formula.empty())
        CollectFacts(formula, index_.facts);
    if (!type)
        return;
    if (type->Is("shared") && group)
        AddShared(*group, !formula.empty(), ref.has_value());
    else if (type->Is("array"))
        AddArray(ref, hasMetadata ? ArrayFormula::Kind::Dynamic : ArrayFormula::Kind::Fixed);
    else if (type->Is("dataTable"))
        AddArray(ref, ArrayFormula::Kind::Fixed);
}

// Some files reuse the numbers of groups: a dependent belongs to the last master before it. Some
// writers repeat the text in the dependents; only masters have a range.
void SheetDataReader::AddShared(std::size_t group, bool hasText, bool hasRange)
{
    const auto found = sharedFormulas_.find(group);
    if (hasText && (hasRange || found == sharedFormulas_.end())) {
        sharedFormulas_[group] = index_.sharedFormulas.size();
        index_.sharedFormulas.push_back({NextCell(), {}});
    }
    else if (found != sharedFormulas_.end())
        index_.sharedFormulas[found->second].dependents.push_back(NextCell());
}

void SheetDataReader::AddArray(std::optional<xml::ScannedAttribute> ref, ArrayFormula::Kind kind)
{
    std::string decoded;
    const auto range = ref ? ParseCellRange(ref->Value(decoded)) : std::nullopt;
    if (!range || range->IsOneCell())
        return;
    index_.arrays.push_back({kind, NextCell(), *range});
    filled_.Add(*range);
}

void SheetDataReader::Fail(const std::string& what) const
{
    throw util::Error(book::ErrorKind::DamagedWorkbook, {}, std::string(partName_) + ", " + what);
}

} // namespace

SheetIndex ReadSheetIndex(xml::Scanner& scanner, std::string_view partName)
{
    return SheetDataReader(scanner, partName).Read();
}

const RowPlace* SheetIndex::FindRow(std::int32_t row) const
{
    const auto found = std::lower_bound(
        rows.begin(), rows.end(), row,
        [](const RowPlace& place, std::int32_t wanted) { return place.number < wanted; });
    return found != rows.end() && found->number == row ? &*found : nullptr;
}

std::span<const CellPlace> SheetIndex::CellsOf(const RowPlace& row) const
{
    const bool isLast = &row == &rows.back();
    const std::size_t end = isLast ? cells.size() : (&row + 1)->firstCell;
    return std::span(cells).subspan(row.firstCell, end - row.firstCell);
}

const CellPlace* SheetIndex::FindCell(CellAddress address) const
{
    const RowPlace* row = FindRow(address.row);
    if (row == nullptr)
        return nullptr;
    const auto places = CellsOf(*row);
    const auto found = std::lower_bound(
        places.begin(), places.end(), address.column,
        [](const CellPlace& place, std::int32_t column) { return place.column < column; });
    return found != places.end() && found->column == address.column ? &*found : nullptr;
}

std::uint32_t SheetIndex::IndexOf(const CellPlace& cell) const
{
    return static_cast<std::uint32_t>(&cell - cells.data());
}

CellAddress SheetIndex::AddressOf(std::uint32_t cell) const
{
    const auto behind = std::upper_bound(
        rows.begin(), rows.end(), cell,
        [](std::uint32_t wanted, const RowPlace& row) { return wanted < row.firstCell; });
    return {std::prev(behind)->number, cells[cell].column};
}

const SharedFormula* SheetIndex::FindShared(std::uint32_t master) const
{
    const auto found = std::lower_bound(
        sharedFormulas.begin(), sharedFormulas.end(), master,
        [](const SharedFormula& shared, std::uint32_t cell) { return shared.master < cell; });
    return found != sharedFormulas.end() && found->master == master ? &*found : nullptr;
}

const ArrayFormula* SheetIndex::FindArray(std::uint32_t anchor) const
{
    const auto found = std::lower_bound(
        arrays.begin(), arrays.end(), anchor,
        [](const ArrayFormula& array, std::uint32_t cell) { return array.anchor < cell; });
    return found != arrays.end() && found->anchor == anchor ? &*found : nullptr;
}

} // namespace orrery::xlsx
