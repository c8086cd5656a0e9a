// A cell that was read is read again from its own text, and only a long row overflows.

#include "require.h"

#include "model/cell_ref.h"
#include "util/error.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace orrery;
    using fuzz::Require;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    model::CellPosition cell;
    try {
        const bool accepted = model::ParseCellRef(text, cell);
        Require(accepted || cell == model::CellPosition{-1, -1});
        Require(cell.row >= -1 && cell.row <= model::kMaxRow);
        Require(cell.column >= -1 && cell.column <= model::kMaxColumn);
    }
    catch (const util::OverflowError&) {
        Require(size > 9 && cell == model::CellPosition{-1, -1});
    }
    const auto read = model::ReadCell(text);
    Require(read.has_value() == (cell.row >= 1 && cell.column >= 1));
    if (cell.row >= 0 && cell.column >= 0) {
        model::CellPosition again;
        Require(model::ParseCellRef(model::FormatCellRef(cell), again) && again == cell);
    }
    return 0;
}
