#pragma once

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/records.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Office art for tests, record by record. [MS-ODRAW] 2.2
namespace orrery::xls::test {

inline std::string ArtOf(std::uint16_t type, std::string_view data, std::uint16_t instance = 0,
                         std::uint16_t version = 0)
{
    std::string art;
    AppendU16(art, static_cast<std::uint16_t>(instance << 4 | version));
    AppendU16(art, type);
    AppendU32(art, static_cast<std::uint32_t>(data.size()));
    return art + std::string(data);
}

inline std::string ContainerOf(std::uint16_t type, std::string_view content)
{
    return ArtOf(type, content, 0, 15);
}

inline std::string LongNumbers(const std::vector<std::uint32_t>& numbers)
{
    std::string bytes;
    for (const auto number : numbers)
        AppendU32(bytes, number);
    return bytes;
}

/// A table of properties: keys with their flags, and values.
inline std::string PropertiesOf(const std::vector<std::pair<std::uint16_t, std::uint32_t>>& values,
                                std::uint16_t type = 0xF00B)
{
    std::string data;
    for (const auto& [key, value] : values) {
        AppendU16(data, key);
        AppendU32(data, value);
    }
    return ArtOf(type, data, static_cast<std::uint16_t>(values.size()), 3);
}

inline std::string ShapeOf(std::uint32_t id, std::string_view more = {})
{
    return ContainerOf(0xF004, ArtOf(0xF00A, LongNumbers({id, 0}), 1, 2) + std::string(more));
}

/// A drawing with its count of shapes, the last one's id, and the content after both.
inline std::string DrawingOf(std::uint16_t id, std::uint32_t shapeCount, std::uint32_t lastShape,
                             std::string_view content)
{
    return ContainerOf(0xF002, ArtOf(0xF008, LongNumbers({shapeCount, lastShape}), id) +
                                   std::string(content));
}

/// The art of a drawing group: the numbers of its table in order, and its pictures.
inline std::string GroupOf(const std::vector<std::uint32_t>& table, std::string_view pictures = {})
{
    std::string content = ArtOf(0xF006, LongNumbers(table));
    if (!pictures.empty())
        content += ContainerOf(0xF001, pictures);
    return ContainerOf(0xF000, content);
}

/// A picture with a count of its uses and `size` bytes of its own.
inline std::string PictureOf(std::uint32_t uses, std::size_t size = 0)
{
    return ArtOf(0xF007, std::string(24, '\x11') + LongNumbers({uses}) + std::string(8 + size, 'p'),
                 5, 2);
}

/// An HFPICTURE record with a drawing, or with the group of drawings.
inline std::string HeaderPictureOf(std::string_view art, std::uint8_t flags = 1)
{
    std::string data;
    AppendU16(data, 0x0866);
    data.append(10, '\0');
    AppendU8(data, flags);
    AppendU8(data, 0);
    std::string record;
    AppendRecord(record, RecordType::HeaderFooterPicture, data + std::string(art));
    return record;
}

} // namespace orrery::xls::test
