#include "model/cell_ref.h"

#include "util/error.h"

#include <algorithm>
#include <charconv>

namespace orrery::model {

namespace {

constexpr std::int32_t kLetters = 26;
constexpr std::int32_t kOutside = -1;

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsLetter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// A = 1 to Z = 26, in either case.
std::int32_t LetterNumber(char c)
{
    return c >= 'a' ? c - 'a' + 1 : c - 'A' + 1;
}

std::int32_t RowOf(std::string_view digits)
{
    std::int32_t row = 0;
    if (digits.empty())
        return row;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), row);
    if (result.ec == std::errc::result_out_of_range)
        throw util::OverflowError();
    return row > kMaxRow ? kOutside : row;
}

std::int32_t ColumnOf(std::string_view letters)
{
    std::int32_t column = 0;
    for (const char letter : letters)
        column = column * kLetters + LetterNumber(letter);
    return column > kMaxColumn ? kOutside : column;
}

} // namespace

bool ParseCellRef(std::string_view text, CellPosition& cell)
{
    cell = {kOutside, kOutside};
    const auto* digits = std::find_if_not(text.begin(), text.end(), IsLetter);
    const auto letterCount = static_cast<std::size_t>(digits - text.begin());
    if (letterCount > 2 || !std::all_of(digits, text.end(), IsDigit))
        return false;
    cell.row = RowOf(text.substr(letterCount));
    cell.column = ColumnOf(text.substr(0, letterCount));
    return true;
}

std::string FormatCellRef(CellPosition cell)
{
    if (cell.column < 0 || cell.column > kMaxColumn || cell.row < 0 || cell.row > kMaxRow)
        return {};
    std::string text;
    const auto appendLetter = [&](std::int32_t number) {
        text += static_cast<char>('A' + number - 1);
    };
    if (cell.column > kLetters)
        appendLetter((cell.column - 1) / kLetters);
    if (cell.column > 0)
        appendLetter((cell.column - 1) % kLetters + 1);
    if (cell.row > 0)
        text += std::to_string(cell.row);
    return text;
}

std::optional<CellPosition> ReadCell(std::string_view text)
{
    try {
        CellPosition cell;
        if (ParseCellRef(text, cell) && cell.row >= 1 && cell.column >= 1)
            return cell;
    }
    catch (const util::OverflowError&) {
        // No sheet has that row.
    }
    return std::nullopt;
}

} // namespace orrery::model
