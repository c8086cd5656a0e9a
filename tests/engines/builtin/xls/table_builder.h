#pragma once

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/records.h"
#include "engines/builtin/xls/records/unicode_string.h"
#include "xls/art_builder.h"
#include "xls/stream_builder.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Tables ("lists") for tests, field by field. [MS-XLS] 2.4.114, 2.5.266, 2.5.113
namespace orrery::xls::test {

inline std::string TextOf(std::string_view text)
{
    std::string bytes;
    AppendUnicodeString(bytes, text);
    return bytes;
}

struct BuiltColumn {
    std::uint32_t id = 1;
    std::string nameInSource;
    std::string title = "Title";
    std::string element{}; ///< of an XML map; empty if it is not mapped
    std::string totalFormat{};
    std::string insertFormat{};
    bool hasFilter = false;
    std::string filter{};
    std::string formula{}; ///< its tokens
    std::string total{};   ///< the same
    bool totalIsArray = false;
    std::string totalText{};
    std::string headerStyle{}; ///< only of a table without a header row
};

struct BuiltTable {
    RecordType type = RecordType::Feature11;
    std::uint32_t source = 0; ///< 2 is XML
    std::uint32_t id = 1;
    std::string name = "Table1";
    std::vector<BuiltColumn> columns{};
    bool hasHeaderRow = true;
    bool isCell = false;
    std::string entryId{};
    bool saysSize = false;
};

/// Of records that newer versions added.
inline std::string FutureHeader(RecordType type)
{
    return Numbers({static_cast<std::uint16_t>(type), 0, 0, 0, 0, 0});
}

/// LIST12; of content 2 with the name that is shown.
inline std::string ListOf(std::uint16_t content, std::uint32_t id, std::string_view name = "None")
{
    std::string data = FutureHeader(RecordType::List12) + Numbers({content}) + LongNumbers({id});
    AppendUnicodeString(data, name);
    AppendUnicodeString(data, "a comment");
    return RecordOf(RecordType::List12, data);
}

/// AUTOFILTER12 of a table, 0 is the sheet.
inline std::string FilterOf(std::uint32_t id)
{
    return RecordOf(RecordType::AutoFilter12, FutureHeader(RecordType::AutoFilter12) +
                                                  std::string(28, '\0') + LongNumbers({id}) +
                                                  std::string(16, '\0'));
}

/// The sorting of what the flags say.
inline std::string SortOf(std::uint16_t flags, std::uint32_t id)
{
    return RecordOf(RecordType::SortData, FutureHeader(RecordType::SortData) + Numbers({flags}) +
                                              std::string(20, '\0') + LongNumbers({id}));
}

/// The record before all tables, with the id of the next one.
inline std::string TablesHeader(std::uint32_t next)
{
    std::string data = FutureHeader(RecordType::TablesHeader) + Numbers({5});
    AppendU8(data, 1);
    data += std::string(8, '\xFF') + LongNumbers({next}) + Numbers({0});
    return RecordOf(RecordType::TablesHeader, data);
}

inline std::string ColumnOf(const BuiltColumn& column, const BuiltTable& table)
{
    const bool isMapped = !column.element.empty();
    const std::uint32_t flags =
        (column.hasFilter ? 1U : 0U) | (isMapped ? 4U : 0U) | (column.formula.empty() ? 0U : 8U) |
        (column.total.empty() ? 0U : 0x80U) | (column.totalIsArray ? 0x100U : 0U) |
        (column.headerStyle.empty() ? 0U : 0x200U) | (column.totalText.empty() ? 0U : 0x400U);
    const auto size = [](std::string_view bytes) {
        return static_cast<std::uint32_t>(bytes.size());
    };
    std::string data = LongNumbers({column.id, 0, isMapped ? 0x2125U : 0U,
                                    column.total.empty() ? 0U : 9U, size(column.totalFormat),
                                    0xFFFFFFFF, flags, size(column.insertFormat), 0xFFFFFFFF});
    data += TextOf(column.nameInSource);
    if (!table.isCell)
        data += TextOf(column.title);
    data += column.totalFormat + column.insertFormat;
    if (column.hasFilter)
        data += LongNumbers({size(column.filter)}) + "\xFF\xFF" + column.filter;
    if (isMapped)
        data += Numbers({1}) + LongNumbers({2, 1}) + TextOf(column.element);
    if (!column.formula.empty())
        data += Numbers({static_cast<std::uint16_t>(column.formula.size())}) + column.formula;
    if (!column.total.empty())
        data += Numbers({static_cast<std::uint16_t>(column.total.size())}) + column.total;
    if (!column.totalText.empty())
        data += TextOf(column.totalText);
    if (!table.hasHeaderRow && !table.isCell) {
        data += LongNumbers({5}) + "style";
        if (!column.headerStyle.empty())
            data += TextOf(column.headerStyle);
    }
    return data;
}

/// The data of the table's record with all that continues it.
inline std::string TableDataOf(const BuiltTable& table)
{
    const std::uint32_t flags =
        0xCC0000U | (table.entryId.empty() ? 0U : 0x100000U) | (table.isCell ? 0x200U : 0U);
    std::string body =
        LongNumbers({table.source, table.id, table.hasHeaderRow ? 1U : 0U, 0,
                     static_cast<std::uint32_t>(table.columns.size()) + 1, 64, 0x1FA9, flags}) +
        std::string(32, '\x22') + TextOf(table.name) +
        Numbers({static_cast<std::uint16_t>(table.columns.size())});
    if (!table.entryId.empty())
        body += TextOf(table.entryId);
    for (const auto& column : table.columns)
        body += ColumnOf(column, table);
    std::string data = FutureHeader(table.type) + Numbers({5});
    AppendU8(data, 0);
    data += LongNumbers({0}) + Numbers({1});
    AppendU32(data, table.saysSize ? static_cast<std::uint32_t>(body.size()) : 0);
    return data + Numbers({0}) + Numbers({2, 9, 1, 3}) + body;
}

/// Its record and those that continue it, the first one with `most` bytes.
inline std::string TableOf(const BuiltTable& table, std::size_t most = kMaxRecordSize)
{
    const std::size_t mostLater = kMaxRecordSize - FutureHeader(table.type).size();
    const std::string data = TableDataOf(table);
    std::string records = RecordOf(table.type, data.substr(0, most));
    for (std::size_t at = most; at < data.size(); at += mostLater)
        records += RecordOf(RecordType::ContinueFrt11,
                            FutureHeader(RecordType::ContinueFrt11) + data.substr(at, mostLater));
    return records;
}

/// The same table without its source.
inline BuiltTable Unmapped(BuiltTable table)
{
    table.source = 0;
    for (auto& column : table.columns) {
        column.element.clear();
        column.nameInSource = std::to_string(column.id);
    }
    return table;
}

/// A cell that is mapped.
inline BuiltTable MappedCell(std::uint32_t id, std::string name)
{
    BuiltTable table{.source = 2, .id = id, .name = std::move(name)};
    table.hasHeaderRow = false;
    table.isCell = true;
    table.columns = {{.id = 1, .nameInSource = "owner", .element = "/plan/owner"}};
    return table;
}

} // namespace orrery::xls::test
