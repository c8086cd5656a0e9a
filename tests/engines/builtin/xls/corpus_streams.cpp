#include "xls/corpus_streams.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/compound/compound_file.h"
#include "engines/builtin/xls/records/records.h"
#include "places/places.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace orrery::xls {
namespace {

std::string ReadFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// The end of the last substream: short streams are padded with zeros.
std::size_t EndOfSheets(std::string_view stream)
{
    std::size_t end = SubstreamEnd(stream, 0);
    RecordReader globals(stream.substr(0, end));
    while (const auto record = globals.Next()) {
        if (record->type == RecordType::BoundSheet)
            end = std::max(end, SubstreamEnd(stream, ReadU32(record->data, 0)));
    }
    return end;
}

} // namespace

std::vector<CorpusStream> CorpusStreams()
{
    const std::filesystem::path folder = places::CorpusFolder() / "xls";
    std::vector<CorpusStream> streams;
    if (!std::filesystem::is_directory(folder))
        return streams;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const CompoundFile file(ReadFile(entry.path()));
        if (const auto stream = file.Find("Workbook")) {
            const auto bytes = file.ReadStream(*stream);
            streams.push_back(
                {entry.path().filename().string(), bytes.substr(0, EndOfSheets(bytes))});
        }
    }
    std::sort(streams.begin(), streams.end(),
              [](const auto& a, const auto& b) { return a.name < b.name; });
    return streams;
}

} // namespace orrery::xls
