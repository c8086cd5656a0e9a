#include "look/layout/borders.h"

#include <array>
#include <cstdint>
#include <unordered_map>

namespace orrery::look {
namespace {

using book::BorderLine;
using book::CellAddress;

/// The order of `LineStyle`, from none to the heaviest.
constexpr std::array<std::uint8_t, 14> kWeights = {
    0,  // none
    7,  // thin
    11, // medium
    5,  // dashed
    6,  // dotted
    13, // thick
    12, // double
    1,  // hair
    10, // medium dashed
    4,  // dash, dot
    9,  // medium dash, dot
    3,  // dash, dot, dot
    8,  // medium dash, dot, dot
    9   // slanted
};

std::uint8_t Weight(const BorderLine& line)
{
    const auto style = static_cast<std::size_t>(line.style);
    return style < kWeights.size() ? kWeights[style] : std::uint8_t{0};
}

int Lightness(const BorderLine& line)
{
    const book::Color color = line.color.value_or(book::kBlack);
    return color.red + color.green + color.blue;
}

std::uint64_t Key(std::int32_t row, std::int32_t column)
{
    return static_cast<std::uint64_t>(row) << 32 | static_cast<std::uint32_t>(column);
}

bool HasLine(const book::Border& border)
{
    return Weight(border.left) + Weight(border.right) + Weight(border.top) + Weight(border.bottom) >
           0;
}

/// The lines of cells as their styles say, by address. Of merged cells only the corners are here;
/// a line between the corners is that of the first.
class Edges {
public:
    explicit Edges(const std::vector<CellBox>& cells)
    {
        for (const CellBox& cell : cells) {
            if (!HasLine(cell.border))
                continue;
            const book::CellRange& range = cell.range;
            for (const std::int32_t row : {range.first.row, range.last.row}) {
                for (const std::int32_t column : {range.first.column, range.last.column})
                    borders_[Key(row, column)] = {&cell.border, range};
            }
        }
    }

    /// Of the cell at an address, the line at one of its sides, if that is a side of its range.
    const BorderLine* Left(CellAddress at) const { return Find(at, &book::Border::left, true); }
    const BorderLine* Right(CellAddress at) const { return Find(at, &book::Border::right, false); }
    const BorderLine* Top(CellAddress at) const { return Find(at, &book::Border::top, true); }
    const BorderLine* Bottom(CellAddress at) const
    {
        return Find(at, &book::Border::bottom, false);
    }

private:
    struct Entry {
        const book::Border* border;
        book::CellRange range;
    };

    const BorderLine* Find(CellAddress at, BorderLine book::Border::*side, bool isFirst) const
    {
        const auto found = borders_.find(Key(at.row, at.column));
        if (found == borders_.end())
            return nullptr;
        const Entry& entry = found->second;
        const bool isAcross = side == &book::Border::left || side == &book::Border::right;
        const CellAddress& corner = isFirst ? entry.range.first : entry.range.last;
        const bool isAtEdge = isAcross ? corner.column == at.column : corner.row == at.row;
        return isAtEdge ? &(entry.border->*side) : nullptr;
    }

    std::unordered_map<std::uint64_t, Entry> borders_;
};

void Take(BorderLine& line, const BorderLine* other)
{
    if (other != nullptr && IsHeavier(*other, line))
        line = *other;
}

/// Merged cells have their lines in the cells at their edges. A line of the first cell that lies
/// inside of the range is not seen; one that a condition sets is around the whole range.
void TakeFromEdgeCells(const book::SheetLook& sheet, CellBox& cell)
{
    const book::CellRange& range = cell.range;
    const book::Border& own = sheet.Style(range.first).border;
    if (cell.border.right == own.right)
        cell.border.right = sheet.Style({range.first.row, range.last.column}).border.right;
    if (cell.border.bottom == own.bottom)
        cell.border.bottom = sheet.Style({range.last.row, range.first.column}).border.bottom;
}

} // namespace

bool IsHeavier(const BorderLine& line, const BorderLine& other)
{
    if (Weight(line) != Weight(other))
        return Weight(line) > Weight(other);
    return Weight(line) > 0 && Lightness(line) < Lightness(other);
}

void ResolveBorders(const book::SheetLook& sheet, std::vector<CellBox>& cells)
{
    bool hasLines = false;
    for (CellBox& cell : cells) {
        cell.border = cell.display.style->border;
        if (!cell.range.IsOneCell())
            TakeFromEdgeCells(sheet, cell);
        hasLines = hasLines || HasLine(cell.border);
    }
    if (!hasLines)
        return;
    std::vector<book::Border> resolved;
    resolved.reserve(cells.size());
    const Edges edges(cells);
    for (const CellBox& cell : cells) {
        const auto& [first, last] = cell.range;
        book::Border border = cell.border;
        Take(border.left, edges.Right({first.row, first.column - 1}));
        Take(border.right, edges.Left({first.row, last.column + 1}));
        Take(border.top, edges.Bottom({first.row - 1, first.column}));
        Take(border.bottom, edges.Top({last.row + 1, first.column}));
        resolved.push_back(border);
    }
    for (std::size_t i = 0; i < cells.size(); ++i)
        cells[i].border = resolved[i];
}

} // namespace orrery::look
