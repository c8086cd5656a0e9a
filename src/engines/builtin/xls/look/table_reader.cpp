#include "engines/builtin/xls/look/table_reader.h"

#include "engines/builtin/theme/built_in_table_styles.h"
#include "engines/builtin/xls/look/records/byte_cursor.h"
#include "engines/builtin/xls/look/records/left_out.h"
#include "engines/builtin/xls/look/records/ranges.h"
#include "engines/builtin/xls/records/unicode_string.h"
#include "engines/builtin/xls/sheet/table_fields.h"

#include <algorithm>
#include <string>
#include <utility>
#include <variant>

namespace orrery::xls {
namespace {

constexpr std::size_t kRangeCount = 19;
constexpr std::size_t kRanges = 27;
constexpr std::size_t kHeaderRows = 8; // in the table
constexpr std::size_t kTotalRows = 12;
constexpr std::size_t kMostTables = 1000;

} // namespace

bool TableReader::Read(const LookRecord& record)
{
    std::string joined;
    switch (record.type) {
    case RecordType::Feature11:
    case RecordType::Feature12:
        ReadTable(record.Whole(joined));
        return true;
    case RecordType::List12:
        ReadMore(record.Whole(joined));
        return true;
    default:
        return false;
    }
}

void TableReader::ReadTable(std::string_view data)
{
    const auto place = TablePlace(data);
    if (!place)
        ThrowTooShort();
    if (XmlMappingOf(data) == XmlMapping::Cell || ReadU16(data, kRangeCount) == 0)
        return; // nothing of it is seen
    ByteCursor ranges(data, kRanges);
    const auto range = ReadRange8(ranges);
    if (!range || look_.tables.size() >= kMostTables)
        ThrowDamaged("a table is not in the sheet");
    book::Table table;
    table.range = *range;
    table.headerRows = ReadU32(data, *place + kHeaderRows) != 0 ? 1 : 0;
    table.totalRows = ReadU32(data, *place + kTotalRows) != 0 ? 1 : 0;
    table.name = ReadUnicodeString(data, *place + kTableName).text;
    places_[ReadU32(data, *place + kTableId)] = look_.tables.size();
    look_.tables.push_back(std::move(table));
}

/// The style of a table is in a record behind it. [MS-XLS] 2.4.157 (List12)
void TableReader::ReadMore(std::string_view data)
{
    constexpr std::size_t kHeader = 12;
    constexpr std::uint16_t kStyle = 1;
    enum Flag : std::uint16_t { FirstColumn = 1, LastColumn = 2, Rows = 4, Columns = 8 };
    ByteCursor cursor(data, kHeader);
    const bool isStyle = cursor.U16() == kStyle;
    const auto place = places_.find(cursor.U32());
    if (!isStyle || place == places_.end())
        return;
    auto& table = look_.tables[place->second];
    const auto flags = cursor.U16();
    table.showsFirstColumn = (flags & FirstColumn) != 0;
    table.showsLastColumn = (flags & LastColumn) != 0;
    table.showsRowStripes = (flags & Rows) != 0;
    table.showsColumnStripes = (flags & Columns) != 0;
    const auto name = ReadUnicodeString(data, cursor.Position()).text;
    if (auto style = builtin::BuiltInTableStyle(name, theme_))
        table.style = std::move(*style);
    else if (!name.empty())
        LeaveOut(look_, "table style", table.name, "it is not one of Excel's own");
}

void TableReader::Finish()
{
    for (auto& table : look_.tables) {
        if (table.headerRows == 0)
            continue;
        book::CellAddress address = table.range.first;
        for (; address.column <= table.range.last.column; ++address.column) {
            const auto* cell = look_.FindCell(address);
            const auto* text = cell != nullptr ? std::get_if<std::string>(&cell->content) : nullptr;
            table.columns.push_back(text != nullptr ? *text : std::string());
        }
    }
}

} // namespace orrery::xls
