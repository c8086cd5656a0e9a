#include "excel_server/worksheet.h"

#include "excel_server/range.h"
#include "util/paths.h"

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

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
        {"Visible", 558, {}, Handle<&Worksheet::GetVisible>},
        {"Select", 235, {{"Replace"}}, nullptr, nullptr, Handle<&Worksheet::Select>},
        {"ExportAsFixedFormat",
         2493,
         {{"Type", true},
          {"Filename"},
          {"Quality"},
          {"IncludeDocProperties"},
          {"IgnorePrintAreas"},
          {"From"},
          {"To"},
          {"OpenAfterPublish"},
          {"FixedFormatExtClassPtr"}},
         nullptr,
         nullptr,
         Handle<&Worksheet::Export>},
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

Variant Worksheet::GetVisible(const Arguments& /*arguments*/)
{
    return Variant::Long(book_.hidden.contains(sheet_.Name()) ? 0 : -1);
}

Variant Worksheet::Select(const Arguments& arguments)
{
    if (book_.hidden.contains(sheet_.Name()))
        throw ExcelFailure(kExcelError, "Select method of Worksheet class failed");
    if (!arguments.Has(0) || arguments.Boolean(0))
        book_.selected.clear();
    book_.selected.push_back(&sheet_);
    return {};
}

/// Writes the names of the sheets instead of their pages.
Variant Worksheet::Export(const Arguments& arguments)
{
    if (arguments.Integer(0) != 0 || !arguments.Has(1))
        throw ExcelFailure(kExcelError, "This server writes PDF files alone.");
    std::string path = arguments.Text(1);
    if (!path.ends_with(".pdf"))
        path += ".pdf";
    const auto selected = book_.SelectedInOrder();
    const bool isSelected = std::find(selected.begin(), selected.end(), &sheet_) != selected.end();
    std::ofstream file(util::ToPath(path), std::ios::binary);
    file << "%PDF-1.7\n";
    for (const auto* const sheet : isSelected ? selected : std::vector{&sheet_})
        file << sheet->Name() << '\n';
    if (!file.flush())
        throw ExcelFailure(kExcelError, "Document not saved.");
    return {};
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
