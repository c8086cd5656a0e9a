#include "engines/builtin/xls/records/globals.h"

#include "book/error.h"
#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/unicode_string.h"
#include "engines/common/sheet_names.h"
#include "util/error.h"

#include <algorithm>
#include <array>

namespace orrery::xls {
namespace {

constexpr std::uint16_t kBiff8 = 0x0600;
constexpr std::uint16_t kGlobals = 0x0005;
constexpr std::uint16_t kFunctionOrProcedure = 0x000E;
constexpr std::uint16_t kBuiltIn = 0x0020;
constexpr std::size_t kNameText = 14; // offset of a name's characters

// Records that belong to the name before them. [MS-XLS] 2.4.173 to 2.4.176
constexpr std::array<std::uint16_t, 3> kAfterNames = {0x0893, 0x0894, 0x0898};

bool IsOneOf(RecordType type, std::initializer_list<RecordType> types)
{
    return std::find(types.begin(), types.end(), type) != types.end();
}

} // namespace

bool SheetSpan::IsOnly(std::size_t sheet) const
{
    return first == last && static_cast<std::size_t>(first) == sheet;
}

bool SheetSpan::Contains(std::size_t sheet) const
{
    return static_cast<std::size_t>(std::min(first, last)) <= sheet &&
           sheet <= static_cast<std::size_t>(std::max(first, last));
}

class Globals::Reader {
public:
    explicit Reader(Globals& globals) : globals_(globals), records_(globals.stream_) {}

    void Read()
    {
        ReadBof();
        while (const auto record = records_.Next()) {
            if (record->type == RecordType::Continue)
                Extend(*record);
            else if (record->type == RecordType::Eof)
                return Finish(*record);
            else
                ReadRecord(*record);
        }
        ThrowDamaged("the workbook stream has no end");
    }

private:
    void ReadBof()
    {
        const auto record = records_.Next();
        if (!record || (static_cast<std::uint16_t>(record->type) & 0xF0FF) != 0x0009)
            ThrowDamaged("the workbook stream has no beginning");
        if (record->type != RecordType::Bof || ReadU16(record->data, 0) != kBiff8)
            throw util::Error(book::ErrorKind::OldBinaryFormat);
        if (ReadU16(record->data, 2) != kGlobals)
            ThrowDamaged("the workbook stream does not begin with the workbook");
        globals_.namesEnd_ = globals_.stringsStart_ = record->End();
    }

    /// A continuation belongs to the place of the record before it.
    void Extend(const Record& record)
    {
        if (continued_)
            continued_->end = record.End();
        if (continued_ == &globals_.stringsOnly_)
            globals_.strings_.end = record.End();
        if (continued_ == &globals_.externSheet_)
            links_ += record.data;
        UpdateInsertPositions(last_, record);
    }

    void ReadRecord(const Record& record)
    {
        const Span place{record.begin, record.End()};
        continued_ = nullptr;
        switch (record.type) {
        case RecordType::BoundSheet:
            return ReadSheet(record, place);
        case RecordType::Name:
            ReadName(record, place);
            break;
        case RecordType::SupBook:
            if (ReadU16(record.data, 2) == kOwnBook)
                globals_.ownBook_ = books_;
            ++books_;
            break;
        case RecordType::ExternSheet:
            links_ = record.data;
            continued_ = &(globals_.externSheet_ = place);
            break;
        case RecordType::Sst:
            globals_.strings_ = place;
            continued_ = &(globals_.stringsOnly_ = place);
            break;
        case RecordType::ExtSst:
            if (globals_.strings_.end == record.begin)
                globals_.strings_.end = record.End();
            break;
        case RecordType::MsoDrawingGroup:
            continued_ = Join(globals_.drawingGroup_, place);
            break;
        case RecordType::HeaderFooterPicture:
            continued_ = Join(globals_.headerPictures_, place);
            break;
        default:
            ReadSetting(record, place);
        }
        last_ = record.type;
        UpdateInsertPositions(record.type, record);
    }

    /// Joins the pieces of a record that is split into several.
    static Span* Join(Span& pieces, const Span& place)
    {
        if (pieces.end != place.begin)
            pieces.begin = place.begin;
        pieces.end = place.end;
        return &pieces;
    }

