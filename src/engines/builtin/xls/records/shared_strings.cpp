#include "engines/builtin/xls/records/shared_strings.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/records.h"
#include "engines/builtin/xls/records/shared_string_reader.h"
#include "engines/builtin/xls/records/unicode_string.h"
#include "engines/common/cell_text.h"
#include "util/unicode.h"

#include <algorithm>

namespace orrery::xls {
namespace {

constexpr std::size_t kReferencesAt = kRecordHeader;
constexpr std::size_t kCountAt = kRecordHeader + 4;
constexpr std::size_t kTextHeader = 3; // count and flags

bool IsHighSurrogate(char16_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLowSurrogate(char16_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

/// How many of `units` fit into `room` units without splitting a surrogate pair.
std::size_t WholeCharacters(std::u16string_view units, std::size_t room)
{
    if (units.size() <= room)
        return units.size();
    const bool tears = room > 0 && IsHighSurrogate(units[room - 1]) && IsLowSurrogate(units[room]);
    return room - (tears ? 1 : 0);
}

/// Appends strings to the records of a table. A string begins in a record that has room for its
/// header and its first character; its characters continue in CONTINUE records, each of which
/// begins with their flags.
class StringTableWriter {
public:
    /// `lastRecord` is the offset of the last record's header in `records`.
    StringTableWriter(std::string& records, std::size_t lastRecord)
        : records_(records), recordBegin_(lastRecord)
    {
    }

    void Append(std::u16string_view units)
    {
        const bool wide = NeedsWideCharacters(units);
        const std::size_t width = wide ? 2 : 1;
        const std::size_t first = units.size() < 2            ? units.size()
                                  : IsHighSurrogate(units[0]) ? 2
                                                              : 1;
        if (Room() < kTextHeader + first * width)
            BeginContinue();
        AppendU16(records_, static_cast<std::uint16_t>(units.size()));
        AppendU8(records_, wide ? kWideCharacters : 0);
        while (true) {
            const std::size_t here = WholeCharacters(units, Room() / width);
            AppendCharacters(records_, units.substr(0, here), wide);
            units.remove_prefix(here);
            if (units.empty())
                return EndRecord();
            BeginContinue();
            AppendU8(records_, wide ? kWideCharacters : 0);
        }
    }

private:
    std::size_t DataSize() const { return records_.size() - recordBegin_ - kRecordHeader; }
    std::size_t Room() const { return kMaxRecordSize - std::min(DataSize(), kMaxRecordSize); }
    void EndRecord() { PutU16(records_, recordBegin_ + 2, static_cast<std::uint16_t>(DataSize())); }
    void BeginContinue()
    {
        EndRecord();
        recordBegin_ = records_.size();
        AppendRecord(records_, RecordType::Continue, {});
    }

    std::string& records_;
    std::size_t recordBegin_;
};

std::size_t LastRecord(std::string_view records)
{
    std::size_t begin = 0;
    RecordReader reader(records);
    while (const auto record = reader.Next())
        begin = record->begin;
    return begin;
}

std::string EmptyTable()
{
    std::string records;
    AppendRecord(records, RecordType::Sst, std::string(2 * sizeof(std::uint32_t), '\0'));
    return records;
}

/// The records up to `end`, which is in or right after the last one kept.
std::string CutOff(std::string_view records, std::size_t end)
{
    std::string kept(records.substr(0, end));
    RecordReader reader(records);
    while (const auto record = reader.Next()) {
        if (end <= record->End()) {
            PutU16(kept, record->begin + 2, static_cast<std::uint16_t>(end - record->DataBegin()));
            break;
        }
    }
    return kept;
}

} // namespace

std::uint32_t SharedStrings::References() const
{
    return records_.empty() ? 0 : SharedStringReader(records_).References();
}

SharedStrings::Texts SharedStrings::ReadTexts(std::string_view records)
{
    Texts texts;
    if (records.empty())
        return texts;
    SharedStringReader reader(records);
    SharedString string;
    for (; reader.Next(string); ++texts.count) {
        if (!string.plain)
            continue;
        texts.plain.push_back(string.text);
        texts.indexes.emplace(texts.plain.back(), texts.count);
    }
    texts.end = reader.Position();
    return texts;
}

void SharedStrings::CheckUse(const Texts& texts) const
{
    if (texts.count < used_) {
        ThrowDamaged("its cells use " + std::to_string(used_) + " shared texts, and there are " +
                     std::to_string(texts.count));
    }
}

std::size_t SharedStrings::IndexOf(std::string_view utf8)
{
    engines::CheckTextLength(utf8);
    if (!texts_) {
        auto texts = ReadTexts(records_);
        CheckUse(texts);
        texts_ = std::move(texts);
    }
    auto text = util::ToUtf16(utf8);
    if (const auto found = texts_->indexes.find(text); found != texts_->indexes.end())
        return found->second;
    const std::size_t index = texts_->count + texts_->added.size();
    texts_->added.push_back(std::move(text));
    texts_->indexes.emplace(texts_->added.back(), index);
    return index;
}

SharedStringRecords SharedStrings::ToRecords(std::uint32_t references, std::size_t offset) const
{
    if (records_.empty() && !Changed())
        return {};
    SharedStringRecords records;
    records.sst = records_.empty() ? EmptyTable() : std::string(records_);
    if (Changed()) {
        if (!records_.empty()) // data after the last string has no index
            records.sst = CutOff(records_, texts_->end);
        StringTableWriter writer(records.sst, LastRecord(records.sst));
        for (const auto& text : texts_->added)
            writer.Append(text);
        PutU32(records.sst, kCountAt,
               static_cast<std::uint32_t>(texts_->count + texts_->added.size()));
    }
    PutU32(records.sst, kReferencesAt, references);
    records.extSst = ExtSstRecord(records.sst, offset);
    return records;
}

std::string ExtSstRecord(std::string_view sstRecords, std::size_t offset)
{
    // This many strings share an entry; the rule keeps the entries below 128. [MS-XLS] 2.4.107
    constexpr std::uint32_t kMaxGroups = 128;
    constexpr std::uint32_t kMinStrings = 8;
    constexpr std::uint32_t kMaxStrings = 0xFFFF;
    SharedStringReader reader(sstRecords);
    const std::uint32_t texts =
        std::clamp(reader.Count() / kMaxGroups + 1, kMinStrings, kMaxStrings);
    std::string data;
    AppendU16(data, static_cast<std::uint16_t>(texts));
    SharedString string;
    for (std::uint32_t i = 0; i < reader.Count() && reader.Next(string); ++i) {
        if (i % texts != 0)
            continue;
        AppendU32(data, static_cast<std::uint32_t>(offset + string.begin));
        AppendU16(data, static_cast<std::uint16_t>(string.begin - string.recordBegin));
        AppendU16(data, 0);
    }
    std::string record;
    AppendRecord(record, RecordType::ExtSst, data);
    return record;
}

} // namespace orrery::xls
