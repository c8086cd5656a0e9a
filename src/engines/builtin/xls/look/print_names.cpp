#include "engines/builtin/xls/look/print_names.h"

#include "engines/builtin/xls/formula/formula_tokens.h"
#include "engines/builtin/xls/look/records/byte_cursor.h"
#include "engines/builtin/xls/look/records/left_out.h"
#include "engines/builtin/xls/records/unicode_string.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

namespace orrery::xls {
namespace {

constexpr std::string_view kPrintArea{"\x01\x06", 2};
constexpr std::string_view kPrintTitles{"\x01\x07", 2};
constexpr std::int32_t kLastRow = 65536;
constexpr std::int32_t kLastColumn = 256;

// Tokens. [MS-XLS] 2.5.198.25
constexpr std::uint8_t kUnion = 0x10;
constexpr std::uint8_t kParentheses = 0x15;
constexpr std::uint8_t kAttribute = 0x19;
constexpr std::uint8_t kFirstMemory = 0x26; // these only announce the areas that follow
constexpr std::uint8_t kLastMemory = 0x29;
constexpr std::uint8_t kCell = 0x24;
constexpr std::uint8_t kArea = 0x25;
constexpr std::uint8_t kSheetCell = 0x3A;
constexpr std::uint8_t kSheetArea = 0x3B;
constexpr std::array<std::uint8_t, 5> kDeleted = {0x1C, 0x2A, 0x2B, 0x3C, 0x3D};

/// Corners count from 0, as in the file.
book::CellRange RangeOf(std::uint16_t firstRow, std::uint16_t lastRow, std::uint16_t firstColumn,
                        std::uint16_t lastColumn)
{
    constexpr std::uint16_t kColumn = 0x00FF; // the bits above say what is relative
    const int left = firstColumn & kColumn;
    const int right = lastColumn & kColumn;
    return {{std::min(firstRow, lastRow) + 1, std::min(left, right) + 1},
            {std::max(firstRow, lastRow) + 1, std::max(left, right) + 1}};
}

/// The area of a token; nothing if it is none.
std::optional<book::CellRange> AreaOf(std::string_view tokens, const FormulaToken& token)
{
    const bool hasSheet = token.id == kSheetCell || token.id == kSheetArea;
    ByteCursor cursor(tokens, token.begin + (hasSheet ? 3 : 1));
    if (token.id == kSheetArea || token.id == kArea) {
        const auto firstRow = cursor.U16();
        const auto lastRow = cursor.U16();
        const auto firstColumn = cursor.U16();
        return RangeOf(firstRow, lastRow, firstColumn, cursor.U16());
    }
    if (token.id != kSheetCell && token.id != kCell)
        return std::nullopt;
    const auto row = cursor.U16();
    const auto column = cursor.U16();
    return RangeOf(row, row, column, column);
}

/// Whether the token adds no area and yet is part of a list of areas, some of which may be deleted.
bool IsPassive(std::uint8_t id)
{
    return id == kUnion || id == kParentheses || id == kAttribute ||
           (id >= kFirstMemory && id <= kLastMemory) ||
           std::find(kDeleted.begin(), kDeleted.end(), id) != kDeleted.end();
}

/// The areas that the tokens list; nothing if they do something else.
std::optional<std::vector<book::CellRange>> AreasOf(std::string_view tokens)
{
    std::vector<book::CellRange> areas;
    FormulaTokenReader reader(tokens);
    while (const auto token = reader.Next()) {
        if (const auto area = AreaOf(tokens, *token))
            areas.push_back(*area);
        else if (!IsPassive(token->id))
            return std::nullopt;
    }
    return reader.Complete() ? std::optional(areas) : std::nullopt;
}

void TakeTitles(const std::vector<book::CellRange>& areas, book::PageSetup& page)
{
    for (const auto& area : areas) {
        if (area.first.column == 1 && area.last.column == kLastColumn)
            page.titleRows = area;
        else if (area.first.row == 1 && area.last.row == kLastRow)
            page.titleColumns = area;
    }
}

} // namespace

NameFormula FormulaOf(const NameEntry& entry, std::string_view stream)
{
    constexpr std::size_t kTextAt = 14;
    try {
        const auto record = RecordReader(stream, entry.place.begin).Next();
        const std::string_view data = record->data;
        const auto name = ReadUnicodeStringNoCount(data, kTextAt, ReadU8(data, 3));
        const std::size_t tokensAt = kTextAt + name.size;
        const auto tokens = Slice(data, tokensAt, ReadU16(data, 4));
        return {tokens, data.substr(tokensAt + tokens.size())};
    }
    catch (const util::Error&) {
        return {};
    }
}

void ReadPrintNames(const Globals& globals, std::size_t sheet, book::SheetLook& look)
{
    for (const auto& entry : globals.Names()) {
        const bool isArea = entry.Key == kPrintArea;
        if (entry.Sheet != sheet + 1 || (!isArea && entry.Key != kPrintTitles))
            continue;
        const auto tokens = FormulaOf(entry, globals.Stream()).tokens;
        const auto areas = AreasOf(tokens);
        if (!areas)
            LeaveOut(look, isArea ? "print area" : "print titles", {}, "they are computed");
        else if (isArea)
            look.page.printAreas = *areas;
        else
            TakeTitles(*areas, look.page);
    }
}

} // namespace orrery::xls
