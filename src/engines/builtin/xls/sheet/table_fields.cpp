#include "engines/builtin/xls/sheet/table_fields.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/formula/formula_tokens.h"
#include "engines/builtin/xls/records/unicode_string.h"

#include <cstdint>
#include <string>
#include <utility>

namespace orrery::xls {
namespace {

using builtin::TextPatch;

constexpr std::size_t kRangeCount = 19;
constexpr std::size_t kRanges = 27;
constexpr std::size_t kRangeSize = 8;

// In the table. [MS-XLS] 2.5.266
constexpr std::size_t kSource = 0;
constexpr std::size_t kHeaderRow = 8;
constexpr std::size_t kTableFlags = 28;
constexpr std::uint32_t kXmlSource = 2;
constexpr std::uint32_t kSingleCell = 1U << 9;
constexpr std::uint32_t kHasProvider = 1U << 14; // "fLoadCSPName"
constexpr std::uint32_t kHasEntryId = 1U << 20;

// Of a column. [MS-XLS] 2.5.113
constexpr std::uint32_t kHasFilter = 1U << 0;
constexpr std::uint32_t kHasXmlMap = 1U << 2;
constexpr std::uint32_t kHasFormula = 1U << 3;
constexpr std::uint32_t kHasTotal = 1U << 7;
constexpr std::uint32_t kTotalIsArray = 1U << 8;
constexpr std::uint32_t kHasHeaderStyle = 1U << 9;
constexpr std::uint32_t kHasTotalText = 1U << 10;

/// Throws if a formula continues behind its tokens: their size is the only one that is stored.
void CheckHasNoExtraData(std::string_view tokens)
{
    constexpr std::uint8_t kArray = 0x20;
    constexpr std::uint8_t kMemoryArea = 0x26;
    FormulaTokenReader reader(tokens);
    while (const auto token = reader.Next()) {
        if (token->id == kArray || token->id == kMemoryArea)
            ThrowDamaged("the formula of a table's total has constants");
    }
    if (!reader.Complete())
        ThrowDamaged("the formula of a table's total cannot be read");
}

std::size_t CheckedPlace(std::string_view record)
{
    const auto table = TablePlace(record);
    if (!table)
        ThrowTooShort();
    return *table;
}

/// Goes through a record from its table on; every step is checked.
class MappingRemover {
public:
    explicit MappingRemover(std::string_view record)
        : record_(record), table_(CheckedPlace(record)), at_(table_ + kTableName),
          hasHeaderRow_(ReadU32(record, table_ + kHeaderRow) != 0)
    {
    }

    TextPatch Remove()
    {
        PutNumber(table_ + kSource, 0);
        SkipText(); // the table's name
        const std::size_t columns = ReadU16(record_, at_);
        at_ += 2;
        const std::uint32_t flags = ReadU32(record_, table_ + kTableFlags);
        if ((flags & kHasProvider) != 0)
            SkipText();
        if ((flags & kHasEntryId) != 0)
            SkipText();
        for (std::size_t i = 0; i < columns; ++i)
            RemoveFromColumn();
        if (at_ != record_.size())
            ThrowDamaged("a table's record does not end with its last column");
        return std::move(patch_);
    }

private:
    void RemoveFromColumn()
    {
        constexpr std::size_t kXmlType = 8;
        constexpr std::size_t kTotalFormatSize = 16;
        constexpr std::size_t kFlags = 24;
        constexpr std::size_t kInsertFormatSize = 28;
        constexpr std::size_t kFixedSize = 36;
        const std::uint32_t id = ReadU32(record_, at_);
        const std::size_t totalFormat = ReadU32(record_, at_ + kTotalFormatSize);
        const std::uint32_t flags = ReadU32(record_, at_ + kFlags);
        const std::size_t insertFormat = ReadU32(record_, at_ + kInsertFormatSize);
        PutNumber(at_ + kXmlType, 0);
        PutNumber(at_ + kFlags, flags & ~kHasXmlMap);
        Skip(kFixedSize);
        ReplaceText(std::to_string(id)); // the name in the source
        SkipText();                      // the title
        Skip(totalFormat);
        Skip(insertFormat);
        if ((flags & kHasFilter) != 0)
            SkipFilter();
        if ((flags & kHasXmlMap) != 0)
            RemoveXmlMap();
        if ((flags & kHasFormula) != 0)
            SkipFormula();
        if ((flags & kHasTotal) != 0)
            SkipTotal((flags & kTotalIsArray) != 0);
        if ((flags & kHasTotalText) != 0)
            SkipText();
        if (!hasHeaderRow_)
            SkipHeader((flags & kHasHeaderStyle) != 0);
    }

    void SkipFilter() // [MS-XLS] 2.5.112
    {
        const std::size_t size = ReadU32(record_, at_);
        Skip(6);
        Skip(size);
    }

    void RemoveXmlMap() // [MS-XLS] 2.5.120 to 2.5.122
    {
        const std::size_t begin = at_;
        const std::size_t entries = ReadU16(record_, at_);
        at_ += 2;
        for (std::size_t i = 0; i < entries; ++i) {
            Skip(8);    // flags, the map
            SkipText(); // the element
        }
        patch_.Remove(begin, at_);
    }

    std::string_view SkipFormula() // [MS-XLS] 2.5.114
    {
        const std::size_t size = ReadU16(record_, at_);
        at_ += 2;
        return Skip(size);
    }

    void SkipTotal(bool isArray) // [MS-XLS] 2.5.118
    {
        const auto tokens = SkipFormula();
        if (isArray)
            CheckHasNoExtraData(tokens);
    }

    void SkipHeader(bool hasStyle) // the formats of a header row that is not shown, 2.5.17
    {
        const std::size_t size = ReadU32(record_, at_);
        at_ += 4;
        Skip(size);
        if (hasStyle)
            SkipText();
    }

    std::string_view Skip(std::size_t size)
    {
        const auto skipped = Slice(record_, at_, size);
        at_ += size;
        return skipped;
    }

    void SkipText() { at_ += UnicodeStringSize(record_, at_); }

    void ReplaceText(std::string_view text)
    {
        const std::size_t begin = at_;
        SkipText();
        std::string bytes;
        AppendUnicodeString(bytes, text);
        patch_.Replace(begin, at_, std::move(bytes));
    }

    void PutNumber(std::size_t at, std::uint32_t number)
    {
        std::string bytes;
        AppendU32(bytes, number);
        patch_.Replace(at, at + sizeof(number), std::move(bytes));
    }

    std::string_view record_;
    std::size_t table_;
    std::size_t at_; // everything before it is read
    bool hasHeaderRow_;
    TextPatch patch_;
};

} // namespace

std::optional<std::size_t> TablePlace(std::string_view record)
{
    if (record.size() < kRanges)
        return std::nullopt;
    return kRanges + std::size_t{ReadU16(record, kRangeCount)} * kRangeSize;
}

XmlMapping XmlMappingOf(std::string_view record)
{
    const auto table = TablePlace(record);
    const auto has = [&](std::size_t field) { return record.size() >= *table + field + 4; };
    if (!table || !has(kSource) || ReadU32(record, *table + kSource) != kXmlSource)
        return XmlMapping::None;
    const bool isCell =
        has(kTableFlags) && (ReadU32(record, *table + kTableFlags) & kSingleCell) != 0;
    return isCell ? XmlMapping::Cell : XmlMapping::Columns;
}

TextPatch RemoveXmlMapping(std::string_view record)
{
    return MappingRemover(record).Remove();
}

} // namespace orrery::xls
