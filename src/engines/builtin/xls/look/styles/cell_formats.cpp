#include "engines/builtin/xls/look/styles/cell_formats.h"

#include "engines/builtin/common/number_format_codes.h"
#include "engines/builtin/xls/look/styles/format_fields.h"
#include "engines/builtin/xls/look/styles/style_extension.h"
#include "engines/builtin/xls/records/records.h"
#include "engines/builtin/xls/records/unicode_string.h"
#include "util/error.h"

#include <array>

namespace orrery::xls {
namespace {

constexpr std::size_t kChecksumAt = 16;

/// [MS-OSHARED] 2.4.3
constexpr std::array<std::uint32_t, 256> kChecksumTable = [] {
    constexpr std::uint32_t kPolynomial = 0xAF;
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t i = 0; i < table.size(); ++i) {
        std::uint32_t value = i << 24U;
        for (int bit = 0; bit < 8; ++bit)
            value = (value & 0x80000000U) != 0 ? (value << 1U) ^ kPolynomial : value << 1U;
        table[i] = value & 0xFFFFU;
    }
    return table;
}();

std::uint32_t ChecksumOf(const std::vector<std::string>& pieces)
{
    std::uint32_t sum = 0;
    for (const auto& piece : pieces) {
        for (const char c : piece)
            sum = sum << 8U ^ kChecksumTable[sum >> 24U ^ static_cast<unsigned char>(c)];
    }
    return sum;
}

} // namespace

void CellFormats::Add(std::uint16_t type, std::string_view data)
{
    try {
        Read(type, data);
    }
    catch (const util::Error&) {
        ++damaged_;
    }
}

void CellFormats::Read(std::uint16_t type, std::string_view data)
{
    switch (static_cast<RecordType>(type)) {
    case RecordType::Font:
        return fonts_.Add(data);
    case RecordType::Format:
        return AddNumberFormat(data);
    case RecordType::Xf:
        formats_.emplace_back(data);
        return;
    case RecordType::XfChecksum:
        checksum_ = ReadU32(data, kChecksumAt);
        return;
    case RecordType::XfExt:
        return AddExtension(data);
    case RecordType::Style:
        return AddStyle(data);
    case RecordType::Palette:
        return colors_.SetPalette(data);
    case RecordType::Theme:
        return colors_.SetTheme(data);
    default:
        return;
    }
}

void CellFormats::AddNumberFormat(std::string_view data)
{
    const auto id = ReadU16(data, 0);
    numberFormats_[id] = ReadUnicodeString(data, 2).text;
}

/// [MS-XLS] 2.4.355
void CellFormats::AddExtension(std::string_view data)
{
    constexpr std::size_t kFormatAt = 14;
    extensions_[ReadU16(data, kFormatAt)] = data;
}

/// [MS-XLS] 2.4.269
void CellFormats::AddStyle(std::string_view data)
{
    constexpr std::uint16_t kBuiltIn = 0x8000;
    constexpr std::uint16_t kIndex = 0x0FFF;
    const auto format = ReadU16(data, 0);
    if ((format & kBuiltIn) != 0 && ReadU8(data, 2) == 0)
        normal_ = format & kIndex;
}

/// [MS-XLS] 2.4.354
void CellFormats::Finish()
{
    if (checksum_ && *checksum_ != ChecksumOf(formats_))
        extensions_.clear();
}

std::string CellFormats::NumberFormat(std::uint16_t id) const
{
    if (const auto place = numberFormats_.find(id);
        place != numberFormats_.end() && !place->second.empty())
        return place->second;
    return std::string(builtin::BuiltInNumberFormat(id).value_or("General"));
}

book::CellStyle CellFormats::Style(std::size_t format) const
{
    if (format >= formats_.size())
        format = formats_.size() > kDefaultCell ? kDefaultCell : 0;
    book::CellStyle style;
    if (format >= formats_.size()) {
        style.font = Font(0);
        return style;
    }
    const std::string& data = formats_[format];
    try {
        style.font = Font(ReadU16(data, 0));
        style.numberFormat = NumberFormat(ReadU16(data, 2));
        ReadFormatFields(data, colors_, style);
    }
    catch (const util::Error&) {
        return style; // as far as it goes
    }
    if (const auto place = extensions_.find(format); place != extensions_.end()) {
        ByteCursor cursor(place->second, 18); // after the index and a reserved field
        if (cursor.Position() + 2 <= place->second.size()) {
            const std::size_t count = cursor.U16();
            Extend(style, ReadStyleExtension(cursor, count, colors_), colors_);
        }
    }
    return style;
}

book::Font CellFormats::NormalFont() const
{
    return normal_ < formats_.size() ? Style(normal_).font : Font(0);
}

} // namespace orrery::xls
