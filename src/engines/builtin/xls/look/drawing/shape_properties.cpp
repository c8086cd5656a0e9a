#include "engines/builtin/xls/look/drawing/shape_properties.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/unicode_string.h"
#include "util/unicode.h"

#include <algorithm>

namespace orrery::xls {
namespace {

constexpr std::uint16_t kIdMask = 0x3FFF;
constexpr std::uint16_t kIsComplex = 0x8000;
constexpr std::size_t kEntrySize = 6;
constexpr double kFixedOne = 65536;

} // namespace

void ShapeProperties::Add(std::string_view data, std::size_t count)
{
    count = std::min(count, data.size() / kEntrySize);
    std::size_t dataAt = count * kEntrySize; // of the next property with data
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint16_t key = ReadU16(data, i * kEntrySize);
        Entry entry{ReadU32(data, i * kEntrySize + 2), {}};
        if ((key & kIsComplex) != 0) {
            entry.data = data.substr(std::min(dataAt, data.size()), entry.value);
            dataAt += entry.value;
        }
        entries_[key & kIdMask] = entry;
    }
}

const ShapeProperties::Entry* ShapeProperties::FindEntry(std::uint16_t id) const
{
    const auto found = entries_.find(id);
    return found != entries_.end() ? &found->second : nullptr;
}

std::optional<std::uint32_t> ShapeProperties::Find(ShapeProperty property) const
{
    if (const Entry* entry = FindEntry(static_cast<std::uint16_t>(property)))
        return entry->value;
    return defaults_ != nullptr ? defaults_->Find(property) : std::nullopt;
}

std::int32_t ShapeProperties::Signed(ShapeProperty property, std::int32_t fallback) const
{
    return static_cast<std::int32_t>(Value(property, static_cast<std::uint32_t>(fallback)));
}

double ShapeProperties::Fixed(ShapeProperty property, double fallback) const
{
    const auto value = Find(property);
    return value ? static_cast<std::int32_t>(*value) / kFixedOne : fallback;
}

/// Each bit counts only if the one 16 places above it is set. [MS-ODRAW] 2.3.7.43
bool ShapeProperties::Flag(ShapeProperty property, unsigned bit, bool fallback) const
{
    if (const Entry* entry = FindEntry(static_cast<std::uint16_t>(property));
        entry != nullptr && (entry->value >> (bit + 16U) & 1U) != 0)
        return (entry->value >> bit & 1U) != 0;
    return defaults_ != nullptr ? defaults_->Flag(property, bit, fallback) : fallback;
}

std::string_view ShapeProperties::Data(ShapeProperty property) const
{
    const Entry* entry = FindEntry(static_cast<std::uint16_t>(property));
    return entry != nullptr ? entry->data : std::string_view();
}

std::string ShapeProperties::Text(ShapeProperty property) const
{
    std::u16string units;
    ReadCharacters(Data(property), true, units);
    return util::FromUtf16(std::u16string_view(units).substr(0, units.find(u'\0')));
}

std::optional<std::int32_t> ShapeProperties::Adjustment(unsigned index) const
{
    const Entry* entry = FindEntry(
        static_cast<std::uint16_t>(static_cast<unsigned>(ShapeProperty::Adjustment) + index));
    return entry != nullptr ? std::optional(static_cast<std::int32_t>(entry->value)) : std::nullopt;
}

} // namespace orrery::xls
