#include "engines/builtin/xlsx/sheet/sheet_cells.h"

#include "book/error.h"
#include "engines/builtin/common/cell_checks.h"
#include "engines/builtin/xlsx/sheet/sheet_patch.h"
#include "engines/common/cell_address.h"
#include "util/error.h"

#include <algorithm>
#include <cassert>

namespace orrery::xlsx {

void SheetCells::CheckWritable(std::int32_t row, std::int32_t column, const Styles& formats) const
{
    if (!IsInsideSheet(row, column))
        engines::ThrowOutsideSheet(row, column);
    if (!text_->HasCells())
        throw util::Error(book::ErrorKind::DamagedWorkbook, {},
                          text_->PartName() + ", no sheetData element");
    builtin::CheckChangeable(*text_, CellAddress{row, column}, formats);
}

bool SheetCells::TakesValue(std::int32_t row, std::int32_t column) const
{
    return !text_->IsHiddenByMerge({row, column});
}

void SheetCells::Set(std::int32_t row, std::int32_t column, WrittenValue value)
{
    assert(IsInsideSheet(row, column));
    if (TakesValue(row, column))
        values_.insert_or_assign({row, column}, value);
}

bool SheetCells::RemovesFormulas() const
{
    return std::any_of(values_.begin(), values_.end(), [this](const auto& written) {
        const CellPlace* place = text_->Index().FindCell(written.first);
        return place != nullptr && place->Has(CellPlace::Formula);
    });
}

long SheetCells::AddedStringReferences() const
{
    long added = 0;
    for (const auto& [address, value] : values_) {
        const CellPlace* place = text_->Index().FindCell(address);
        if (place != nullptr && place->Has(CellPlace::SharedString))
            --added;
        if (std::holds_alternative<SharedStringIndex>(value))
            ++added;
    }
    return added;
}

TextPatch SheetCells::Patch(bool recalculate, const FormulaChange& change) const
{
    return SheetPatch(*text_, values_, change).Make(recalculate);
}

} // namespace orrery::xlsx
