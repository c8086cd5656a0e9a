#pragma once

#include "xls/stream_builder.h"

#include <bit>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

/// Records of rows and cells for tests. Rows and columns count from 0, as in the file.
namespace orrery::xls::test {

inline std::string RowOf(std::uint16_t row, std::uint16_t first, std::uint16_t end,
                         std::uint16_t flags = 0x0100, std::uint16_t format = 15,
                         std::uint16_t height = 300)
{
    return RecordOf(RecordType::Row, Numbers({row, first, end, height, 0, 0, flags, format}));
}

inline std::string BlankOf(std::uint16_t row, std::uint16_t column, std::uint16_t format)
{
    return RecordOf(RecordType::Blank, Numbers({row, column, format}));
}

/// A whole number.
inline std::string RkOf(std::uint16_t row, std::uint16_t column, std::uint16_t format, int value)
{
    std::string data = Numbers({row, column, format});
    AppendU32(data, static_cast<std::uint32_t>(value * 4 + 2));
    return RecordOf(RecordType::Rk, data);
}

inline std::string NumberOf(std::uint16_t row, std::uint16_t column, std::uint16_t format,
                            double value)
{
    std::string data = Numbers({row, column, format});
    AppendU64(data, std::bit_cast<std::uint64_t>(value));
    return RecordOf(RecordType::Number, data);
}

inline std::string LabelSstOf(std::uint16_t row, std::uint16_t column, std::uint16_t format,
                              std::uint32_t index)
{
    std::string data = Numbers({row, column, format});
    AppendU32(data, index);
    return RecordOf(RecordType::LabelSst, data);
}

inline std::string MulBlankOf(std::uint16_t row, std::uint16_t first,
                              const std::vector<std::uint16_t>& formats)
{
    return RecordOf(RecordType::MulBlank,
                    Numbers({row, first}) + Numbers(formats) +
                        Numbers({static_cast<std::uint16_t>(first + formats.size() - 1)}));
}

/// Whole numbers; each has the format 100 + its value.
inline std::string MulRkOf(std::uint16_t row, std::uint16_t first,
                           const std::vector<std::uint16_t>& values)
{
    std::string data = Numbers({row, first});
    for (const std::uint16_t value : values) {
        AppendU16(data, static_cast<std::uint16_t>(100 + value));
        AppendU32(data, value * 4U + 2);
    }
    AppendU16(data, static_cast<std::uint16_t>(first + values.size() - 1));
    return RecordOf(RecordType::MulRk, data);
}

inline std::string ResultOf(double value)
{
    std::string result;
    AppendU64(result, std::bit_cast<std::uint64_t>(value));
    return result;
}

/// The result that says that a STRING record has the text.
inline std::string TextResult()
{
    return {"\0\0\0\0\0\0\xFF\xFF", 8};
}

inline std::string EmptyResult()
{
    return {"\3\0\0\0\0\0\xFF\xFF", 8};
}

inline std::string FormulaOf(std::uint16_t row, std::uint16_t column, std::uint16_t format,
                             std::string_view result, std::uint16_t flags, std::string_view rgce)
{
    return RecordOf(RecordType::Formula,
                    Numbers({row, column, format}) + std::string(result) +
                        Numbers({flags, 0, 0, static_cast<std::uint16_t>(rgce.size())}) +
                        std::string(rgce));
}

inline std::string StringOf(std::string_view text)
{
    std::string data;
    AppendU16(data, static_cast<std::uint16_t>(text.size()));
    AppendU8(data, 0);
    return RecordOf(RecordType::String, data + std::string(text));
}

/// The token of a formula that belongs to another cell.
inline std::string ExpOf(std::uint16_t row, std::uint16_t column)
{
    return '\x01' + Numbers({row, column});
}

/// A range: its rows, then its columns, in bytes.
inline std::string RangeOf(std::uint16_t firstRow, std::uint16_t lastRow, std::uint8_t firstColumn,
                           std::uint8_t lastColumn)
{
    std::string range = Numbers({firstRow, lastRow});
    AppendU8(range, firstColumn);
    AppendU8(range, lastColumn);
    return range;
}

inline std::string SharedFormulaOf(std::string_view range, std::uint8_t uses, std::string_view rgce)
{
    std::string data(range);
    AppendU8(data, 0);
    AppendU8(data, uses);
    return RecordOf(RecordType::SharedFormula,
                    data + Numbers({static_cast<std::uint16_t>(rgce.size())}) + std::string(rgce));
}

inline std::string ArrayOf(std::string_view range, std::string_view rgce)
{
    return RecordOf(RecordType::Array,
                    std::string(range) +
                        Numbers({0, 0, 0, static_cast<std::uint16_t>(rgce.size())}) +
                        std::string(rgce));
}

inline std::string TableOf(std::string_view range)
{
    return RecordOf(RecordType::Table, std::string(range) + Numbers({0, 0, 0, 0, 0}));
}

inline std::string DbCellOf(std::uint32_t distance, const std::vector<std::uint16_t>& cells)
{
    std::string data;
    AppendU32(data, distance);
    return RecordOf(RecordType::DbCell, data + Numbers(cells));
}

inline std::string IndexOf(std::uint32_t firstRow, std::uint32_t rowsEnd,
                           const std::vector<std::uint32_t>& places)
{
    std::string data;
    AppendU32(data, 0);
    AppendU32(data, firstRow);
    AppendU32(data, rowsEnd);
    for (const std::uint32_t place : places)
        AppendU32(data, place);
    return RecordOf(RecordType::Index, data);
}

inline std::string DimensionsOf(std::uint32_t firstRow, std::uint32_t rowsEnd,
                                std::uint16_t firstColumn, std::uint16_t columnsEnd)
{
    std::string data;
    AppendU32(data, firstRow);
    AppendU32(data, rowsEnd);
    return RecordOf(RecordType::Dimensions, data + Numbers({firstColumn, columnsEnd, 0}));
}

inline std::string ColumnInfoOf(std::uint16_t first, std::uint16_t last, std::uint16_t format)
{
    return RecordOf(RecordType::ColumnInfo, Numbers({first, last, 2000, format, 0, 0}));
}

/// Ranges of four numbers each: first and last row, first and last column.
inline std::string MergeCellsOf(const std::vector<std::uint16_t>& ranges)
{
    return RecordOf(RecordType::MergeCells,
                    Numbers({static_cast<std::uint16_t>(ranges.size() / 4)}) + Numbers(ranges));
}

inline std::string WorksheetOf(std::string_view records)
{
    return BofOf(0x10) + std::string(records) + RecordOf(RecordType::Window2, Numbers({0})) +
           EofRecord();
}

} // namespace orrery::xls::test
