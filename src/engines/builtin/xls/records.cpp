#include "engines/builtin/xls/records.h"

#include "engines/builtin/xls/bytes.h"

namespace orrery::xls {
namespace {

std::optional<Record> RecordAt(std::string_view stream, std::size_t position)
{
    if (position >= stream.size())
        return std::nullopt;
    const std::size_t rest = stream.size() - position;
    if (rest < kRecordHeader || rest - kRecordHeader < ReadU16(stream, position + 2))
        ThrowDamaged("a record runs past the end of the workbook stream");
    return Record{static_cast<RecordType>(ReadU16(stream, position)), position,
                  stream.substr(position + kRecordHeader, ReadU16(stream, position + 2))};
}

} // namespace

RecordReader::RecordReader(std::string_view stream, std::size_t begin)
    : stream_(stream), position_(begin)
{
}

std::optional<Record> RecordReader::Next()
{
    const auto record = RecordAt(stream_, position_);
    if (record)
        position_ = record->End();
    return record;
}

std::optional<Record> RecordReader::Peek() const
{
    return RecordAt(stream_, position_);
}

std::size_t SubstreamEnd(std::string_view stream, std::size_t begin)
{
    RecordReader reader(stream, begin);
    std::size_t depth = 0;
    while (const auto record = reader.Next()) {
        if (record->type == RecordType::Bof)
            ++depth;
        else if (depth == 0)
            break; // it has to begin with one
        else if (record->type == RecordType::Eof && --depth == 0)
            return record->End();
    }
    ThrowDamaged("a sheet has no beginning or no end");
}

void AppendRecord(std::string& stream, RecordType type, std::string_view data)
{
    auto piece = data.substr(0, kLongestRecord);
    while (true) {
        AppendU16(stream, static_cast<std::uint16_t>(type));
        AppendU16(stream, static_cast<std::uint16_t>(piece.size()));
        stream += piece;
        data.remove_prefix(piece.size());
        if (data.empty())
            return;
        piece = data.substr(0, kLongestRecord);
        type = RecordType::Continue;
    }
}

} // namespace orrery::xls
