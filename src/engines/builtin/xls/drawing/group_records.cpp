#include "engines/builtin/xls/drawing/group_records.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/drawing/art_records.h"
#include "engines/builtin/xls/records/records.h"

#include <algorithm>
#include <utility>

namespace orrery::xls {
namespace {

std::size_t HeadSize(DrawingKind kind)
{
    return kind == DrawingKind::HeaderFooter ? kHeaderPictureArt : 0;
}

} // namespace

ArtStream GroupArt(DrawingKind kind, std::string_view records)
{
    ArtStream art;
    RecordReader reader(records);
    while (const auto record = reader.Next()) {
        const std::size_t head = std::min(HeadSize(kind), record->data.size());
        art.Append(record->data.substr(head), record->DataBegin() + head);
    }
    return art;
}

GroupWriter::GroupWriter(DrawingKind kind, std::string_view model, std::string& stream)
    : kind_(kind), stream_(stream), begin_(stream.size())
{
    RecordReader reader(model);
    const auto first = reader.Next();
    const auto second = reader.Next();
    if (first)
        prefix_ = first->data.substr(0, HeadSize(kind));
    secondIsSame_ = first && second && first->type == second->type;
}

void GroupWriter::Append(std::string_view art)
{
    while (!art.empty()) {
        if (recordCount_ == 0 || RoomInRecord() == 0)
            BeginRecord();
        const auto piece = art.substr(0, RoomInRecord());
        stream_ += piece;
        art.remove_prefix(piece.size());
        PutU16(stream_, recordBegin_ + 2,
               static_cast<std::uint16_t>(kMaxRecordSize - RoomInRecord()));
    }
}

std::size_t GroupWriter::RoomInRecord() const
{
    return recordBegin_ + kRecordHeader + kMaxRecordSize - stream_.size();
}

// HFPICTURE is continued in records of its own type; MSODRAWINGGROUP in CONTINUE records, perhaps
// after a second record of its own type.
void GroupWriter::BeginRecord()
{
    const bool own = kind_ == DrawingKind::HeaderFooter || recordCount_ == 0 ||
                     (recordCount_ == 1 && secondIsSame_);
    const auto ownType = kind_ == DrawingKind::HeaderFooter ? RecordType::HeaderFooterPicture
                                                            : RecordType::MsoDrawingGroup;
    recordBegin_ = stream_.size();
    AppendRecord(stream_, own ? ownType : RecordType::Continue, prefix_);
    if (kind_ == DrawingKind::HeaderFooter && recordCount_ > 0) {
        const std::size_t flags = recordBegin_ + kRecordHeader + kHeaderPictureFlags;
        PutU8(stream_, flags, ReadU8(stream_, flags) | kHeaderPictureContinues);
    }
    ++recordCount_;
}

void GroupWriter::Put(std::size_t at, std::uint32_t value)
{
    const std::size_t artInRecord = kMaxRecordSize - prefix_.size();
    for (std::size_t i = at; i < at + sizeof(value); ++i, value >>= 8)
        PutU8(stream_, begin_ + i + (i / artInRecord + 1) * (kRecordHeader + prefix_.size()),
              static_cast<std::uint8_t>(value & 0xFF));
}

} // namespace orrery::xls
