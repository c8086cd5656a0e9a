#include "excel_server/workbook.h"

#include "excel_server/sheets.h"
#include "excel_server/worksheet.h"
#include "util/paths.h"

#include <system_error>

namespace orrery::excel_server {

using automation::Variant;

namespace {

// SaveAs
constexpr std::size_t kFileFormat = 1;
constexpr std::size_t kAccessMode = 6;

} // namespace

Workbook::Workbook(Server& server, const void* identity, Session& session, Book& book)
    : DispatchObject(server, kKind, identity), session_(session), book_(book)
{
}

const Members& Workbook::Table() const
{
    static const Members members = {
        {"Name", 110, {}, Handle<&Workbook::GetName>},
        {"ReadOnly", 296, {}, Handle<&Workbook::GetReadOnly>},
        {"ActiveSheet", 307, {}, Handle<&Workbook::GetActiveSheet>},
        {"Worksheets", 494, {{"Index"}}, Handle<&Workbook::GetWorksheets>},
        {"SaveAs",
         1925,
         {{"Filename"},
          {"FileFormat"},
          {"Password"},
          {"WriteResPassword"},
          {"ReadOnlyRecommended"},
          {"CreateBackup"},
          {"AccessMode"},
          {"ConflictResolution"},
          {"AddToMru"},
          {"TextCodepage"},
          {"TextVisualLayout"},
          {"Local"}},
         nullptr,
         nullptr,
         Handle<&Workbook::SaveAs>},
        {"Close",
         277,
         {{"SaveChanges"}, {"Filename"}, {"RouteWorkbook"}},
         nullptr,
         nullptr,
         Handle<&Workbook::Close>},
    };
    return members;
}

Variant Workbook::GetName(const Arguments& /*arguments*/)
{
    return Variant::Text(util::FromPath(book_.path.filename()));
}

Variant Workbook::GetReadOnly(const Arguments& /*arguments*/)
{
    return Variant::Boolean(book_.readOnly);
}

Variant Workbook::GetActiveSheet(const Arguments& /*arguments*/)
{
    if (book_.selected.empty())
        return Variant::Object(nullptr);
    book::Worksheet& active = *book_.selected.front();
    return ObjectFor<Worksheet>(server_, &active, book_, active);
}

Variant Workbook::GetWorksheets(const Arguments& arguments)
{
    if (arguments.Has(0))
        return Sheets::Item(server_, book_, arguments);
    return ObjectFor<Sheets>(server_, &book_.sheets, book_);
}

Variant Workbook::Close(const Arguments& arguments)
{
    if (!arguments.Has(0) && book_.changed && session_.alerts)
        throw ExcelFailure(kExcelError, "Whether to save was asked and not answered.");
    if (arguments.Has(0) && arguments.Boolean(0))
        throw ExcelFailure(kExcelError, "This server closes without saving alone.");
    std::erase_if(session_.books, [this](const auto& open) { return open.get() == &book_; });
    return {};
}

Variant Workbook::SaveAs(const Arguments& arguments)
{
    const auto target = util::ToPath(arguments.Text(0));
    if (arguments.Has(kFileFormat))
        throw ExcelFailure(kExcelError, "This server saves in the workbook's own format alone.");
    if (arguments.Has(kAccessMode)) { // no change, shared, exclusive
        const std::int32_t mode = arguments.Integer(kAccessMode);
        if (mode < 1 || mode > 3)
            throw ExcelFailure(kExcelError);
    }
    std::error_code ignored;
    if (session_.alerts && std::filesystem::exists(target, ignored))
        throw ExcelFailure(kExcelError, "Whether to replace the file was asked and not answered.");
    book_.workbook.SaveAs(target, book::AccessMode::NoChange);
    book_.path = target;
    book_.readOnly = false;
    book_.changed = false;
    return {};
}

} // namespace orrery::excel_server
