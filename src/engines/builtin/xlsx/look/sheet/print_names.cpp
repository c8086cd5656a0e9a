#include "engines/builtin/xlsx/formula/cell_address.h"
#include "engines/builtin/xlsx/formula/formula_lexer.h"
#include "engines/builtin/xlsx/look/sheet/page_reader.h"

#include <algorithm>

namespace orrery::xlsx {
namespace {

using TokenKind = FormulaToken::Kind;

constexpr std::string_view kPrintArea = "_xlnm.Print_Area";
constexpr std::string_view kPrintTitles = "_xlnm.Print_Titles";
constexpr std::size_t kMaxAreas = 1000;

std::string WithoutDollars(std::string_view text)
{
    std::string plain(text);
    plain.erase(std::remove(plain.begin(), plain.end(), '$'), plain.end());
    return plain;
}

/// "A1", "A:C" or "1:3", with "$" or without, as the cells that it stands for.
std::optional<book::CellRange> RangeOf(TokenKind kind, std::string_view text)
{
    const std::string plain = WithoutDollars(text);
    if (kind == TokenKind::Cell)
        return ParseCellRange(plain);
    const std::size_t colon = plain.find(':');
    if (colon == plain.npos)
        return std::nullopt;
    const std::string first = plain.substr(0, colon);
    const std::string last = plain.substr(colon + 1);
    if (kind == TokenKind::Columns)
        return ParseCellRange(first + "1:" + last + std::to_string(kSheetRows));
    return ParseCellRange("A" + first + ":XFD" + last);
}

/// The ranges of a formula that consists of references; nothing for others.
std::optional<std::vector<book::CellRange>> ParseAreas(std::string_view formula)
{
    std::vector<book::CellRange> areas;
    bool isRange = false; // a colon stands before
    FormulaLexer lexer(formula);
    while (const auto token = lexer.Next()) {
        const std::string_view text = lexer.TextOf(*token);
        if (token->kind == TokenKind::Cell || token->kind == TokenKind::Columns ||
            token->kind == TokenKind::Rows) {
            const auto range = RangeOf(token->kind, text);
            if (!range || areas.size() >= kMaxAreas)
                return std::nullopt;
            if (isRange && !areas.empty()) {
                areas.back().Widen(range->first);
                areas.back().Widen(range->last);
            }
            else {
                areas.push_back(*range);
            }
            isRange = false;
        }
        else if (token->kind == TokenKind::Other && text == ":") {
            isRange = true;
        }
        else if (token->kind != TokenKind::Prefix &&
                 !(token->kind == TokenKind::Other && text.find_first_of(", ()") != text.npos)) {
            return std::nullopt;
        }
    }
    return areas;
}

void SetTitles(const std::vector<book::CellRange>& areas, book::PageSetup& page)
{
    for (const book::CellRange& area : areas) {
        const bool isRows = area.first.column == 1 && area.last.column == kSheetColumns;
        if (isRows && !page.titleRows)
            page.titleRows = area;
        else if (!isRows && area.first.row == 1 && area.last.row == kSheetRows)
            page.titleColumns = area;
    }
}

} // namespace

void ApplyPrintNames(const std::vector<book::DefinedName>& names, std::size_t sheet,
                     book::PageSetup& page, LeftOutList& leftOut)
{
    for (const book::DefinedName& name : names) {
        const bool isArea = name.name == kPrintArea;
        if (name.sheet != sheet || (!isArea && name.name != kPrintTitles))
            continue;
        const auto areas = ParseAreas(name.formula);
        if (!areas)
            leftOut.Add(isArea ? "print area" : "print titles", name.formula,
                        "it is no list of ranges");
        else if (isArea)
            page.printAreas = *areas;
        else
            SetTitles(*areas, page);
    }
}

} // namespace orrery::xlsx
