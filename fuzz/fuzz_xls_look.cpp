// Reads the looks of all sheets of a workbook stream, whatever is in it: each look keeps the
// promises of its fields. An input that begins like a compound file is opened as a file.

#include "require.h"

#include "engines/builtin/xls/compound/compound_file.h"
#include "engines/builtin/xls/look/look_source.h"
#include "engines/builtin/xls/look/sheet_reader.h"
#include "engines/builtin/xls/records/workbook_stream.h"
#include "util/error.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace {

using namespace orrery;
using fuzz::Require;

/// Writes the offsets of the sheets into the list of sheets, so that an input that grows or shrinks
/// does not lose them.
std::string WithOffsets(std::string stream)
{
    std::vector<std::size_t> listed;
    std::vector<std::size_t> begins;
    int depth = 0;
    xls::RecordReader records(stream);
    while (records.IsWhole()) {
        const auto record = records.Next();
        if (record->type == xls::RecordType::BoundSheet && record->data.size() >= 4)
            listed.push_back(record->DataBegin());
        if (record->type == xls::RecordType::Bof && depth++ == 0)
            begins.push_back(record->begin);
        if (record->type == xls::RecordType::Eof && depth > 0)
            --depth;
    }
    for (std::size_t i = 0; i < listed.size() && i + 1 < begins.size(); ++i)
        xls::PutU32(stream, listed[i], static_cast<std::uint32_t>(begins[i + 1]));
    return stream;
}

std::string StreamOf(std::string_view input)
{
    if (!input.starts_with("\xD0\xCF"))
        return WithOffsets(std::string(input));
    const xls::CompoundFile file{std::string(input)};
    return xls::ReadWorkbookStream(file, xls::FindWorkbookStream(file)).bytes;
}

void RequireCells(const book::SheetLook& look)
{
    for (std::size_t i = 0; i < look.cells.size(); ++i) {
        const auto& cell = look.cells[i];
        Require(i == 0 || look.cells[i - 1].address < cell.address);
        Require(cell.address.row >= 1 && cell.address.row <= 65536);
        Require(cell.address.column >= 1 && cell.address.column <= 256);
        Require(cell.style < look.styles.size());
        Require(cell.formula < static_cast<std::int32_t>(look.formulas.size()));
        Require(cell.richText < static_cast<std::int32_t>(look.richTexts.size()));
    }
}

void RequireGrid(const book::SheetLook& look)
{
    for (std::size_t i = 0; i < look.columns.size(); ++i) {
        const auto& column = look.columns[i];
        Require(column.first <= column.last && column.last <= 256);
        Require(i == 0 || look.columns[i - 1].last < column.first);
        Require(column.style < look.styles.size());
    }
    for (std::size_t i = 1; i < look.rows.size(); ++i)
        Require(look.rows[i - 1].row < look.rows[i].row);
    for (std::size_t i = 1; i < look.merges.size(); ++i)
        Require(look.merges[i - 1].first < look.merges[i].first);
    for (const auto& format : look.conditions)
        Require(!format.ranges.empty() && !format.rules.empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    try {
        xls::LookSource source(StreamOf({reinterpret_cast<const char*>(data), size}));
        for (std::size_t i = 0; i < source.Look().sheets.size() && i < 20; ++i) {
            const auto look = xls::ReadSheetLook(source, i);
            Require(!look.styles.empty());
            RequireCells(look);
            RequireGrid(look);
        }
    }
    catch (const util::Error&) {
        // refused
    }
    return 0;
}
