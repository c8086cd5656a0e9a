#include "excel_server/workbooks.h"

#include "excel_server/workbook.h"
#include "util/paths.h"
#include "util/text.h"

namespace orrery::excel_server {

using automation::Variant;

Workbooks::Workbooks(Server& server, const void* identity, Session& session)
    : DispatchObject(server, kKind, identity), session_(session)
{
}

const Members& Workbooks::Table() const
{
    static const Members members = {
        {"_Default", DISPID_VALUE, {{"Index", true}}, Handle<&Workbooks::GetItem>},
        {"Item", 170, {{"Index", true}}, Handle<&Workbooks::GetItem>},
        {"Count", 118, {}, Handle<&Workbooks::GetCount>},
        {"Open",
         1923,
         {{"Filename", true},
          {"UpdateLinks"},
          {"ReadOnly"},
          {"Format"},
          {"Password"},
          {"WriteResPassword"},
          {"IgnoreReadOnlyRecommended"},
          {"Origin"},
          {"Delimiter"},
          {"Editable"},
          {"Notify"},
          {"Converter"},
          {"AddToMru"},
          {"Local"},
          {"CorruptLoad"}},
         nullptr,
         nullptr,
         Handle<&Workbooks::Open>},
    };
    return members;
}

Variant Workbooks::Item(Session& session, const Arguments& arguments)
{
    if (arguments.IsText(0)) {
        for (const auto& book : session.books) {
            if (util::EqualIgnoringCase(util::FromPath(book->path.filename()), arguments.Text(0)))
                return ObjectFor<Workbook>(session.server, book.get(), session, *book);
        }
        throw ExcelFailure(DISP_E_BADINDEX);
    }
    const std::int32_t index = arguments.Integer(0);
    if (index < 1 || static_cast<std::size_t>(index) > session.books.size())
        throw ExcelFailure(DISP_E_BADINDEX);
    Book& book = *session.books[static_cast<std::size_t>(index) - 1];
    return ObjectFor<Workbook>(session.server, &book, session, book);
}

Variant Workbooks::GetItem(const Arguments& arguments)
{
    return Item(session_, arguments);
}

Variant Workbooks::GetCount(const Arguments& /*arguments*/)
{
    return Variant::Long(static_cast<std::int32_t>(session_.books.size()));
}

Variant Workbooks::Open(const Arguments& arguments)
{
    session_.books.push_back(
        std::make_unique<Book>(*session_.engine, util::ToPath(arguments.Text(0))));
    Book& book = *session_.books.back();
    book.readOnly = arguments.Has(2) && arguments.Boolean(2);
    if (session_.security != 3)
        server_.log.Write("Macros of " + util::FromPath(book.path.filename()) + " run");
    return ObjectFor<Workbook>(server_, &book, session_, book);
}

} // namespace orrery::excel_server
