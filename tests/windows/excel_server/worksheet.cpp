#include "excel_server/worksheet.h"

#include "excel_server/range.h"

namespace orrery::excel_server {

using automation::Variant;

Worksheet::Worksheet(Server& server, const void* identity, Book& book, book::Worksheet& sheet)
    : DispatchObject(server, kKind, identity), book_(book), sheet_(sheet)
{
}

const Members& Worksheet::Table() const
{
    static const Members members = {
        {"Name", 110, {}, Handle<&Worksheet::GetName>, Handle<&Worksheet::PutName>},
        {"Index", 486, {}, Handle<&Worksheet::GetIndex>},
        {"Next", 502, {}, Handle<&Worksheet::GetNext>},
        {"Cells", 238, {{"RowIndex"}, {"ColumnIndex"}}, Handle<&Worksheet::GetCells>},
        {"Copy", 551, {{"Before"}, {"After"}}, nullptr, nullptr, Handle<&Worksheet::Copy>},
    };
    return members;
}

Variant Worksheet::GetName(const Arguments& /*arguments*/)
{
    return Variant::Text(sheet_.Name());
}

Variant Worksheet::PutName(const Arguments& arguments)
{
    sheet_.SetName(arguments.TextValue());
    book_.changed = true;
    return {};
}

Variant Worksheet::GetIndex(const Arguments& /*arguments*/)
{
    return Variant::Long(static_cast<std::int32_t>(book_.PositionOf(sheet_)) + 1);
}

Variant Worksheet::GetNext(const Arguments& /*arguments*/)
{
    const std::size_t next = book_.PositionOf(sheet_) + 1;
    if (next == book_.sheets.size())
        return Variant::Object(nullptr);
    return ObjectFor<Worksheet>(server_, book_.sheets[next], book_, *book_.sheets[next]);
}

Variant Worksheet::GetCells(const Arguments& arguments)
{
    const CellRange all{book_, sheet_, 0, 0};
    return arguments.Has(0) ? Range::CellOf(server_, all, arguments)
                            : ObjectFor<Range>(server_, nullptr, all);
}

Variant Worksheet::Copy(const Arguments& arguments)
{
    if (arguments.Has(0) || !arguments.Has(1))
        throw ExcelFailure(kExcelError, "This server copies a sheet behind another one alone.");
    auto* const after = dynamic_cast<Worksheet*>(server_.Find(arguments.Object(1)));
    if (after == nullptr)
        throw ExcelFailure(kExcelError, "Copy method of Worksheet class failed");
    book_.Copy(sheet_, after->sheet_);
    return {};
}

} // namespace orrery::excel_server
