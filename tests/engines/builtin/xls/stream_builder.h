#pragma once

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/records.h"
#include "engines/builtin/xls/records/unicode_string.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Records for tests, field by field.
namespace orrery::xls::test {

inline std::string RecordOf(RecordType type, std::string_view data)
{
    std::string record;
    AppendRecord(record, type, data);
    return record;
}

inline std::string Numbers(const std::vector<std::uint16_t>& numbers)
{
    std::string bytes;
    for (const auto number : numbers)
        AppendU16(bytes, number);
    return bytes;
}

/// A BOF record of a kind of substream: 5 globals, 0x10 worksheet, 0x20 chart.
inline std::string BofOf(std::uint16_t kind, std::uint16_t version = 0x0600)
{
    return RecordOf(RecordType::Bof, Numbers({version, kind, 0x0DBB, 0x07CC, 0, 0, 6, 0}));
}

inline std::string EofRecord()
{
    return RecordOf(RecordType::Eof, {});
}

/// A worksheet with these records.
inline std::string SheetOf(std::string_view records)
{
    return BofOf(0x10) + std::string(records) + EofRecord();
}

inline std::string BoundSheetOf(std::string_view name, std::uint32_t offset, std::uint8_t type = 0)
{
    std::string data;
    AppendU32(data, offset);
    AppendU8(data, 0);
    AppendU8(data, type);
    AppendShortUnicodeString(data, name);
    return RecordOf(RecordType::BoundSheet, data);
}

/// The SUPBOOK record for the workbook itself.
inline std::string OwnBookOf(std::uint16_t sheets)
{
    return RecordOf(RecordType::SupBook, Numbers({sheets, 0x0401}));
}

/// EXTERNSHEET with entries of three numbers: book, first and last sheet.
inline std::string ExternSheetOf(const std::vector<std::uint16_t>& entries)
{
    return RecordOf(RecordType::ExternSheet,
                    Numbers({static_cast<std::uint16_t>(entries.size() / 3)}) + Numbers(entries));
}

/// A token for the cell A1 of the sheets in an entry of EXTERNSHEET.
inline std::string CellOn(std::uint16_t link)
{
    return '\x5A' + Numbers({link, 0, 0});
}

/// A NAME record; `sheet` counts from 1, 0 is the workbook.
inline std::string NameOf(std::string_view name, std::uint16_t sheet, std::string_view rgce,
                          std::uint16_t flags = 0)
{
    std::string data = Numbers({flags});
    AppendU8(data, 0);
    AppendU8(data, static_cast<std::uint8_t>(name.size()));
    data += Numbers({static_cast<std::uint16_t>(rgce.size()), 0, sheet, 0, 0});
    AppendUnicodeStringNoCount(data, name);
    return RecordOf(RecordType::Name, data + std::string(rgce));
}

} // namespace orrery::xls::test
