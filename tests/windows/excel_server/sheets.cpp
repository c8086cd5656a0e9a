#include "excel_server/sheets.h"

#include "excel_server/worksheet.h"

namespace orrery::excel_server {

using automation::Variant;

Sheets::Sheets(Server& server, const void* identity, Book& book)
    : DispatchObject(server, kKind, identity), book_(book)
{
}

const Members& Sheets::Table() const
{
    static const Members members = {
        {"_Default", DISPID_VALUE, {{"Index", true}}, Handle<&Sheets::GetItem>},
        {"Item", 170, {{"Index", true}}, Handle<&Sheets::GetItem>},
        {"Count", 118, {}, Handle<&Sheets::GetCount>},
    };
    return members;
}

Variant Sheets::Item(Server& server, Book& book, const Arguments& arguments)
{
    book::Worksheet* sheet = nullptr;
    if (arguments.IsText(0)) {
        sheet = book.Find(arguments.Text(0));
    }
    else {
        const std::int32_t index = arguments.Integer(0);
        if (index >= 1 && static_cast<std::size_t>(index) <= book.sheets.size())
            sheet = book.sheets[static_cast<std::size_t>(index) - 1];
    }
    if (sheet == nullptr)
        throw ExcelFailure(DISP_E_BADINDEX);
    return ObjectFor<Worksheet>(server, sheet, book, *sheet);
}

Variant Sheets::GetItem(const Arguments& arguments)
{
    return Item(server_, book_, arguments);
}

Variant Sheets::GetCount(const Arguments& /*arguments*/)
{
    return Variant::Long(static_cast<std::int32_t>(book_.sheets.size()));
}

} // namespace orrery::excel_server
