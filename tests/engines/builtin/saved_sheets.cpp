#include "saved_sheets.h"

#include "xls/saved_book.h"
#include "xlsx/saved_package.h"

#include <regex>

namespace orrery::test {
namespace {

/// Row and column of a reference such as "B2".
std::pair<std::int32_t, std::int32_t> Place(const std::string& reference)
{
    std::int32_t column = 0;
    std::size_t i = 0;
    for (; i < reference.size() && reference[i] >= 'A'; ++i)
        column = column * 26 + (reference[i] - 'A' + 1);
    return {std::stoi(reference.substr(i)), column};
}

/// Undoes the "_x0041_" escapes of a stored text.
std::string Unescape(const std::string& stored)
{
    static const std::regex escape("_x([0-9A-Fa-f]{4})_");
    std::string text;
    auto rest = stored.cbegin();
    for (std::sregex_iterator match(stored.begin(), stored.end(), escape), end; match != end;
         ++match) {
        text.append(rest, stored.cbegin() + match->position());
        text += static_cast<char>(std::stoi((*match)[1].str(), nullptr, 16));
        rest = stored.cbegin() + match->position() + match->length();
    }
    return text.append(rest, stored.cend());
}

} // namespace

std::vector<contract::SavedSheet> ReadXlsx(const std::filesystem::path& path)
{
    const SavedPackage saved(path);
    const auto texts = saved.Texts();
    std::vector<contract::SavedSheet> sheets;
    for (const auto& name : saved.Values("xl/workbook.xml", "//sheet/@name")) {
        contract::SavedSheet sheet{name, {}};
        const auto part = saved.SheetPart(name);
        for (const auto& cell : saved.Cells(part)) {
            if (cell.type == "s")
                sheet.cells[Place(cell.reference)] = Unescape(texts.at(std::stoul(cell.value)));
            else
                sheet.cells[Place(cell.reference)] = std::stod(cell.value);
        }
        sheets.push_back(std::move(sheet));
    }
    return sheets;
}

std::vector<contract::SavedSheet> ReadXls(const std::filesystem::path& path)
{
    std::vector<contract::SavedSheet> sheets;
    const SavedBook saved(path);
    for (const auto& sheet : saved.Sheets()) {
        sheets.push_back({sheet.name, {}});
        for (const auto& [place, cell] : sheet.cells)
            sheets.back().cells[place] = cell.value;
    }
    return sheets;
}

} // namespace orrery::test
