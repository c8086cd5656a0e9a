#pragma once

#include "engines/builtin/xls/look/sheet_reader.h"
#include "xls/built_workbook.h"
#include "xls/cell_builder.h"
#include "xls/stream_builder.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Records of formats for tests, and looks of the sheets that are made of records.
namespace orrery::xls::test {

inline std::string LongNumber(std::uint32_t number)
{
    std::string bytes;
    AppendU32(bytes, number);
    return bytes;
}

inline std::string DoubleBytes(double number)
{
    return ResultOf(number);
}

struct BuiltFont {
    std::string name = "Arial";
    std::uint16_t twips = 200;
    std::uint16_t flags = 0;
    std::uint16_t color = 0x7FFF;
    std::uint16_t weight = 400;
    std::uint16_t position = 0;
    std::uint8_t underline = 0;
};

inline std::string FontOf(const BuiltFont& font)
{
    std::string data = Numbers({font.twips, font.flags, font.color, font.weight, font.position});
    AppendU8(data, font.underline);
    data += std::string(3, '\0');
    AppendShortUnicodeString(data, font.name);
    return RecordOf(RecordType::Font, data);
}

inline std::string NumberFormatOf(std::uint16_t id, std::string_view code)
{
    std::string data = Numbers({id});
    AppendUnicodeString(data, code);
    return RecordOf(RecordType::Format, data);
}

/// XF by its fields: the four numbers behind the flags are those of [MS-XLS] 2.5.20.
struct BuiltFormat {
    std::uint16_t font = 0;
    std::uint16_t numberFormat = 0;
    std::uint32_t alignment = 0x20; ///< vertical: bottom
    std::uint32_t lines = 0;
    std::uint32_t moreLines = 0;
    std::uint16_t fill = 0;
};

inline std::string FormatOf(const BuiltFormat& format)
{
    return RecordOf(RecordType::Xf, Numbers({format.font, format.numberFormat, 0}) +
                                        LongNumber(format.alignment) + LongNumber(format.lines) +
                                        LongNumber(format.moreLines) + Numbers({format.fill}));
}

/// A property of XFEXT with its head.
inline std::string PropertyOf(std::uint16_t type, std::string_view data)
{
    return Numbers({type, static_cast<std::uint16_t>(data.size() + 4)}) + std::string(data);
}

inline std::string ColorProperty(std::uint16_t type, std::uint16_t kind, std::int16_t tint,
                                 std::uint32_t value)
{
    return PropertyOf(type, Numbers({kind, static_cast<std::uint16_t>(tint)}) + LongNumber(value) +
                                std::string(8, '\0'));
}

inline std::string FormatExtensionOf(std::uint16_t format,
                                     const std::vector<std::string>& properties)
{
    std::string data = Numbers(
        {0x087D, 0, 0, 0, 0, 0, 0, format, 0, static_cast<std::uint16_t>(properties.size())});
    for (const auto& property : properties)
        data += property;
    return RecordOf(RecordType::XfExt, data);
}

/// The look of a sheet with these records, in a workbook with these records of the globals. XF
/// records among them are numbered from 16 on.
inline book::SheetLook LookOf(std::string_view records, std::string_view globals = {})
{
    LookSource source(WorkbookStream({{"Sheet1", SheetOf(records)}}, globals));
    return ReadSheetLook(source, 0);
}

} // namespace orrery::xls::test
