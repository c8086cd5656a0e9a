// Reads how the sheets of a workbook look: the result is an error or looks that keep what their
// headers say, whatever the input. An input that begins like a zip container is the workbook; any
// other replaces one part of a small workbook: the first byte chooses the part, the rest is its
// text.

#include "engines/builtin/xlsx/look/look.h"
#include "util/error.h"

#include "edit_workbook.h"
#include "look_parts.h"
#include "parts.h"
#include "require.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>

namespace {

using namespace orrery;
using fuzz::Require;

bool IsInside(const book::CellRange& range)
{
    return range.first.row >= 1 && range.first.column >= 1 && range.first.row <= range.last.row &&
           range.first.column <= range.last.column && range.last.row <= 1048576 &&
           range.last.column <= 16384;
}

void CheckCells(const book::SheetLook& sheet)
{
    book::CellAddress last{0, 0};
    for (const book::Cell& cell : sheet.cells) {
        Require(last < cell.address && IsInside({cell.address, cell.address}));
        Require(cell.style < sheet.styles.size());
        Require(cell.formula < static_cast<std::int64_t>(sheet.formulas.size()));
        Require(cell.richText < static_cast<std::int64_t>(sheet.richTexts.size()));
        last = cell.address;
        if (cell.richText < 0)
            continue;
        const auto& text = std::get<std::string>(cell.content);
        for (const auto& run : sheet.richTexts[static_cast<std::size_t>(cell.richText)])
            Require(run.begin < text.size());
    }
}

void CheckSheet(const book::SheetLook& sheet)
{
    Require(!sheet.styles.empty());
    CheckCells(sheet);
    std::int32_t column = 0;
    for (const book::ColumnLook& one : sheet.columns) {
        Require(one.first > column && one.last >= one.first && one.last <= 16384);
        Require(one.style < sheet.styles.size());
        column = one.last;
    }
    std::int32_t row = 0;
    for (const book::RowLook& one : sheet.rows) {
        Require(one.row > row && one.style.value_or(0) < sheet.styles.size());
        row = one.row;
    }
    for (const book::CellRange& merge : sheet.merges)
        Require(IsInside(merge));
    for (const book::ConditionalFormat& format : sheet.conditions) {
        Require(!format.ranges.empty() && !format.rules.empty());
        for (const book::CellRange& range : format.ranges)
            Require(IsInside(range));
    }
    for (const book::Table& table : sheet.tables)
        Require(IsInside(table.range));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const auto source = fuzz::Scratch(".in");
    fuzz::WriteWithPart(source, fuzz::kLookParts, {reinterpret_cast<const char*>(data), size});
    try {
        const auto view = xlsx::OpenLook(source);
        const std::size_t count = std::min<std::size_t>(view->Workbook().sheets.size(), 8);
        for (std::size_t index = 0; index < count; ++index)
            fuzz::Attempt([&] { CheckSheet(view->Sheet(index)); });
    }
    catch (const Error&) {
        // it is no workbook
    }
    std::filesystem::remove(source);
    return 0;
}
