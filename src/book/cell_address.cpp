#include "book/cell_address.h"

#include <algorithm>
#include <array>

namespace orrery::book {
namespace {

constexpr std::int32_t kLetters = 26;

} // namespace

bool CellRange::Contains(CellAddress cell) const
{
    return cell.row >= first.row && cell.row <= last.row && cell.column >= first.column &&
           cell.column <= last.column;
}

void CellRange::Widen(CellAddress cell)
{
    first.row = std::min(first.row, cell.row);
    first.column = std::min(first.column, cell.column);
    last.row = std::max(last.row, cell.row);
    last.column = std::max(last.column, cell.column);
}

std::string FormatCellAddress(CellAddress cell)
{
    std::array<char, 3> letters{}; // the last column is "XFD"
    std::size_t begin = letters.size();
    for (std::int32_t rest = cell.column; rest > 0 && begin > 0; rest = (rest - 1) / kLetters)
        letters[--begin] = static_cast<char>('A' + (rest - 1) % kLetters);
    return std::string(letters.data() + begin, letters.size() - begin) + std::to_string(cell.row);
}

std::string FormatCellRange(const CellRange& range)
{
    std::string text = FormatCellAddress(range.first);
    if (!range.IsOneCell())
        text += ':' + FormatCellAddress(range.last);
    return text;
}

} // namespace orrery::book
