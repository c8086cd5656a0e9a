#include "engines/builtin/xls/drawing/art_records.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/records/unicode_string.h"

#include <algorithm>

namespace orrery::xls {
namespace {

constexpr std::size_t kTextLength = 10;   // offset in TXO, [MS-XLS] 2.4.329
constexpr std::size_t kRunsLength = 12;   // the same
constexpr unsigned kPictureIsDrawing = 1; // fIsDrawing

bool HasNumbers(const Record& record, std::size_t size)
{
    return record.data.size() >= size;
}

} // namespace

void ArtRecords::Add(const Record& record)
{
    if (record.type == RecordType::Continue) {
        AddContinuation(record);
        return;
    }
    owner_ = Owner::Nobody;
    switch (record.type) {
    case RecordType::Bof:
        open_.push_back(substreams_.size());
        substreams_.emplace_back();
        break;
    case RecordType::Eof: // the art of the sheet continues after the chart
        if (!open_.empty())
            open_.pop_back();
        owner_ = Owner::Art;
        break;
    case RecordType::MsoDrawing:
        if (!open_.empty())
            substreams_[open_.back()].drawing.Append(record.data, record.DataBegin());
        owner_ = Owner::Art;
        break;
    case RecordType::MsoDrawingSelection:
        if (!open_.empty())
            substreams_[open_.back()].selections.emplace_back().Append(record.data,
                                                                       record.DataBegin());
        break;
    case RecordType::Obj:
        owner_ = record.data.size() == kMaxRecordSize ? Owner::Object : Owner::Art;
        break;
    case RecordType::TextObject:
        owner_ = Owner::Text;
        textLeft_ = HasNumbers(record, kTextLength + 2) ? ReadU16(record.data, kTextLength) : 0;
        runsLeft_ = HasNumbers(record, kRunsLength + 2) && textLeft_ > 0
                        ? ReadU16(record.data, kRunsLength)
                        : 0;
        break;
    case RecordType::HeaderFooterPicture:
        AddHeaderPicture(record);
        break;
    default:
        break;
    }
}

void ArtRecords::AddContinuation(const Record& record)
{
    switch (owner_) {
    case Owner::Nobody:
        break;
    case Owner::Object: // only a full record has a continuation
        if (record.data.size() < kMaxRecordSize)
            owner_ = Owner::Art;
        break;
    case Owner::Text:
        AddToText(record);
        break;
    case Owner::Art:
        if (!open_.empty())
            substreams_[open_.back()].drawing.Append(record.data, record.DataBegin());
        break;
    }
}

// A text is followed by records with its characters, each beginning with their width, then by
// records with their formatting; then the art continues. [MS-XLS] 2.4.329
void ArtRecords::AddToText(const Record& record)
{
    if (textLeft_ > 0) {
        const std::size_t bytes = record.data.empty() ? 0 : record.data.size() - 1;
        const bool wide = !record.data.empty() &&
                          (static_cast<unsigned char>(record.data[0]) & kWideCharacters) != 0;
        textLeft_ -= std::min(textLeft_, wide ? bytes / 2 : bytes);
    }
    else if (runsLeft_ > 0) {
        runsLeft_ -= std::min(runsLeft_, record.data.size());
    }
    else {
        owner_ = Owner::Art;
        AddContinuation(record);
    }
}

void ArtRecords::AddHeaderPicture(const Record& record)
{
    if (!HasNumbers(record, kHeaderPictureArt))
        return;
    const unsigned flags = ReadU8(record.data, kHeaderPictureFlags);
    if ((flags & kPictureIsDrawing) == 0)
        return;
    if ((flags & kHeaderPictureContinues) == 0 || headerPictures_.empty())
        headerPictures_.emplace_back();
    headerPictures_.back().Append(record.data.substr(kHeaderPictureArt),
                                  record.DataBegin() + kHeaderPictureArt);
}

} // namespace orrery::xls
