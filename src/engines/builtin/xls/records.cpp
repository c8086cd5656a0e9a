#include "engines/builtin/xls/records.h"

#include "engines/builtin/xls/bytes.h"

namespace orrery::xls {

RecordReader::RecordReader(std::string_view stream, std::size_t begin)
    : stream_(stream), position_(begin)
{
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