    void ReadSetting(const Record& record, const Span& place)
    {
        if (record.type == RecordType::TabIds)
            globals_.tabIds_ = place;
        else if (record.type == RecordType::Xf)
            globals_.styles_.push_back(place);
        else if (record.type == RecordType::Protect)
            globals_.structureProtected_ = ReadU16(record.data, 0) != 0;
        else if (record.type == RecordType::Window1 && !hasWindow_) {
            globals_.activeSheet_ = ReadU16(record.data, 10);
            hasWindow_ = true;
        }
    }

    void ReadSheet(const Record& record, const Span& place)
    {
        SheetEntry entry;
        entry.Offset = ReadU32(record.data, 0);
        entry.State = ReadU8(record.data, 4);
        entry.Type = ReadU8(record.data, 5);
        entry.Name = ReadShortUnicodeString(record.data, 6).text;
        entry.place = place;
        globals_.sheets_.push_back(std::move(entry));
        last_ = record.type;
        UpdateInsertPositions(record.type, record);
    }

    void ReadName(const Record& record, const Span& place)
    {
        NameEntry entry;
        const auto flags = ReadU16(record.data, 0);
        entry.IsMacro = (flags & kFunctionOrProcedure) != 0;
        entry.Sheet = ReadU16(record.data, 8);
        const auto length = ReadU8(record.data, 3);
        entry.Key =
            engines::FoldCase(ReadUnicodeStringNoCount(record.data, kNameText, length).text);
        if ((flags & kBuiltIn) != 0)
            entry.Key.insert(0, 1, '\x01');
        entry.place = place;
        globals_.names_.push_back(std::move(entry));
        continued_ = &globals_.names_.back().place;
    }

    /// New names go after the last name, or after the records that come before names; a new table
    /// of shared strings after all of those. [MS-XLS] 2.1.7.20.3
    void UpdateInsertPositions(RecordType type, const Record& record)
    {
        using enum RecordType;
        const bool afterName =
            std::find(kAfterNames.begin(), kAfterNames.end(),
                      static_cast<std::uint16_t>(record.type)) != kAfterNames.end();
        if (afterName || IsOneOf(type, {BoundSheet, SupBook, ExternName, ExternSheet, Name}))
            globals_.namesEnd_ = record.End();
        if (afterName || IsOneOf(type, {BoundSheet, SupBook, ExternName, ExternSheet, Name,
                                        RecalcId, HeaderFooterPicture, MsoDrawingGroup}))
            globals_.stringsStart_ = record.End();
    }

    void ReadLinks()
    {
        if (links_.empty())
            return;
        const std::size_t count = ReadU16(links_, 0);
        for (std::size_t i = 0; i < count; ++i) {
            const auto entry = Slice(links_, 2 + 6 * i, 6);
            globals_.links_.push_back({ReadU16(entry, 0),
                                       static_cast<std::int16_t>(ReadU16(entry, 2)),
                                       static_cast<std::int16_t>(ReadU16(entry, 4))});
        }
    }

    void Finish(const Record& eof)
    {
        globals_.end_ = eof.End();
        ReadLinks();
        if (globals_.sheets_.empty())
            ThrowDamaged("the workbook has no sheets");
        if (globals_.activeSheet_ >= globals_.sheets_.size())
            globals_.activeSheet_ = 0;
    }

    Globals& globals_;
    RecordReader records_;
    RecordType last_ = RecordType::Bof;
    Span* continued_ = nullptr; // the place of the record that a CONTINUE would belong to
    std::string links_;
    std::size_t books_ = 0;
    bool hasWindow_ = false;
};

Globals::Globals(std::string_view stream) : stream_(stream)
{
    Reader(*this).Read();
}

std::optional<SheetSpan> Globals::OwnSheets(std::uint16_t link) const
{
    return link < links_.size() ? OwnSheets(links_[link]) : std::nullopt;
}

std::optional<SheetSpan> Globals::OwnSheets(const SheetLink& link) const
{
    const auto isSheet = [this](std::int16_t sheet) {
        return sheet >= 0 && static_cast<std::size_t>(sheet) < sheets_.size();
    };
    if (!ownBook_ || link.book != *ownBook_ || !isSheet(link.first) || !isSheet(link.last))
        return std::nullopt;
    return SheetSpan{link.first, link.last};
}

} // namespace orrery::xls
