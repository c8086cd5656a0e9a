#include "engines/builtin/xls/look/records/ranges.h"

#include <algorithm>

namespace orrery::xls {

std::optional<book::CellRange> ReadRange8(ByteCursor& cursor)
{
    constexpr int kColumns = 256;
    const int firstRow = cursor.U16();
    const int lastRow = cursor.U16();
    const int firstColumn = cursor.U16();
    const int lastColumn = cursor.U16();
    if (lastRow < firstRow || lastColumn < firstColumn || firstColumn >= kColumns)
        return std::nullopt;
    return book::CellRange{{firstRow + 1, firstColumn + 1},
                           {lastRow + 1, std::min(lastColumn + 1, kColumns)}};
}

} // namespace orrery::xls
