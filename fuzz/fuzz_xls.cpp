// Opens a workbook, renames, copies and fills its first sheet, going on after refused steps, and
// saves it: the result is an error or a workbook that opens again, whatever the input. An input
// that begins like a compound file is the workbook; any other is the workbook stream, whose list of
// sheets is corrected to where the sheets begin.

#include "edit_workbook.h"

#include "engines/builtin/xls/compound/bytes.h"
#include "engines/builtin/xls/compound/compound_file.h"
#include "engines/builtin/xls/compound/compound_writer.h"
#include "engines/builtin/xls/workbook.h"
#include "util/file_replace.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace orrery;

/// Writes the offsets of the sheets into the list of sheets, so that an input that grows or shrinks
/// does not lose them.
std::string WithOffsets(std::string stream)
{
    constexpr auto kBoundSheet = static_cast<std::uint16_t>(xls::RecordType::BoundSheet);
    constexpr auto kBof = static_cast<std::uint16_t>(xls::RecordType::Bof);
    constexpr auto kEof = static_cast<std::uint16_t>(xls::RecordType::Eof);
    std::vector<std::size_t> listed;
    std::vector<std::size_t> begins;
    int depth = 0;
    for (std::size_t at = 0; at + xls::kRecordHeader + 4 <= stream.size();
         at += xls::kRecordHeader + xls::ReadU16(stream, at + 2)) {
        const auto type = xls::ReadU16(stream, at);
        if (type == kBoundSheet)
            listed.push_back(at + xls::kRecordHeader);
        if (type == kBof && depth++ == 0)
            begins.push_back(at);
        if (type == kEof && depth > 0)
            --depth;
    }
    for (std::size_t i = 0; i < listed.size() && i + 1 < begins.size(); ++i) {
        if (listed[i] + sizeof(std::uint32_t) <= stream.size())
            xls::PutU32(stream, listed[i], static_cast<std::uint32_t>(begins[i + 1]));
    }
    return stream;
}

void WriteInput(const std::filesystem::path& path, std::string_view input)
{
    if (input.starts_with("\xD0\xCF")) {
        util::ReplaceFile(path, input);
        return;
    }
    static const xls::CompoundFile container(util::ReadFile(ORRERY_FUZZ_CONTAINER).value());
    xls::CompoundWriter writer(container);
    writer.ReplaceStream(container.Find("Workbook").value(), WithOffsets(std::string(input)));
    writer.SaveTo(path);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const auto source = fuzz::Scratch(".in");
    WriteInput(source, {reinterpret_cast<const char*>(data), size});
    fuzz::EditAndOpenAgain<xls::Workbook>(source, {"Model", "Sheet1", "Month"});
    return 0;
}
