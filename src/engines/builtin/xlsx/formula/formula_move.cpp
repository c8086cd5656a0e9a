#include "engines/builtin/xlsx/formula/cell_address.h"
#include "engines/builtin/xlsx/formula/formula.h"
#include "engines/builtin/xlsx/formula/formula_lexer.h"

namespace orrery::xlsx {
namespace {

using Kind = FormulaToken::Kind;

/// Moves `position`, from 1, around a circle of `size`.
std::int32_t Wrap(std::int32_t position, int distance, std::int32_t size)
{
    const std::int64_t moved = std::int64_t{position} - 1 + distance;
    return static_cast<std::int32_t>((moved % size + size) % size) + 1;
}

std::string ColumnLetters(std::int32_t column)
{
    std::string letters = FormatCellAddress({1, column});
    letters.pop_back(); // drops the row
    return letters;
}

/// Moves the relative columns and rows of "A1", "$A:C" or "1:$3".
std::string MoveReference(std::string_view reference, int rows, int columns)
{
    std::string moved;
    bool fixed = false;
    for (std::size_t at = 0; at < reference.size();) {
        const std::string_view rest = reference.substr(at);
        std::size_t length = 0;
        if (const auto column = ReadColumn(rest, length); length > 0) {
            const auto target = fixed ? column : Wrap(column, columns, kSheetColumns);
            moved += target == column ? std::string(rest.substr(0, length)) : ColumnLetters(target);
        }
        else if (const auto row = ReadRow(rest, length); length > 0) {
            const auto target = fixed ? row : Wrap(row, rows, kSheetRows);
            moved += target == row ? std::string(rest.substr(0, length)) : std::to_string(target);
        }
        else {
            length = 1;
            moved += rest.front();
        }
        fixed = rest.front() == '$';
        at += length;
    }
    return moved;
}

} // namespace

std::string MoveFormula(std::string_view formula, int rows, int columns)
{
    std::string moved;
    moved.reserve(formula.size());
    FormulaLexer lexer(formula);
    while (const auto token = lexer.Next()) {
        const std::string_view text = lexer.TextOf(*token);
        if (token->kind == Kind::Cell || token->kind == Kind::Columns ||
            token->kind == Kind::Rows) {
            moved += MoveReference(text, rows, columns);
        }
        else {
            moved += text;
        }
    }
    return moved;
}

} // namespace orrery::xlsx
