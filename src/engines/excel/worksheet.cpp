#include "engines/excel/worksheet.h"

#include "engines/excel/workbook.h"

namespace orrery::excel {
namespace {

Variant VariantOf(const generate::CellValue& value)
{
    if (const auto* const number = std::get_if<std::int16_t>(&value))
        return Variant(*number);
    return Variant(std::string_view(std::get<std::string>(value)));
}

} // namespace

void Worksheet::CopyAfter(generate::Worksheet& after)
{
    const Object& place = static_cast<Worksheet&>(after).sheet_;
    sheet_.Call("Copy", {Variant::Omitted(), Variant(place.Interface())});
}

generate::Worksheet* Worksheet::Next()
{
    auto next = sheet_.Get("Next").TakeObject();
    return next ? &workbook_.SheetOf(std::move(next)) : nullptr;
}

void Worksheet::SetCell(std::int32_t row, std::int32_t column, const generate::CellValue& value,
                        generate::CellMember member)
{
    const Object cell =
        ObjectFrom(sheet_.Get("Cells", {Variant(row), Variant(column)}), workbook_.Model().range);
    cell.Put(member == generate::CellMember::Value ? "Value" : kDefaultMember, VariantOf(value));
}

} // namespace orrery::excel
