#include "engines/builtin/xls/sheet/sheet_tables.h"

#include "book/error.h"
#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/records.h"
#include "engines/builtin/xls/records/unicode_string.h"
#include "engines/common/sheet_names.h"
#include "util/error.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace orrery::xls {
namespace {

using engines::CutToUnits;
using engines::FoldCase;

// FEATURE11 and FEATURE12: a header, the table's ranges, the table. [MS-XLS] 2.4.114
constexpr std::size_t kRangeCount = 19;
constexpr std::size_t kRanges = 27;
constexpr std::size_t kRangeSize = 8;
constexpr std::size_t kTableId = 4;    // in the table, [MS-XLS] 2.5.266
constexpr std::size_t kTableName = 64; // the same

constexpr std::size_t kNextTableId = 23; // in FEATHDR11, [MS-XLS] 2.4.113

// LIST12: a header, the kind of content, the table's id. [MS-XLS] 2.4.157
constexpr std::size_t kListContent = 12;
constexpr std::size_t kListTableId = 14;
constexpr std::size_t kListName = 18;
constexpr unsigned kDisplayName = 2;

constexpr std::size_t kFilterTableId = 40; // in AUTOFILTER12, [MS-XLS] 2.4.7

// SORTDATA, [MS-XLS] 2.4.264
constexpr std::size_t kSortFlags = 12;
constexpr std::size_t kSortOwner = 34;
constexpr unsigned kSortOfTable = 1; // "sfp"

// QSIF, [MS-XLS] 2.4.209
constexpr std::size_t kFieldTableId = 12;
constexpr std::size_t kFieldTitle = 16;

constexpr std::size_t kMaxNameLength = 255; // UTF-16 units

/// The number at an offset of the record; nothing if the record is too short.
std::optional<std::uint32_t> NumberAt(const Record& record, std::size_t at)
{
    if (record.data.size() < at + 4)
        return std::nullopt;
    return ReadU32(record.data, at);
}

std::size_t CharacterWidth(std::string_view data, std::size_t text)
{
    return (ReadU8(data, text + 2) & kWideCharacters) != 0 ? 2 : 1;
}

/// The end of a text; nothing if the record is too short.
std::optional<std::size_t> EndOfText(std::string_view data, std::size_t at)
{
    constexpr std::size_t kHead = 3;
    if (data.size() < at + kHead)
        return std::nullopt;
    const std::size_t end = at + kHead + ReadU16(data, at) * CharacterWidth(data, at);
    return end <= data.size() ? std::optional(end) : std::nullopt;
}

class TableFinder {
public:
    void Add(const Record& record)
    {
        switch (record.type) {
        case RecordType::TablesHeader:
            if (NumberAt(record, kNextTableId))
                places_.nextIds.push_back(record.DataBegin() + kNextTableId);
            break;
        case RecordType::Feature11:
        case RecordType::Feature12:
            AddTable(record);
            break;
        case RecordType::List12:
            AddId(record, kListTableId);
            if (record.data.size() > kListName &&
                ReadU16(record.data, kListContent) == kDisplayName)
                AddName(record, kListName, ReadU32(record.data, kListTableId));
            break;
        case RecordType::AutoFilter12:
            AddId(record, kFilterTableId);
            break;
        case RecordType::SortData:
            if (record.data.size() > kSortOwner &&
                (ReadU16(record.data, kSortFlags) >> 3 & 7) == kSortOfTable)
                AddId(record, kSortOwner);
            break;
        case RecordType::QueryField: // not every one belongs to a table
            if (EndOfText(record.data, kFieldTitle) == record.data.size())
                AddId(record, kFieldTableId);
            break;
        default:
            break;
        }
    }

    TablePlaces Take() { return std::move(places_); }

private:
    void AddTable(const Record& record)
    {
        if (record.data.size() < kRanges)
            return;
        const std::size_t table =
            kRanges + std::size_t{ReadU16(record.data, kRangeCount)} * kRangeSize;
        if (const auto id = NumberAt(record, table + kTableId)) {
            AddName(record, table + kTableName, *id);
            AddId(record, table + kTableId);
        }
    }

    void AddId(const Record& record, std::size_t at)
    {
        if (const auto id = NumberAt(record, at))
            places_.ids.emplace(record.DataBegin() + at, *id);
    }

    void AddName(const Record& record, std::size_t at, std::uint32_t id)
    {
        const auto end = EndOfText(record.data, at);
        if (!end)
            return;
        const std::size_t width = CharacterWidth(record.data, at);
        const std::size_t room = kMaxRecordSize - std::min(record.data.size(), kMaxRecordSize);
        places_.names.push_back(
            {record.begin, record.DataBegin() + at, record.DataBegin() + *end,
             ReadUnicodeString(record.data, at).text, id,
             std::min(ReadU16(record.data, at) + room / width, kMaxNameLength)});
    }

    TablePlaces places_;
};

} // namespace

TablePlaces FindTables(std::string_view sheet)
{
    TableFinder finder;
    RecordReader reader(sheet);
    while (const auto record = reader.Next())
        finder.Add(*record);
    return finder.Take();
}

void PutTables(std::string& sheet, TextPatch& patch, const TablePlaces& places,
               const FreshTables& tables)
{
    for (const auto& [at, id] : places.ids) {
        const auto fresh = tables.ids.find(id);
        if (fresh != tables.ids.end())
            PutU32(sheet, at, fresh->second);
    }
    for (const std::size_t at : places.nextIds)
        PutU32(sheet, at, tables.nextId);
    for (const auto& place : places.names) {
        std::string name;
        AppendUnicodeString(name, tables.names.at(place.id));
        const std::size_t size = ReadU16(sheet, place.record + 2);
        std::string newSize;
        AppendU16(newSize,
                  static_cast<std::uint16_t>(size - (place.end - place.begin) + name.size()));
        patch.Replace(place.record + 2, place.record + kRecordHeader, std::move(newSize));
        patch.Replace(place.begin, place.end, std::move(name));
    }
}

TableIdentities::TableIdentities(const std::vector<std::string>& definedNames)
{
    for (const auto& name : definedNames)
        taken_.insert(FoldCase(name));
}

void TableIdentities::Reserve(const TablePlaces& places)
{
    for (const auto& place : places.names) {
        taken_.insert(FoldCase(place.name));
        lastId_ = std::max(lastId_, place.id);
    }
}

FreshTables TableIdentities::AddCopy(const TablePlaces& places)
{
    std::map<std::uint32_t, std::size_t> longest;
    for (const auto& place : places.names) {
        const auto known = longest.emplace(place.id, place.longest).first;
        known->second = std::min(known->second, place.longest);
    }
    FreshTables tables;
    for (const auto& place : places.names) {
        if (tables.ids.emplace(place.id, lastId_ + 1).second) {
            ++lastId_;
            tables.names[place.id] = FreeName(place.name, longest[place.id]);
        }
    }
    tables.nextId = lastId_ + 1;
    return tables;
}

std::string TableIdentities::FreeName(const std::string& name, std::size_t longest)
{
    auto& number = lastNumbers_.emplace(std::pair(FoldCase(name), longest), 1U).first->second;
    while (true) {
        const auto suffix = "_" + std::to_string(++number);
        if (suffix.size() > longest) // the record with the name is full
            throw util::Error(book::ErrorKind::SheetNotCopied, {},
                              "the name of one of its tables cannot be longer");
        auto candidate = std::string(CutToUnits(name, longest - suffix.size())) + suffix;
        if (taken_.insert(FoldCase(candidate)).second)
            return candidate;
    }
}

} // namespace orrery::xls
