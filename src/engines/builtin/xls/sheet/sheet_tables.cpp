#include "engines/builtin/xls/sheet/sheet_tables.h"

#include "book/error.h"
#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/records.h"
#include "engines/builtin/xls/records/unicode_string.h"
#include "engines/builtin/xls/sheet/table_fields.h"
#include "engines/common/sheet_names.h"
#include "util/error.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace orrery::xls {
namespace {

using engines::CutToUnits;
using engines::FoldCase;

constexpr std::size_t kFutureHeader = 12; // of records that newer versions added, [MS-XLS] 2.5.135
constexpr std::size_t kNextTableId = 23;  // in FEATHDR11, [MS-XLS] 2.4.113

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

/// The record at an offset and those that continue it.
Span WithContinuations(std::string_view sheet, std::size_t record)
{
    RecordReader reader(sheet, record);
    reader.Next();
    for (auto next = reader.Peek(); next && (next->type == RecordType::ContinueFrt11 ||
                                             next->type == RecordType::ContinueFrt12);
         next = reader.Peek())
        reader.Next();
    return {record, reader.Position()};
}

/// The data of a table's record and of those that continue it, each of which has a header.
/// [MS-XLS] 2.4.61
std::string JoinTable(std::string_view records)
{
    RecordReader reader(records);
    std::string data(reader.Next().value().data);
    while (const auto record = reader.Next())
        data += record->data.substr(std::min(kFutureHeader, record->data.size()));
    return data;
}

std::string SplitTable(RecordType type, std::string_view data)
{
    std::string records;
    AppendRecord(records, type, data.substr(0, kMaxRecordSize));
    for (std::size_t at = kMaxRecordSize; at < data.size(); at += kMaxRecordSize - kFutureHeader) {
        std::string piece;
        AppendU16(piece, static_cast<std::uint16_t>(RecordType::ContinueFrt11));
        piece.resize(kFutureHeader);
        piece += data.substr(at, kMaxRecordSize - kFutureHeader);
        AppendRecord(records, RecordType::ContinueFrt11, piece);
    }
    return records;
}

/// What unmaps a table; nothing if it cannot be read.
std::optional<TextPatch> UnmappedTable(std::string_view data)
{
    try {
        return RemoveXmlMapping(data);
    }
    catch (const util::Error& error) {
        if (error.Kind() != book::ErrorKind::DamagedWorkbook)
            throw;
        return std::nullopt;
    }
}

class TableFinder {
public:
    void Add(const Record& record)
    {
        switch (record.type) {
        case RecordType::TablesHeader:
            if (NumberAt(record, kNextTableId))
                places_.nextIds.push_back(record.DataBegin() + kNextTableId);
            headers_.push_back(record.begin);
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

    TablePlaces Take(std::string_view sheet)
    {
        for (const std::size_t record : mapped_)
            AddMapped(sheet, record);
        if (!places_.mappedCells.empty())
            AddModelOnly(sheet);
        return std::move(places_);
    }

private:
    void AddTable(const Record& record)
    {
        const auto table = TablePlace(record.data);
        const auto id = table ? NumberAt(record, *table + kTableId) : std::nullopt;
        if (id) {
            AddName(record, *table + kTableName, *id);
            AddId(record, *table + kTableId);
        }
        const auto mapping = XmlMappingOf(record.data);
        if (mapping == XmlMapping::Columns)
            mapped_.push_back(record.begin);
        if (mapping == XmlMapping::Cell)
            places_.mappedCells.insert(id.value());
        else
            otherTables_.insert(id.value_or(0));
    }

    void AddId(const Record& record, std::size_t at)
    {
        const auto id = NumberAt(record, at);
        if (!id)
            return;
        places_.ids.emplace(record.DataBegin() + at, *id);
        owners_.emplace_back(record.begin, *id);
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

    void AddMapped(std::string_view sheet, std::size_t record)
    {
        const auto name = std::lower_bound(
            places_.names.begin(), places_.names.end(), record,
            [](const TableNamePlace& place, std::size_t wanted) { return place.record < wanted; });
        const Span records = WithContinuations(sheet, record);
        auto unmapped = UnmappedTable(JoinTable(records.In(sheet)));
        if (name == places_.names.end() || name->record != record || !unmapped) {
            places_.understood = false;
            return;
        }
        name->longest = kMaxNameLength; // because the records are rebuilt
        const std::size_t data = record + kRecordHeader;
        places_.mapped.push_back(
            {records, {name->begin - data, name->end - data}, name->id, std::move(*unmapped)});
    }

    void AddModelOnly(std::string_view sheet)
    {
        const auto& cells = places_.mappedCells;
        const auto isOfCell = [&](std::uint32_t id) { return cells.contains(id); };
        if (isOfCell(0) || std::any_of(otherTables_.begin(), otherTables_.end(), isOfCell))
            places_.understood = false; // an id does not tell the table
        for (const auto& [record, id] : owners_) {
            if (isOfCell(id))
                places_.modelOnly.push_back(WithContinuations(sheet, record));
        }
        if (otherTables_.empty()) {
            for (const std::size_t record : headers_)
                places_.modelOnly.push_back(WithContinuations(sheet, record));
        }
    }

    TablePlaces places_;
    std::vector<std::pair<std::size_t, std::uint32_t>> owners_; // records with the id of a table
    std::vector<std::size_t> headers_;                          // records before all tables
    std::vector<std::size_t> mapped_;                           // records of mapped columns
    std::set<std::uint32_t> otherTables_; // ids of those that are not mapped cells, 0 if damaged
};

/// The records of a table that a copy has instead of those of its model. `sheet` is the copy.
std::string UnmappedRecords(std::string_view sheet, const MappedTable& table,
                            const std::string& name)
{
    const auto records = table.records.In(sheet);
    TextPatch patch = table.unmapped;
    std::string text;
    AppendUnicodeString(text, name);
    patch.Replace(table.name.begin, table.name.end, std::move(text));
    auto data = patch.Apply(JoinTable(records));
    if (ReadU32(data, kTableSizeField) != 0)
        PutU32(data, kTableSizeField,
               static_cast<std::uint32_t>(data.size() - TablePlace(data).value()));
    return SplitTable(static_cast<RecordType>(ReadU16(records, 0)), data);
}

} // namespace

TablePlaces FindTables(std::string_view sheet)
{
    TableFinder finder;
    RecordReader reader(sheet);
    while (const auto record = reader.Next())
        finder.Add(*record);
    return finder.Take(sheet);
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
    for (const Span& records : places.modelOnly)
        patch.Remove(records.begin, records.end);
    for (const auto& table : places.mapped)
        patch.Replace(table.records.begin, table.records.end,
                      UnmappedRecords(sheet, table, tables.names.at(table.id)));
    for (const auto& place : places.names) {
        const auto fresh = tables.names.find(place.id);
        if (fresh == tables.names.end())
            continue; // of a mapped cell
        std::string name;
        AppendUnicodeString(name, fresh->second);
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
    if (!places.understood)
        throw util::Error(book::ErrorKind::SheetNotCopied, {},
                          "the XML mapping of one of its tables is damaged");
    std::map<std::uint32_t, std::size_t> longest;
    for (const auto& place : places.names) {
        const auto known = longest.emplace(place.id, place.longest).first;
        known->second = std::min(known->second, place.longest);
    }
    FreshTables tables;
    for (const auto& place : places.names) {
        if (places.mappedCells.contains(place.id))
            continue;
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
