#include "excel_server/book.h"

#include "engines/builtin/xls/compound/compound_file.h"
#include "engines/builtin/xls/records/encryption.h"
#include "engines/builtin/xls/records/globals.h"
#include "engines/builtin/xlsx/package/package.h"
#include "engines/builtin/xlsx/workbook_part.h"
#include "engines/builtin/xml/scanner.h"
#include "engines/common/file_kind.h"
#include "util/file_replace.h"

#include <algorithm>
#include <utility>

namespace orrery::excel_server {
namespace {

bool IsBinary(const std::filesystem::path& path)
{
    return engines::DetectFileKind(path) == engines::FileKind::Compound;
}

template <class Entries> std::vector<std::string> NamesOf(const Entries& entries)
{
    std::vector<std::string> names;
    for (const auto& entry : entries)
        names.push_back(entry.Name);
    return names;
}

std::set<std::string> ReadHiddenSheets(const std::filesystem::path& path)
{
    std::set<std::string> hidden;
    if (IsBinary(path))
        return hidden;
    const xlsx::Package package(path);
    const auto text = package.ReadXml(package.MainPart());
    xml::Scanner scanner(*text);
    for (auto token = scanner.Next(); token != xml::Scanner::Token::End; token = scanner.Next()) {
        if (token == xml::Scanner::Token::StartTag && scanner.LocalName() == "sheet" &&
            scanner.AttributeText("state").value_or("visible") != "visible")
            hidden.insert(scanner.AttributeText("name").value_or(""));
    }
    return hidden;
}

} // namespace

std::vector<std::string> ReadSheetNames(const std::filesystem::path& path)
{
    if (IsBinary(path)) {
        const xls::CompoundFile file(util::ReadFile(path).value());
        const auto stream = xls::Decrypt(file.ReadStream(file.Find("Workbook").value()));
        return NamesOf(xls::Globals(stream.value()).Sheets());
    }
    xlsx::Package package(path);
    const std::string part = package.MainPart();
    return NamesOf(xlsx::WorkbookPart(package.ReadXml(part), part).Sheets());
}

Book::Book(book::Application& engine, std::filesystem::path file)
    : workbook(engine.OpenWorkbook(file, true)), path(std::move(file))
{
    const bool binary = IsBinary(path);
    rows = binary ? 65536 : 1048576;
    columns = binary ? 256 : 16384;
    for (const auto& name : ReadSheetNames(path)) {
        if (auto* const sheet = workbook.FindWorksheet(name))
            sheets.push_back(sheet);
    }
    hidden = ReadHiddenSheets(path);
    for (auto* const sheet : sheets) {
        if (selected.empty() && !hidden.contains(sheet->Name()))
            selected.push_back(sheet);
    }
}

std::vector<book::Worksheet*> Book::SelectedInOrder() const
{
    std::vector<book::Worksheet*> ordered;
    for (auto* const sheet : sheets) {
        if (std::find(selected.begin(), selected.end(), sheet) != selected.end())
            ordered.push_back(sheet);
    }
    return ordered;
}

book::Worksheet* Book::Find(const std::string& name) const
{
    return workbook.FindWorksheet(name);
}

std::size_t Book::PositionOf(const book::Worksheet& sheet) const
{
    return static_cast<std::size_t>(std::find(sheets.begin(), sheets.end(), &sheet) -
                                    sheets.begin());
}

void Book::Copy(book::Worksheet& sheet, book::Worksheet& after)
{
    sheet.CopyAfter(after);
    const auto place = static_cast<std::ptrdiff_t>(PositionOf(after)) + 1;
    sheets.insert(sheets.begin() + place, after.Next());
    changed = true;
}

} // namespace orrery::excel_server
