#pragma once

#include "engines/builtin/xlsx/sheet/sheet_cells.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace orrery::xlsx {

/// A worksheet part with these elements.
inline std::string WorksheetXml(std::string_view elements)
{
    return "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">" +
           std::string(elements) + "</worksheet>";
}

inline std::shared_ptr<const SheetText> ReadSheet(std::string xml)
{
    return std::make_shared<SheetText>(std::make_shared<const std::string>(std::move(xml)),
                                       "/xl/worksheets/sheet1.xml");
}

/// A value to be written into a cell.
struct Write {
    std::string_view cell;
    WrittenValue value;
};

inline Write Number(std::string_view cell, std::int16_t number)
{
    return {cell, number};
}

inline Write Text(std::string_view cell, std::size_t index)
{
    return {cell, SharedStringIndex{index}};
}

inline void SetAll(SheetCells& cells, const std::vector<Write>& writes)
{
    for (const Write& write : writes) {
        const auto address = ParseCellAddress(write.cell);
        ASSERT_TRUE(address) << write.cell;
        cells.Set(address->row, address->column, write.value);
    }
}

} // namespace orrery::xlsx
