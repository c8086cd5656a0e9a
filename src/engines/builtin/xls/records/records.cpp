#include "engines/builtin/xls/records/records.h"

#include "engines/builtin/xls/compound/bytes.h"

namespace orrery::xls {

RecordReader::RecordReader(std::string_view stream, std::size_t begin)
    : stream_(stream), position_(begin)
{
}

Substream ReadSubstream(std::string_view stream, std::size_t begin, std::size_t limit)
{
    RecordReader reader(stream.substr(0, limit), begin);
    std::size_t depth = 0;
    while (reader.IsWhole()) {
        const auto record = reader.Peek();
        if (record->type == RecordType::Bof)
            ++depth;
        else if (depth == 0)
            break; // it must begin with BOF
        else if (record->type == RecordType::Eof)
            --depth;
        reader.Next();
        if (depth == 0)
            return {reader.Position(), true};
    }
    return {reader.Position(), false};
}

std::size_t SubstreamEnd(std::string_view stream, std::size_t begin)
{
    const auto substream = ReadSubstream(stream, begin, stream.size());
    if (!substream.isWhole)
        ThrowDamaged("a sheet has no beginning or no end");
    return substream.end;
}

void AppendRecord(std::string& stream, RecordType type, std::string_view data)
{
    auto piece = data.substr(0, kMaxRecordSize);
    while (true) {
        AppendU16(stream, static_cast<std::uint16_t>(type));
        AppendU16(stream, static_cast<std::uint16_t>(piece.size()));
        stream += piece;
        data.remove_prefix(piece.size());
        if (data.empty())
            return;
        piece = data.substr(0, kMaxRecordSize);
        type = RecordType::Continue;
    }
}

} // namespace orrery::xls
