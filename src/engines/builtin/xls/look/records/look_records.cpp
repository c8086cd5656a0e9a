#include "engines/builtin/xls/look/records/look_records.h"

#include "engines/builtin/xls/records/unicode_string.h"

#include <algorithm>

namespace orrery::xls {
namespace {

constexpr std::size_t kFrtHeader = 12; // of records of newer versions

/// The bytes before the data of a continuation; nothing for other records.
bool IsContinuation(RecordType type, std::size_t& header)
{
    header = type == RecordType::Continue ? 0 : kFrtHeader;
    return type == RecordType::Continue || type == RecordType::ContinueFrt11 ||
           type == RecordType::ContinueFrt12;
}

} // namespace

std::string_view LookRecord::Whole(std::string& joined) const
{
    if (more.empty())
        return data;
    joined = data;
    for (const auto piece : more)
        joined += piece;
    return joined;
}

LookRecordReader::LookRecordReader(std::string_view stream, std::size_t begin)
    : records_(stream, begin)
{
}

bool LookRecordReader::Next(LookRecord& record)
{
    while (records_.IsWhole()) {
        const auto next = records_.Next();
        if (next->type == RecordType::Eof && depth_ <= 1) {
            isWhole_ = true;
            return false;
        }
        if (Skips(*next))
            continue;
        record.type = next->type;
        record.data = next->data;
        TakeContinuations(record);
        return true;
    }
    return false;
}

bool LookRecordReader::Skips(const Record& record)
{
    if (record.type == RecordType::Bof)
        ++depth_;
    else if (record.type == RecordType::Eof)
        --depth_;
    else if (record.type == RecordType::UserSheetViewBegin)
        isInView_ = true;
    else if (record.type == RecordType::UserSheetViewEnd)
        isInView_ = false;
    else
        return depth_ != 1 || isInView_;
    return true;
}

void LookRecordReader::TakeContinuations(LookRecord& record)
{
    record.more.clear();
    std::size_t header = 0;
    while (records_.IsWhole()) {
        const auto next = records_.Peek();
        if (!IsContinuation(next->type, header))
            return;
        record.more.push_back(next->data.substr(std::min(header, next->data.size())));
        records_.Next();
    }
}

std::u16string ReadContinuedText(const LookRecord& record, std::size_t at)
{
    const std::size_t count = ReadU16(record.data, at);
    std::u16string text;
    if (count == 0)
        return text; // Excel leaves out the flags of some empty texts
    bool wide = (ReadU8(record.data, at + 2) & kWideCharacters) != 0;
    std::string_view piece = record.data.substr(at + 3);
    for (std::size_t next = 0;; ++next) {
        const std::size_t width = wide ? 2 : 1;
        ReadCharacters(piece.substr(0, (count - text.size()) * width), wide, text);
        if (text.size() >= count)
            return text;
        if (next == record.more.size())
            ThrowDamaged("a text is cut off");
        wide = (ReadU8(record.more[next], 0) & kWideCharacters) != 0;
        piece = record.more[next].substr(1);
    }
}

} // namespace orrery::xls
