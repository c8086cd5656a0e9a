#include "engines/builtin/xls/globals_patch.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/unicode_string.h"

#include <algorithm>
#include <utility>

namespace orrery::xls {
namespace {

std::string BoundSheet(const SheetEntry& entry, const std::string& name)
{
    std::string data;
    AppendU32(data, entry.Offset);
    AppendU8(data, entry.State);
    AppendU8(data, entry.Type);
    AppendShortUnicodeString(data, name);
    std::string record;
    AppendRecord(record, RecordType::BoundSheet, data);
    return record;
}

class Patcher {
public:
    Patcher(const Globals& globals, SavedGlobals saved)
        : globals_(globals), saved_(std::move(saved)),
          bytes_(globals.Stream().substr(0, globals.End())),
          positions_(PositionsOfOriginals(saved_.sheets))
    {
    }

    std::string Patched()
    {
        PatchRecords();
        PatchSheets();
        PatchReferences();
        if (!saved_.drawingGroup.empty())
            Replace(globals_.DrawingGroupPlace(), std::move(saved_.drawingGroup));
        if (!saved_.headerPictures.empty())
            Replace(globals_.HeaderPicturesPlace(), std::move(saved_.headerPictures));
        SheetPlaces(bytes_).Rename(patch_, bytes_, saved_.nameOf);
        if (saved_.strings)
            PatchStrings();
        return patch_.Apply(bytes_);
    }

private:
    void Replace(const Span& place, std::string records)
    {
        patch_.Replace(place.begin, place.end, std::move(records));
    }

    /// Patches records that keep their place and size.
    void PatchRecords()
    {
        RecordReader reader(bytes_);
        while (const auto record = reader.Next()) {
            if (record->type == RecordType::Window1)
                PatchWindow(*record);
            else if (record->type == RecordType::SupBook && ReadU16(record->data, 2) == kOwnBook)
                PutNumber(record->DataBegin(), saved_.sheets.size());
            else if (record->type == RecordType::RecalcId && saved_.recalculate &&
                     record->data.size() >= 8)
                PutBuild(record->DataBegin());
        }
    }

    /// Clears the build that calculated the workbook, so that every program calculates it again.
    /// [MS-XLS] 2.4.227
    void PutBuild(std::size_t data) { patch_.Replace(data + 4, data + 8, std::string(4, '\0')); }

    /// [MS-XLS] 2.4.345
    void PatchWindow(const Record& record)
    {
        constexpr std::size_t kActive = 10;
        constexpr std::size_t kFirst = 12;
        constexpr std::size_t kSelected = 14;
        for (const auto field : {kActive, kFirst}) {
            const auto sheet = ReadU16(record.data, field);
            if (sheet < positions_.size())
                PutNumber(record.DataBegin() + field, positions_[sheet]);
        }
        ReadU16(record.data, kSelected);
        if (saved_.selectsOneSheet)
            PutNumber(record.DataBegin() + kSelected, 1);
    }

    void PutNumber(std::size_t at, std::size_t value)
    {
        if (ReadU16(bytes_, at) == value)
            return;
        std::string number;
        AppendU16(number, static_cast<std::uint16_t>(value));
        patch_.Replace(at, at + sizeof(std::uint16_t), std::move(number));
    }

    void PatchSheets()
    {
        const auto& entries = globals_.Sheets();
        auto place = entries.front().place.begin;
        for (const auto& sheet : saved_.sheets) {
            const auto& entry = entries[sheet.Origin];
            if (sheet.IsCopy) {
                patch_.Insert(place, BoundSheet(entry, sheet.Name));
                continue;
            }
            if (sheet.Name != entry.Name)
                Replace(entry.place, BoundSheet(entry, sheet.Name));
            place = entry.place.end;
        }
        if (globals_.TabIdsPlace().Empty() || entries.size() == saved_.sheets.size())
            return;
        std::string ids;
        for (const auto id : saved_.tabIds)
            AppendU16(ids, id);
        std::string record;
        AppendRecord(record, RecordType::TabIds, ids);
        Replace(globals_.TabIdsPlace(), std::move(record));
    }

    void PatchReferences()
    {
        constexpr std::size_t kScope = kRecordHeader + 8; // [MS-XLS] 2.4.150
        auto links = saved_.references.ExternSheet();
        if (links != globals_.ExternSheetPlace().In(bytes_))
            Replace(globals_.ExternSheetPlace(), std::move(links));
        for (const auto& name : globals_.Names())
            PutNumber(name.place.begin + kScope, saved_.references.ScopeOf(name));
        patch_.Insert(globals_.NamesEnd(), saved_.references.AddedNames());
    }

    /// Must be last: the table contains its own offset in the stream.
    void PatchStrings()
    {
        const auto& place = globals_.StringsPlace();
        const auto begin = place.Empty() ? globals_.StringsStart() : place.begin;
        const auto offset = patch_.PlaceOf(begin);
        if (offset == begin && !saved_.strings->Changed() &&
            saved_.strings->References() == saved_.stringReferences)
            return;
        auto records = saved_.strings->ToRecords(saved_.stringReferences, offset);
        patch_.Replace(begin, place.Empty() ? begin : place.end,
                       std::move(records.sst) + records.extSst);
    }

    const Globals& globals_;
    SavedGlobals saved_;
    std::string_view bytes_;
    std::vector<std::size_t> positions_;
    TextPatch patch_;
};

} // namespace

std::vector<std::uint16_t> TabIds(const Globals& globals, const std::vector<SavedSheet>& sheets)
{
    std::vector<std::uint16_t> ids;
    const auto& place = globals.TabIdsPlace();
    for (std::size_t at = kRecordHeader; at + 2 <= place.end - place.begin; at += 2)
        ids.push_back(ReadU16(place.In(globals.Stream()), at));
    for (std::size_t i = ids.size(); i < globals.Sheets().size(); ++i)
        ids.push_back(static_cast<std::uint16_t>(i + 1));
    auto next = *std::max_element(ids.begin(), ids.end());
    std::vector<std::uint16_t> saved;
    saved.reserve(sheets.size());
    for (const auto& sheet : sheets)
        saved.push_back(sheet.IsCopy ? ++next : ids[sheet.Origin]);
    return saved;
}

std::string PatchGlobals(const Globals& globals, SavedGlobals saved)
{
    return Patcher(globals, std::move(saved)).Patched();
}

std::vector<std::size_t> OffsetPlaces(std::string_view savedGlobals)
{
    std::vector<std::size_t> places;
    RecordReader reader(savedGlobals);
    while (const auto record = reader.Next()) {
        if (record->type == RecordType::BoundSheet)
            places.push_back(record->DataBegin());
    }
    return places;
}

} // namespace orrery::xls
