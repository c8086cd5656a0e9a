// Prints where the rows, columns and cells of a workbook's sheets are laid out, as JSON.
// layout_dump FILE.xlsx|FILE.xls

#include "engines/builtin/xls/look/look.h"
#include "engines/builtin/xlsx/look/look.h"
#include "look/layout/lay_out.h"
#include "look/text/font_tables.h"

#include <array>
#include <charconv>
#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

namespace {

using namespace orrery;

std::string Number(double value)
{
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                   std::chars_format::fixed, 4);
    return {buffer.data(), end.ptr};
}

/// Shows what is stored, without number formats: heights and widths do not depend on them.
class StoredValues final : public look::CellSource {
public:
    explicit StoredValues(const book::SheetLook& sheet) : sheet_(sheet) {}
    look::CellDisplay Display(book::CellAddress address) override
    {
        look::CellDisplay display;
        display.style = look::SharedStyle(sheet_.Style(address));
        display.horizontal = display.style->alignment.horizontal;
        const book::Cell* cell = sheet_.FindCell(address);
        if (cell == nullptr)
            return display;
        if (const auto* text = std::get_if<std::string>(&cell->content))
            display.text = *text;
        if (const auto* number = std::get_if<double>(&cell->content)) {
            display.text = Number(*number);
            display.isNumber = true;
        }
        if (cell->richText >= 0)
            display.runs = sheet_.richTexts[static_cast<std::size_t>(cell->richText)];
        return display;
    }

private:
    const book::SheetLook& sheet_;
};

std::string Quoted(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            quoted += '\\';
        quoted += c;
    }
    return quoted + '"';
}

std::string Numbers(const std::vector<double>& values)
{
    std::string list = "[";
    for (const double value : values)
        (list += list.size() > 1 ? ", " : "") += Number(value);
    return list + "]";
}

std::string CellBoxes(const look::Layout& layout)
{
    std::string list = "[";
    for (const look::CellBox& cell : layout.cells) {
        const auto& [first, last] = cell.range;
        list += list.size() > 1 ? ", [" : "[";
        for (const std::int32_t index : {first.row, first.column, last.row, last.column})
            list += std::to_string(index) + ", ";
        list += Number(cell.box.x) + ", " + Number(cell.box.y) + ", " + Number(cell.box.width) +
                ", " + Number(cell.box.height) + "]";
    }
    return list + "]";
}

void PrintSheet(book::WorkbookView& view, std::size_t index)
{
    const book::SheetLook& sheet = view.Sheet(index);
    StoredValues values(sheet);
    const look::Layout layout = look::LayOut(sheet, view.Workbook(), values, look::FontTables());
    std::cout << "{\"name\": " << Quoted(view.Workbook().sheets[index].name)
              << ", \"rightToLeft\": " << (sheet.view.isRightToLeft ? "true" : "false")
              << ", \"columns\": " << Numbers(layout.columns)
              << ", \"rows\": " << Numbers(layout.rows) << ", \"cells\": " << CellBoxes(layout)
              << "}";
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 2)
        return 2;
    const std::filesystem::path path = arguments[1];
    try {
        const auto view = path.extension() == ".xls" ? xls::OpenLook(path) : xlsx::OpenLook(path);
        std::cout << "[";
        bool isFirst = true;
        for (std::size_t i = 0; i < view->Workbook().sheets.size(); ++i) {
            if (view->Workbook().sheets[i].kind != book::SheetKind::Worksheet)
                continue;
            std::cout << (isFirst ? "" : ",\n");
            PrintSheet(*view, i);
            isFirst = false;
        }
        std::cout << "]\n";
    }
    catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
