#pragma once

#include "engines/builtin/xls/compound/compound_file.h"
#include "engines/builtin/xls/records/records.h"
#include "util/file_replace.h"
#include "util/scratch_folder.h"
#include "xls/built_compound.h"
#include "xls/cell_builder.h"
#include "xls/stream_builder.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Whole workbooks for tests, sheet by sheet.
namespace orrery::xls::test {

struct BuiltSheet {
    std::string name;
    std::string bytes;  ///< from BOF to EOF
    std::string tail{}; ///< the bytes after it in the stream
};

/// A cell format that is not locked.
inline std::string FormatRecord()
{
    return RecordOf(RecordType::Xf, Numbers({0, 0, 0}) + std::string(14, '\0'));
}

/// The stream of a workbook; `more` are records of the globals after the list of the sheets.
inline std::string WorkbookStream(const std::vector<BuiltSheet>& sheets, std::string_view more = {})
{
    const auto globals = [&](std::size_t offset) {
        std::string records = BofOf(5);
        for (int i = 0; i < 16; ++i)
            records += FormatRecord();
        for (const auto& sheet : sheets) {
            records += BoundSheetOf(sheet.name, static_cast<std::uint32_t>(offset));
            offset += sheet.bytes.size() + sheet.tail.size();
        }
        return records + std::string(more) + EofRecord();
    };
    std::string stream = globals(globals(0).size());
    for (const auto& sheet : sheets)
        stream += sheet.bytes + sheet.tail;
    return stream;
}

/// Writes a file with that stream and with others beside it.
inline std::filesystem::path WorkbookFile(const std::filesystem::path& path, std::string stream,
                                          std::vector<Node> beside = {})
{
    beside.push_back(Stream(u"Workbook", std::move(stream)));
    util::ReplaceFile(path, BuildCompound(beside));
    return path;
}

inline std::string SavedStream(const std::filesystem::path& path)
{
    const CompoundFile file(util::ReadFile(path).value());
    return file.ReadStream(file.Find("Workbook").value());
}

/// An SST of plain strings, and with these counts.
inline std::string TextTableOf(const std::vector<std::string>& texts, std::uint32_t count)
{
    std::string data;
    AppendU32(data, count);
    AppendU32(data, count);
    for (const auto& text : texts)
        AppendUnicodeString(data, text);
    return RecordOf(RecordType::Sst, data);
}

} // namespace orrery::xls::test
