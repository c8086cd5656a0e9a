// Writes the looks of an .xls workbook's sheets as JSON, for comparison with independent readers.
//
//   xls_look_dump FILE

#include "engines/builtin/xls/look/look.h"
#include "util/error.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <string>
#include <string_view>
#include <variant>

namespace {

using namespace orrery;

std::string Number(double number)
{
    std::array<char, 40> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    const std::string written(text.data(), end);
    return written.find_first_of("ni") == std::string::npos ? written : "null";
}

std::string Text(std::string_view text)
{
    std::string json = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            json += '\\';
        if (static_cast<unsigned char>(c) >= 0x20) {
            json += c;
            continue;
        }
        std::array<char, 8> escape{};
        std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(c));
        json += escape.data();
    }
    return json + '"';
}

std::string Bool(bool value)
{
    return value ? "true" : "false";
}

std::string Color(const std::optional<book::Color>& color)
{
    if (!color)
        return "null";
    std::array<char, 10> text{};
    std::snprintf(text.data(), text.size(), "\"%02x%02x%02x\"", color->red, color->green,
                  color->blue);
    return text.data();
}

template <typename Items, typename Write> std::string List(const Items& items, Write write)
{
    std::string json = "[";
    for (const auto& item : items)
        json += (json.size() > 1 ? ",\n" : "") + write(item);
    return json + "]";
}

template <typename... Values> std::string Tuple(const Values&... values)
{
    std::string json;
    ((json += (json.empty() ? "[" : ",") + std::string(values)), ...);
    return json + "]";
}

template <typename Enum> std::string Code(Enum value)
{
    return std::to_string(static_cast<int>(value));
}

std::string Range(const book::CellRange& range)
{
    return Tuple(std::to_string(range.first.row), std::to_string(range.first.column),
                 std::to_string(range.last.row), std::to_string(range.last.column));
}

std::string FontOf(const book::Font& font)
{
    return "{\"name\":" + Text(font.name) + ",\"size\":" + Number(font.size) +
           ",\"bold\":" + Bool(font.bold) + ",\"italic\":" + Bool(font.italic) +
           ",\"strike\":" + Bool(font.strike) + ",\"underline\":" + Code(font.underline) +
           ",\"position\":" + Code(font.position) + ",\"color\":" + Color(font.color) + "}";
}

std::string LineOf(const book::BorderLine& line)
{
    return Tuple(Code(line.style), Color(line.color));
}

std::string StyleOf(const book::CellStyle& style)
{
    const auto& border = style.border;
    const auto& at = style.alignment;
    return "{\"font\":" + FontOf(style.font) + ",\"format\":" + Text(style.numberFormat) +
           ",\"fill\":" +
           Tuple(Code(style.fill.pattern), Color(style.fill.foreground),
                 Color(style.fill.background), Bool(style.fill.gradient.has_value())) +
           ",\"border\":" +
           Tuple(LineOf(border.left), LineOf(border.right), LineOf(border.top),
                 LineOf(border.bottom), LineOf(border.diagonal), Bool(border.diagonalDown),
                 Bool(border.diagonalUp)) +
           ",\"align\":" +
           Tuple(Code(at.horizontal), Code(at.vertical), Bool(at.wrap), Bool(at.shrink),
                 std::to_string(at.indent), std::to_string(at.rotation), Code(at.readingOrder)) +
           "}";
}

std::string ContentOf(const book::CellContent& content)
{
    struct Writer {
        std::string operator()(std::monostate) const { return "null,null"; }
        std::string operator()(double number) const { return "\"number\"," + Number(number); }
        std::string operator()(const std::string& text) const { return "\"text\"," + Text(text); }
        std::string operator()(bool value) const { return "\"bool\"," + Bool(value); }
        std::string operator()(book::CellError error) const { return "\"error\"," + Code(error); }
    };
    return std::visit(Writer{}, content);
}

std::string CellOf(const book::Cell& cell)
{
    return Tuple(std::to_string(cell.address.row), std::to_string(cell.address.column),
                 std::to_string(cell.style), std::to_string(cell.richText),
                 std::to_string(cell.formula), ContentOf(cell.content));
}

