#include "engines/builtin/xls/look/chart/chart_data.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/formula_text/formula_text.h"
#include "engines/builtin/xls/records/unicode_string.h"

#include <bit>

namespace orrery::xls {

ChartReference ReadChartReference(std::string_view data, const DrawingSource& source)
{
    constexpr std::uint8_t kIsReference = 2;
    constexpr std::size_t kTokens = 8;
    ChartReference reference;
    reference.kind = static_cast<ChartDataKind>(ReadU8(data, 0));
    const std::uint16_t format = ReadU16(data, 4);
    constexpr std::uint16_t kNoFormat = 0x8000; // what some writers mark unknown formats with
    if (format != 0 && format < kNoFormat)
        reference.numberFormat = source.styles.numberFormat(format);
    if (ReadU8(data, 1) != kIsReference)
        return reference;
    const std::size_t size = ReadU16(data, 6);
    const auto text =
        FormulaText(Slice(data, kTokens, size), data.substr(kTokens + size), {source.names});
    reference.formula = text.value_or(std::string());
    return reference;
}

std::string ReadChartText(std::string_view data)
{
    return ReadShortUnicodeString(data, 2).text;
}

std::optional<CachedValue> ReadCachedValue(const Record& record)
{
    const std::string_view data = record.data;
    CachedValue value{ReadU16(data, 2), ReadU16(data, 0), {}};
    switch (record.type) {
    case RecordType::Number:
        value.content = std::bit_cast<double>(ReadU64(data, 6));
        return value;
    case RecordType::Label:
        value.content = ReadUnicodeString(data, 6).text;
        return value;
    case RecordType::BoolErr:
        if (ReadU8(data, 7) != 0)
            value.content = static_cast<book::CellError>(ReadU8(data, 6));
        else
            value.content = ReadU8(data, 6) != 0;
        return value;
    case RecordType::Blank:
        return value;
    default:
        return std::nullopt;
    }
}

} // namespace orrery::xls
