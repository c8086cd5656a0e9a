#include "excel_server/range.h"

#include <algorithm>

namespace orrery::excel_server {

using automation::Variant;

Range::Range(Server& server, const void* identity, const CellRange& cells)
    : DispatchObject(server, kKind, identity), cells_(cells)
{
}

const Members& Range::Table() const
{
    static const std::vector<Parameter> place = {{"RowIndex"}, {"ColumnIndex"}};
    static const Members members = {
        {"_Default", DISPID_VALUE, place, Handle<&Range::GetItem>, Handle<&Range::PutItem>},
        {"Item", 170, place, Handle<&Range::GetItem>, Handle<&Range::PutItem>},
        {"Value", 6, {{"RangeValueDataType"}}, nullptr, Handle<&Range::PutValue>},
        {"Row", 257, {}, Handle<&Range::GetRow>},
        {"Column", 240, {}, Handle<&Range::GetColumn>},
    };
    return members;
}

CellRange Range::Locate(const CellRange& cells, const Arguments& arguments)
{
    const std::int64_t row = std::int64_t{arguments.Integer(0)} + std::max(cells.row, 1) - 1;
    const std::int64_t column =
        (arguments.Has(1) ? std::int64_t{arguments.Integer(1)} : 1) + std::max(cells.column, 1) - 1;
    if (row < 1 || row > cells.book.rows || column < 1 || column > cells.book.columns)
        throw ExcelFailure(kExcelError);
    return {cells.book, cells.sheet, static_cast<std::int32_t>(row),
            static_cast<std::int32_t>(column)};
}

Variant Range::CellOf(Server& server, const CellRange& cells, const Arguments& arguments)
{
    return ObjectFor<Range>(server, nullptr, Locate(cells, arguments));
}

book::CellValue Range::ValueOf(const Variant& value) const
{
    if (value.Type() == VT_BSTR) {
        const TypedValue typed = ReadTyped(value.AsText(), server_.language);
        if (typed.kind == TypedKind::Text)
            return typed.text;
        server_.log.Write("Range takes " + Quoted(value.AsText()) + " for " + NameOf(typed.kind));
        return std::int16_t{0};
    }
    VARIANT source = value.Get();
    Variant number;
    if (FAILED(VariantChangeType(number.Fill(), &source, 0, VT_I2)))
        throw ExcelFailure(kExcelError);
    return V_I2(&number.Get());
}

void Range::Write(const CellRange& cell, const Variant& value) const
{
    if (cell.row == 0)
        throw ExcelFailure(kExcelError, "This server fills no whole sheet.");
    cell.sheet.SetCell(cell.row, cell.column, ValueOf(value), book::CellMember::Value);
    cell.book.changed = true;
}

Variant Range::GetItem(const Arguments& arguments)
{
    if (!arguments.Has(0)) // the value, which this server does not return
        throw ExcelFailure(kExcelError);
    return CellOf(server_, cells_, arguments);
}

Variant Range::PutItem(const Arguments& arguments)
{
    Write(arguments.Has(0) ? Locate(cells_, arguments) : cells_, arguments.Value());
    return {};
}

Variant Range::PutValue(const Arguments& arguments)
{
    Write(cells_, arguments.Value());
    return {};
}

Variant Range::GetRow(const Arguments& /*arguments*/)
{
    return Variant::Long(std::max(cells_.row, 1));
}

Variant Range::GetColumn(const Arguments& /*arguments*/)
{
    return Variant::Long(std::max(cells_.column, 1));
}

} // namespace orrery::excel_server