std::string PageOf(const book::PageSetup& page)
{
    return "{\"paper\":" + std::to_string(page.paper) + ",\"landscape\":" + Bool(page.isLandscape) +
           ",\"scale\":" + std::to_string(page.scale) + ",\"fits\":" + Bool(page.fitsPages) +
           ",\"margins\":" +
           Tuple(Number(page.left), Number(page.right), Number(page.top), Number(page.bottom)) +
           ",\"header\":" + Text(page.header) + ",\"footer\":" + Text(page.footer) +
           ",\"rowBreaks\":" + List(page.rowBreaks, [](auto row) { return std::to_string(row); }) +
           ",\"columnBreaks\":" +
           List(page.columnBreaks, [](auto column) { return std::to_string(column); }) +
           ",\"printAreas\":" + List(page.printAreas, Range) + "}";
}

std::string RuleOf(const book::ConditionalRule& rule)
{
    return Tuple(Code(rule.kind), std::to_string(rule.priority), Bool(rule.stopIfTrue),
                 Code(rule.comparison), List(rule.formulas, Text));
}

std::string ConditionOf(const book::ConditionalFormat& format)
{
    return Tuple(List(format.ranges, Range), List(format.rules, RuleOf));
}

std::string ColumnOf(const book::ColumnLook& column)
{
    return Tuple(std::to_string(column.first), std::to_string(column.last),
                 column.width ? Number(*column.width) : "null", Bool(column.isHidden),
                 std::to_string(column.style));
}

std::string RowOf(const book::RowLook& row)
{
    return Tuple(std::to_string(row.row), row.height ? Number(*row.height) : "null",
                 Bool(row.isHidden), Bool(row.isCustomHeight),
                 row.style ? std::to_string(*row.style) : "null");
}

std::string SheetOf(const book::SheetLook& look)
{
    const auto rich = [](const std::vector<book::TextRun>& runs) {
        return List(runs, [](const book::TextRun& run) {
            return Tuple(std::to_string(run.begin), FontOf(run.font));
        });
    };
    const auto& view = look.view;
    return "{\"name\":" + Text(look.name) +
           ",\"standardWidth\":" + (look.standardWidth ? Number(*look.standardWidth) : "null") +
           ",\"baseWidth\":" + Number(look.baseWidth) + ",\"defaultRowHeight\":" +
           (look.defaultRowHeight ? Number(*look.defaultRowHeight) : "null") + ",\"view\":" +
           Tuple(Bool(view.isRightToLeft), Bool(view.showsGridLines), Bool(view.showsZeros),
                 Bool(view.showsFormulas), std::to_string(view.frozenRows),
                 std::to_string(view.frozenColumns)) +
           ",\"columns\":" + List(look.columns, ColumnOf) + ",\"rows\":" + List(look.rows, RowOf) +
           ",\"merges\":" + List(look.merges, Range) + ",\"styles\":" + List(look.styles, StyleOf) +
           ",\"cells\":" + List(look.cells, CellOf) + ",\"rich\":" + List(look.richTexts, rich) +
           ",\"formulas\":" +
           List(look.formulas, [](const auto& formula) { return Text(formula.text); }) +
           ",\"conditions\":" + List(look.conditions, ConditionOf) +
           ",\"page\":" + PageOf(look.page) + ",\"leftOut\":" +
           List(look.leftOut,
                [](const auto& out) {
                    return Tuple(Text(out.what), Text(out.where), Text(out.reason));
                }) +
           "}";
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 2)
        return 2;
    try {
        const auto view = xls::OpenLook(arguments[1]);
        const auto& workbook = view->Workbook();
        std::string json = "{\"normalFont\":" + FontOf(workbook.normalFont) + ",\"date1904\":" +
                           Bool(workbook.dateSystem == book::DateSystem::From1904) + ",\"names\":" +
                           List(workbook.names,
                                [](const auto& name) {
                                    return Tuple(Text(name.name),
                                                 name.sheet ? std::to_string(*name.sheet) : "null",
                                                 Text(name.formula));
                                }) +
                           ",\"sheets\":[";
        for (std::size_t i = 0; i < workbook.sheets.size(); ++i) {
            const auto& sheet = workbook.sheets[i];
            json += (i > 0 ? ",\n" : "") +
                    Tuple(Code(sheet.kind), Code(sheet.state), SheetOf(view->Sheet(i)));
        }
        json += "]}\n";
        std::fwrite(json.data(), 1, json.size(), stdout);
        return 0;
    }
    catch (const util::Error& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
