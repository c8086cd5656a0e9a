#include "engines/builtin/xls/formula/formula_places.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/formula/object_formulas.h"
#include "engines/builtin/xls/records/unicode_string.h"
#include "util/error.h"

#include <vector>

namespace orrery::xls {
namespace {

/// Goes through the fields of a record and collects the expressions. Reading past the end of the
/// record throws.
class Fields {
public:
    Fields(const Record& record, std::vector<FormulaPlace>& places)
        : record_(record), places_(places)
    {
    }

    std::string_view Data() const { return record_.data; }
    void Skip(std::size_t size) { position_ += size; }
    void SkipText() { position_ += UnicodeStringSize(Data(), position_); }
    std::uint8_t U8() { return Take<1>(ReadU8(Data(), position_)); }
    std::uint16_t U16() { return Take<2>(ReadU16(Data(), position_)); }
    std::uint32_t U32() { return Take<4>(ReadU32(Data(), position_)); }

    /// An expression of `size` bytes here.
    void Formula(std::size_t size)
    {
        Slice(Data(), position_, size);
        if (size != 0)
            places_.push_back({record_.type, record_.DataBegin() + position_, size});
        position_ += size;
    }
    /// An expression after its size and `between` other bytes.
    void SizedFormula(std::size_t between = 0)
    {
        const std::size_t size = U16();
        Skip(between);
        Formula(size);
    }

private:
    template <std::size_t size, class Number> Number Take(Number value)
    {
        position_ += size;
        return value;
    }

    const Record& record_;
    std::vector<FormulaPlace>& places_;
    std::size_t position_ = 0;
};

/// The optional texts after the name's expression have no expressions. [MS-XLS] 2.4.150
void ReadName(Fields& fields)
{
    fields.Skip(3); // flags, key
    const std::size_t characters = fields.U8();
    const std::size_t size = fields.U16();
    fields.Skip(8); // reserved, sheet, sizes of texts
    const bool wide = (fields.U8() & kWideCharacters) != 0;
    fields.Skip(wide ? 2 * characters : characters);
    fields.Formula(size);
}

/// The size of the formats before the expressions follows from a dozen flags; the expressions are
/// at the end of the record. [MS-XLS] 2.4.42
void ReadConditionalFormat(Fields& fields)
{
    constexpr std::size_t kHeader = 6;
    fields.Skip(2); // kind, operator
    const std::size_t size1 = fields.U16();
    const std::size_t size2 = fields.U16();
    if (fields.Data().size() < kHeader + size1 + size2)
        ThrowDamaged("a conditional format is cut off");
    fields.Skip(fields.Data().size() - kHeader - size1 - size2);
    fields.Formula(size1);
    fields.Formula(size2);
}

/// A threshold of a colour scale, a data bar or a set of icons ("CFVO"). [MS-XLS] 2.5.39
void ReadThreshold(Fields& fields)
{
    constexpr std::uint8_t kMinimum = 2;
    constexpr std::uint8_t kMaximum = 3;
    const auto kind = fields.U8();
    const std::size_t size = fields.U16();
    fields.Formula(size);
    if (size == 0 && kind != kMinimum && kind != kMaximum)
        fields.Skip(sizeof(double));
}

/// `between` bytes follow each threshold.
void ReadThresholds(Fields& fields, std::size_t count, std::size_t between)
{
    for (std::size_t i = 0; i < count; ++i) {
        ReadThreshold(fields);
        fields.Skip(between);
    }
}

/// The data of a rule of that kind. [MS-XLS] 2.5.32, 2.5.25, 2.5.36
void ReadRuleKind(Fields& fields, std::uint8_t kind)
{
    constexpr std::uint8_t kColorScale = 3;
    constexpr std::uint8_t kDataBar = 4;
    constexpr std::uint8_t kIcons = 6;
    if (kind != kColorScale && kind != kDataBar && kind != kIcons)
        return;
    fields.Skip(3); // unused
    switch (kind) {
    case kColorScale: {
        const std::size_t count = fields.U8();
        fields.Skip(2); // colours, flags
        ReadThresholds(fields, count, sizeof(double));
        break;
    }
    case kDataBar:
        fields.Skip(3 + 16); // flags, lengths; colour
        ReadThresholds(fields, 2, 0);
        break;
    default: {
        const std::size_t count = fields.U8();
        fields.Skip(2); // the icons, flags
        ReadThresholds(fields, count, 5);
    }
    }
}

/// [MS-XLS] 2.4.43
void ReadConditionalFormat12(Fields& fields)
{
    fields.Skip(12); // header of future records
    const auto kind = fields.U8();
    fields.Skip(1); // operator
    const std::size_t size1 = fields.U16();
    const std::size_t size2 = fields.U16();
    const std::size_t formatSize = fields.U32();
    fields.Skip(formatSize != 0 ? formatSize : 2);
    fields.Formula(size1);
    fields.Formula(size2);
    fields.SizedFormula();
    fields.Skip(5);           // flags, priority, template
    fields.Skip(fields.U8()); // its parameters
    ReadRuleKind(fields, kind);
}

/// [MS-XLS] 2.4.91
void ReadDataValidation(Fields& fields)
{
    constexpr int kTexts = 4; // titles and texts of its two messages
    fields.Skip(4);           // flags
    for (int i = 0; i < kTexts; ++i)
        fields.SkipText();
    fields.SizedFormula(2);
    fields.SizedFormula(2);
}

void ReadObject(const Record& record, std::vector<FormulaPlace>& places)
{
    const auto keep = [&](std::size_t begin, std::size_t size) {
        places.push_back({record.type, record.DataBegin() + begin, size});
    };
    if (record.type == RecordType::Obj)
        ForEachObjectFormula(record.data, keep);
    else
        ForEachTextFormula(record.data, keep);
}

void ReadRecord(const Record& record, std::vector<FormulaPlace>& places)
{
    Fields fields(record, places);
    switch (record.type) {
    case RecordType::Formula:
        fields.Skip(20); // cell, format, result, flags
        return fields.SizedFormula();
    case RecordType::SharedFormula:
        fields.Skip(8); // range, count of uses
        return fields.SizedFormula();
    case RecordType::Array:
        fields.Skip(12); // range, flags
        return fields.SizedFormula();
    case RecordType::ChartLink:
        fields.Skip(6); // result type and number format
        return fields.SizedFormula();
    case RecordType::Name:
        return ReadName(fields);
    case RecordType::ConditionalFormat:
        return ReadConditionalFormat(fields);
    case RecordType::ConditionalFormat12:
        return ReadConditionalFormat12(fields);
    case RecordType::DataValidation:
        return ReadDataValidation(fields);
    case RecordType::Obj:
    case RecordType::TextObject:
        return ReadObject(record, places);
    default:
        return;
    }
}

/// Whether all expressions of the record were found; those before the damage stay in `places`.
bool CanRead(const Record& record, std::vector<FormulaPlace>& places)
{
    try {
        ReadRecord(record, places);
        return true;
    }
    catch (const util::Error&) {
        return false;
    }
}

} // namespace

bool ForEachFormula(std::string_view records, const std::function<void(const FormulaPlace&)>& visit)
{
    bool complete = true;
    std::vector<FormulaPlace> places;
    RecordReader reader(records);
    while (const auto record = reader.Next()) {
        places.clear();
        complete &= CanRead(*record, places);
        for (const auto& place : places)
            visit(place);
    }
    return complete;
}

} // namespace orrery::xls
