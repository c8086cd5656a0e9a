#include "engines/builtin/xls/formula/references.h"

#include "book/error.h"
#include "engines/builtin/xls/compound/bytes.h"
#include "util/error.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace orrery::xls {
namespace {

constexpr std::size_t kMaxEntries = 0xFFFF; // of a list whose length is 16 bits wide
constexpr std::size_t kNameScope = 8;       // offset of the sheet in a NAME record's data

/// The data of a record and its continuations.
std::string Joined(std::string_view records)
{
    std::string data;
    RecordReader reader(records);
    while (const auto record = reader.Next())
        data += record->data;
    return data;
}

} // namespace

std::vector<std::size_t> PositionsOfOriginals(const std::vector<SavedSheet>& sheets)
{
    std::vector<std::size_t> positions;
    for (std::size_t i = 0; i < sheets.size(); ++i) {
        if (sheets[i].IsCopy)
            continue;
        positions.resize(std::max(positions.size(), sheets[i].Origin + 1));
        positions[sheets[i].Origin] = i;
    }
    return positions;
}

References::References(const Globals& globals, const std::vector<SavedSheet>& sheets)
    : globals_(globals), sheets_(sheets), positions_(PositionsOfOriginals(sheets))
{
    AddLinks();
    AddNames();
}

void References::AddLinks()
{
    for (std::size_t i = 0; i < sheets_.size(); ++i) {
        const auto isModel = [&](const SheetLink& link) {
            const auto span = globals_.OwnSheets(link);
            return span && span->IsOnly(sheets_[i].Origin);
        };
        const auto& links = globals_.Links();
        if (!sheets_[i].IsCopy || std::none_of(links.begin(), links.end(), isModel))
            continue;
        const auto index = links.size() + addedLinks_.size();
        if (index >= kMaxEntries)
            throw util::Error(book::ErrorKind::SheetNotCopied, sheets_[i].Name,
                              "the workbook has too many references to sheets");
        linkOfCopy_[i] = static_cast<std::uint16_t>(index);
        addedLinks_.push_back(i);
    }
}

void References::AddNames()
{
    std::map<std::size_t, std::vector<std::size_t>> namesOf; // by the model's origin
    for (std::size_t position = 0; position < sheets_.size(); ++position) {
        if (!sheets_[position].IsCopy)
            continue;
        const auto origin = sheets_[position].Origin;
        if (!namesOf.contains(origin))
            namesOf[origin] = NamesToRepeat(origin);
        RepeatNames(namesOf[origin], position);
    }
}

/// The indexes of the model's own names and of the workbook's names that refer to it.
std::vector<std::size_t> References::NamesToRepeat(std::size_t origin) const
{
    const auto& names = globals_.Names();
    std::unordered_set<std::string_view> own;
    for (const auto& name : names) {
        if (name.Sheet == origin + 1)
            own.insert(name.Key);
    }
    std::vector<std::size_t> repeated;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto& name = names[i];
        if (name.Sheet == origin + 1 ||
            (name.Sheet == 0 && !name.IsMacro && !own.contains(name.Key) && RefersTo(name, origin)))
            repeated.push_back(i);
    }
    return repeated;
}

void References::RepeatNames(const std::vector<std::size_t>& names, std::size_t position)
{
    std::unordered_map<std::string_view, std::uint32_t> indexes;
    for (const std::size_t name : names) {
        const auto next = globals_.Names().size() + addedNames_.size() + 1;
        const auto [known, isNew] =
            indexes.emplace(globals_.Names()[name].Key, static_cast<std::uint32_t>(next));
        addedNameIndex_[{position, name}] = known->second;
        if (!isNew) // the same name twice on one sheet is damage
            continue;
        if (next > kMaxEntries)
            throw util::Error(book::ErrorKind::SheetNotCopied, sheets_[position].Name,
                              "the workbook has too many names");
        addedNames_.push_back({name, position});
    }
}

bool References::RefersTo(const NameEntry& name, std::size_t origin) const
{
    for (const auto link : ReadFacts(name.place.In(globals_.Stream())).sheets) {
        const auto span = globals_.OwnSheets(link);
        if (span && span->IsOnly(origin))
            return true;
    }
    return false;
}

bool References::ChangeAt(std::size_t position) const
{
    const auto added = addedNameIndex_.lower_bound({position, 0});
    return linkOfCopy_.contains(position) ||
           (added != addedNameIndex_.end() && added->first.first == position);
}

FormulaMap References::MapFor(std::size_t position) const
{
    FormulaMap map;
    map.sheet = [this, position](std::uint16_t link) { return LinkAt(position, link); };
    map.name = [this, position](std::uint32_t name) { return NameAt(position, name); };
    map.externName = [this, position](std::uint16_t link, std::uint32_t name) {
        const bool own = link < globals_.Links().size() && globals_.OwnBook() &&
                         globals_.Links()[link].book == *globals_.OwnBook();
        return own && LinkAt(position, link) != link ? NameAt(position, name) : name;
    };
    return map;
}

std::uint16_t References::LinkAt(std::size_t position, std::uint16_t link) const
{
    const auto own = linkOfCopy_.find(position);
    const auto span = globals_.OwnSheets(link);
    const bool toModel = span && span->IsOnly(sheets_[position].Origin);
    return toModel && own != linkOfCopy_.end() ? own->second : link;
}

std::uint32_t References::NameAt(std::size_t position, std::uint32_t name) const
{
    const auto added =
        name == 0 ? addedNameIndex_.end() : addedNameIndex_.find({position, name - 1});
    return added == addedNameIndex_.end() ? name : added->second;
}

std::int16_t References::Moved(std::int16_t sheet) const
{
    const bool isSheet = sheet >= 0 && static_cast<std::size_t>(sheet) < positions_.size();
    return isSheet ? static_cast<std::int16_t>(positions_[static_cast<std::size_t>(sheet)]) : sheet;
}

std::string References::ExternSheet() const
{
    if (globals_.ExternSheetPlace().Empty())
        return {};
    std::string data;
    AppendU16(data, static_cast<std::uint16_t>(globals_.Links().size() + addedLinks_.size()));
    const auto append = [&data](const SheetLink& link) {
        AppendU16(data, link.book);
        AppendU16(data, static_cast<std::uint16_t>(link.first));
        AppendU16(data, static_cast<std::uint16_t>(link.last));
    };
    for (const auto& link : globals_.Links()) {
        const bool own = globals_.OwnBook() && link.book == *globals_.OwnBook();
        append(own ? SheetLink{link.book, Moved(link.first), Moved(link.last)} : link);
    }
    for (const auto position : addedLinks_) {
        const auto sheet = static_cast<std::int16_t>(position);
        append({static_cast<std::uint16_t>(*globals_.OwnBook()), sheet, sheet});
    }
    std::string records;
    AppendRecord(records, RecordType::ExternSheet, data);
    return records;
}

std::string References::AddedNames() const
{
    std::string records;
    for (const auto& added : addedNames_) {
        auto data = Joined(globals_.Names()[added.name].place.In(globals_.Stream()));
        PutU16(data, kNameScope, static_cast<std::uint16_t>(added.position + 1));
        std::string record;
        AppendRecord(record, RecordType::Name, data);
        RemapFormulas(record, MapFor(added.position));
        records += record;
    }
    return records;
}

std::uint16_t References::ScopeOf(const NameEntry& name) const
{
    if (name.Sheet == 0 || name.Sheet > positions_.size())
        return name.Sheet;
    return static_cast<std::uint16_t>(positions_[name.Sheet - 1U] + 1);
}

} // namespace orrery::xls
