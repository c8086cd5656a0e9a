#include "engines/builtin/xlsx/formula/cell_address.h"

namespace orrery::xlsx {

namespace {

constexpr std::int32_t kLetters = 26;

/// 1 to 26, or 0 if it is not a letter.
std::int32_t LetterNumber(char c)
{
    if (c >= 'A' && c <= 'Z')
        return c - 'A' + 1;
    if (c >= 'a' && c <= 'z')
        return c - 'a' + 1;
    return 0;
}

} // namespace

bool IsInsideSheet(std::int32_t row, std::int32_t column)
{
    return row >= 1 && row <= kSheetRows && column >= 1 && column <= kSheetColumns;
}

std::optional<CellAddress> ParseCellAddress(std::string_view text)
{
    CellAddress cell;
    std::size_t at = 0;
    // Each loop stops as soon as the number leaves the sheet, long before it could overflow.
    for (; at < text.size() && LetterNumber(text[at]) != 0; ++at) {
        cell.column = cell.column * kLetters + LetterNumber(text[at]);
        if (cell.column > kSheetColumns)
            return std::nullopt;
    }
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
        cell.row = cell.row * 10 + (text[at] - '0');
        if (cell.row > kSheetRows)
            return std::nullopt;
    }
    if (at != text.size() || !IsInsideSheet(cell.row, cell.column))
        return std::nullopt;
    return cell;
}

std::optional<CellRange> ParseCellRange(std::string_view text)
{
    const std::size_t colon = text.find(':');
    const auto first = ParseCellAddress(text.substr(0, colon));
    const auto last =
        colon == std::string_view::npos ? first : ParseCellAddress(text.substr(colon + 1));
    if (!first || !last)
        return std::nullopt;
    CellRange range{*first, *first};
    range.Widen(*last);
    return range;
}

} // namespace orrery::xlsx
